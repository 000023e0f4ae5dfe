#include "tests/core/file/childprocess.h"
#include "tests/core/file/rowsetsupport.h"
#include "tests/support/testregistry.h"

#include "core/atomicfile.h"
#include "core/kalibrierung.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>

namespace {

const QLocale german(QLocale::German, QLocale::Germany);

QStringList namesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                  QDir::NoDotAndDotDot);
}

bool putText(const char *path, const QByteArray &text)
{
    return putBytes(QString::fromLatin1(path), text);
}

// A file system of that many bytes at \a folder, seen by this process only.
bool mountSmallDisk(const QString &folder, const char *size)
{
    const QByteArray user = QByteArray::number(::geteuid());
    const QByteArray group = QByteArray::number(::getegid());
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0) {
        if (!putText("/proc/self/setgroups", "deny") ||
            !putText("/proc/self/uid_map", "0 " + user + " 1") ||
            !putText("/proc/self/gid_map", "0 " + group + " 1"))
            return false;
    } else if (::unshare(CLONE_NEWNS) != 0) {
        return false;
    }
    ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
    return ::mount("tmpfs", QFile::encodeName(folder).constData(), "tmpfs", 0, size) == 0;
}

} // namespace

/// Saves that fail half-way: a numbered error, the old file as it was, nothing left lying about.
class SaveFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void limit_of_the_file_size_leaves_the_old_file();
    void small_disk_leaves_the_old_file();
    void full_disk_refuses_a_new_file();
    void short_write_is_noticed_by_commit();
    void read_only_folder_is_refused();
    void read_only_file_is_refused();
    void folder_that_vanishes_is_noticed();
    void file_that_vanishes_is_noticed();
    void target_that_becomes_a_folder_is_noticed();
    void value_that_can_not_be_saved_leaves_the_old_file_data();
    void value_that_can_not_be_saved_leaves_the_old_file();
    void value_without_text_leaves_no_new_file();

private:
    QString path(const char *name) const { return m_folder->filePath(QString::fromUtf8(name)); }
    int save() const
    {
        return errorNumber([&] { m_document->SaveFile(path("a.xml")); });
    }
    // Whether the folder holds the old file and nothing else.
    bool isUntouched() const
    {
        return bytesAt(path("a.xml")) == m_old &&
               namesIn(m_folder->path()) == QStringList{u"a.xml"_qs};
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Kalibrierung> m_document;
    QByteArray m_old;
    QByteArray m_new;
};

void SaveFaultsTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_document = std::make_unique<Kalibrierung>(german);
    for (int field = 1; field <= 100; ++field) {
        for (int point = 1; point <= 4; ++point)
            m_document->setMesswert(pmDirekt, field, point, field + 0.125 * point);
    }
    m_document->SaveFile(path("a.xml"));
    m_new = bytesAt(path("a.xml"));
    QVERIFY(m_new.size() > 30'000);
    m_document->Reset();
    m_document->SaveFile(path("a.xml"));
    m_old = bytesAt(path("a.xml"));
    for (int field = 1; field <= 100; ++field) {
        for (int point = 1; point <= 4; ++point)
            m_document->setMesswert(pmDirekt, field, point, field + 0.125 * point);
    }
}

void SaveFaultsTest::limit_of_the_file_size_leaves_the_old_file()
{
    constexpr int step = 4096;
    const auto wrongSteps = inChild([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        int wrong = 0;
        rlimit limit = {};
        ::getrlimit(RLIMIT_FSIZE, &limit);
        for (qsizetype size = 0; size < m_new.size(); size += step) {
            limit.rlim_cur = static_cast<rlim_t>(size);
            ::setrlimit(RLIMIT_FSIZE, &limit);
            wrong += save() == 61 && isUntouched() ? 0 : 1;
        }
        limit.rlim_cur = static_cast<rlim_t>(m_new.size());
        ::setrlimit(RLIMIT_FSIZE, &limit);
        return save() == 0 ? wrong : -1;
    });
    QVERIFY(wrongSteps);
    QCOMPARE(*wrongSteps, 0);
    QCOMPARE(bytesAt(path("a.xml")), m_new);
}

void SaveFaultsTest::small_disk_leaves_the_old_file()
{
    const auto wrongSteps = inChild([&] {
        if (!mountSmallDisk(m_folder->path(), "size=256k"))
            return notPossible;
        // Filled up to the last page, then a page more free in each round
        if (!putBytes(path("a.xml"), m_old) || !putBytes(path("voll"), QByteArray()))
            return notPossible;
        QFile filler(path("voll"));
        if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            return notPossible;
        while (filler.write(QByteArray(4096, 'x')) == 4096) {
        }
        int wrong = 0;
        int failed = 0;
        const auto keepsOld = [&] {
            return bytesAt(path("a.xml")) == m_old &&
                   namesIn(m_folder->path()) == QStringList{u"a.xml"_qs, u"voll"_qs};
        };
        for (qint64 size = filler.size() / 4096 * 4096; size >= 0; size -= 4096) {
            filler.resize(size);
            const int number = save();
            if (number == 0)
                return bytesAt(path("a.xml")) == m_new && failed > 5 ? wrong : -1;
            ++failed;
            wrong += number == 61 && keepsOld() ? 0 : 1;
        }
        return -2;
    });
    QVERIFY(wrongSteps);
    if (*wrongSteps == notPossible)
        QSKIP("no disk can be mounted here");
    QCOMPARE(*wrongSteps, 0);
}

void SaveFaultsTest::full_disk_refuses_a_new_file()
{
    const auto number = inChild([&] {
        // Room for two names only: the root folder and one file
        if (!mountSmallDisk(m_folder->path(), "size=256k,nr_inodes=2") || !putBytes(path("x"), "x"))
            return notPossible;
        const int result = save();
        return namesIn(m_folder->path()) == QStringList{u"x"_qs} ? result : -1;
    });
    QVERIFY(number);
    if (*number == notPossible)
        QSKIP("no disk can be mounted here");
    QCOMPARE(*number, 61);
}

void SaveFaultsTest::short_write_is_noticed_by_commit()
{
    QVERIFY(putBytes(path("b"), "alt"));
    AtomicFile file(path("b"));
    file.write("neuer Inhalt");
    QVERIFY(QFile::resize(file.temporaryPath(), 5)); // as if the disk had lost the rest
    QCOMPARE(errorNumber([&] { file.commit(); }), 61);
    QCOMPARE(bytesAt(path("b")), QByteArray("alt"));
}

void SaveFaultsTest::read_only_folder_is_refused()
{
    QCOMPARE(::chmod(QFile::encodeName(path("a.xml")).constData(), 0666), 0);
    QCOMPARE(::chmod(QFile::encodeName(m_folder->path()).constData(), 0555), 0);
    const auto number = inChild([&] { return becomeUnprivileged() ? save() : notPossible; });
    QCOMPARE(::chmod(QFile::encodeName(m_folder->path()).constData(), 0700), 0);
    QVERIFY(number);
    if (*number == notPossible)
        QSKIP("the superuser's rights can't be given up here");
    QCOMPARE(*number, 70);
    QVERIFY(isUntouched());
}

void SaveFaultsTest::read_only_file_is_refused()
{
    QCOMPARE(::chmod(QFile::encodeName(path("a.xml")).constData(), 0444), 0);
    QCOMPARE(::chmod(QFile::encodeName(m_folder->path()).constData(), 0777), 0);
    const auto number = inChild([&] { return becomeUnprivileged() ? save() : notPossible; });
    QVERIFY(number);
    if (*number == notPossible)
        QSKIP("the superuser's rights can't be given up here");
    QCOMPARE(*number, 70);
    QVERIFY(isUntouched());
}

void SaveFaultsTest::folder_that_vanishes_is_noticed()
{
    QVERIFY(QDir(m_folder->path()).mkdir(u"weg"_qs));
    AtomicFile file(path("weg/b"));
    file.write("neu");
    QVERIFY(QDir(path("weg")).removeRecursively());
    const int number = errorNumber([&] { file.commit(); });
    QVERIFY2(number == 61 || number == 76, qPrintable(QString::number(number)));
}

void SaveFaultsTest::file_that_vanishes_is_noticed()
{
    QVERIFY(putBytes(path("b"), "alt"));
    AtomicFile file(path("b"));
    file.write("neu");
    QVERIFY(QFile::remove(file.temporaryPath()));
    QVERIFY(errorNumber([&] { file.commit(); }) != 0);
    QCOMPARE(bytesAt(path("b")), QByteArray("alt"));
}

void SaveFaultsTest::target_that_becomes_a_folder_is_noticed()
{
    {
        AtomicFile file(path("b"));
        file.write("neu");
        QVERIFY(QDir(m_folder->path()).mkdir(u"b"_qs));
        QCOMPARE(errorNumber([&] { file.commit(); }), 75);
    }
    QCOMPARE(namesIn(m_folder->path()), (QStringList{u"a.xml"_qs, u"b"_qs}));
}

void SaveFaultsTest::value_that_can_not_be_saved_leaves_the_old_file_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<Variant>("value");
    QTest::addColumn<int>("number");
    QTest::newRow("control character") << u"Bemerkung"_qs << Variant(u"a\x01"_qs) << 321;
    QTest::newRow("zero") << u"Bemerkung"_qs << Variant(QString(QChar(0))) << 321;
    QTest::newRow("lone surrogate") << u"Bemerkung"_qs << Variant(QString(QChar(0xd83d))) << 321;
    QTest::newRow("U+FFFE") << u"Bemerkung"_qs << Variant(QString(QChar(0xfffe))) << 321;
    QTest::newRow("control character in the key") << u"Bemerkung\x02"_qs << Variant(1.5) << 321;
    QTest::newRow("null") << u"Bemerkung"_qs << Variant(Null{}) << 94;
    QTest::newRow("no number") << u"Bemerkung"_qs << Variant(std::nan("")) << 6;
    QTest::newRow("infinite") << u"Bemerkung"_qs << Variant(HUGE_VAL) << 6;
}

void SaveFaultsTest::value_that_can_not_be_saved_leaves_the_old_file()
{
    QFETCH(QString, key);
    QFETCH(Variant, value);
    QFETCH(int, number);
    m_document->DataStore().set(key, value);
    const auto error = errorOf([&] { m_document->SaveFile(path("a.xml")); });
    QVERIFY(error);
    QCOMPARE(error->number(), number);
    QVERIFY2(error->description().contains(u"„Bemerkung"_qs), qPrintable(error->description()));
    QVERIFY(isUntouched());
}

void SaveFaultsTest::value_without_text_leaves_no_new_file()
{
    m_document->DataStore().set(u"Bemerkung"_qs, Null{});
    QCOMPARE(errorNumber([&] { m_document->SaveFile(path("neu.xml")); }), 94);
    QVERIFY(isUntouched());
}

REGISTER_TEST(SaveFaultsTest)
#include "tst_savefaults.moc"
