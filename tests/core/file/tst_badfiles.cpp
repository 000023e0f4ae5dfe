#include "tests/core/file/childprocess.h"
#include "tests/core/file/rowsetsupport.h"
#include "tests/support/testregistry.h"

#include "core/kalibrierung.h"
#include "core/kalibrierungsdatei.h"

#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

#include <sys/stat.h>

namespace {

const QLocale german(QLocale::German, QLocale::Germany);

#if !defined(__SANITIZE_ADDRESS__)
// The process gets no more memory than it uses and \a more bytes; false where its size is not
// known.
bool limitMemory(rlim_t more)
{
    QFile size(u"/proc/self/statm"_qs);
    if (!size.open(QIODevice::ReadOnly))
        return false;
    rlimit limit = {};
    ::getrlimit(RLIMIT_AS, &limit);
    limit.rlim_cur = size.readAll().split(' ').first().toULongLong() * 4096 + more;
    return ::setrlimit(RLIMIT_AS, &limit) == 0;
}

void liftMemoryLimit()
{
    rlimit limit = {};
    ::getrlimit(RLIMIT_AS, &limit);
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_AS, &limit);
}
#endif

} // namespace

/// Paths and files that can't be loaded, seen from the document: a numbered error, and nothing
/// changed.
class BadFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void path_that_is_no_file_is_refused_data();
    void path_that_is_no_file_is_refused();
    void missing_file_and_missing_folder_differ();
    void pipe_is_refused_without_waiting();
    void device_is_refused();
    void file_without_permission_is_refused();
    void file_in_a_closed_folder_is_refused();
    void huge_file_is_refused_without_taking_memory();
    void largest_size_is_still_read_and_one_byte_more_refused();
    void file_that_hides_its_size_is_read_to_its_end();
    void lack_of_memory_is_a_numbered_error();
    void lack_of_memory_at_any_moment_leaves_the_document_alone();
    void links_to_a_file_are_followed();
    void bad_contents_leave_the_document_alone_data();
    void bad_contents_leave_the_document_alone();

private:
    QString path(const char *name) const { return m_folder->filePath(QString::fromUtf8(name)); }
    // Loads into the document that every test shares; compares it afterwards in cleanup().
    std::optional<RunTimeError> load(const QString &file)
    {
        return errorOf([&] { m_document->LoadFile(file); });
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Kalibrierung> m_document;
    std::unique_ptr<QSignalSpy> m_changed;
    StoreEntries m_before;
};

void BadFilesTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_document = std::make_unique<Kalibrierung>(german);
    m_document->setMesswert(pmDirekt, 1, 1, 97.5);
    m_before = entriesOf(m_document->DataStore());
    m_changed = std::make_unique<QSignalSpy>(m_document.get(), &Kalibrierung::IsDirtyChanged);
}

// Whatever failed: store, flag and listeners know nothing of it.
void BadFilesTest::cleanup()
{
    QVERIFY(entriesOf(m_document->DataStore()) == m_before);
    QCOMPARE(m_changed->count(), 0);
}

void BadFilesTest::path_that_is_no_file_is_refused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("number");
    QTest::newRow("missing file") << u"fehlt.xml"_qs << 53;
    QTest::newRow("missing folder") << u"fehlt/a.xml"_qs << 76;
    QTest::newRow("folder that is a file") << u"datei/a.xml"_qs << 76;
    QTest::newRow("a folder") << u"ordner"_qs << 75;
    QTest::newRow("a folder with a slash") << u"ordner/"_qs << 75;
    QTest::newRow("the folder itself") << u"."_qs << 75;
    QTest::newRow("a name that is too long") << u"x"_qs.repeated(256) << 75;
    QTest::newRow("a path that is too long") << u"./"_qs.repeated(3000) + u"a.xml"_qs << 75;
    QTest::newRow("a name with a zero in it") << u"datei"_qs + QChar(0) + u"a.xml"_qs << 75;
    QTest::newRow("link to nowhere") << u"ins-leere"_qs << 53;
    QTest::newRow("link to itself") << u"kreis"_qs << 75;
    QTest::newRow("a name that no encoding has") << QString(QChar(0xd800)) << 53;
}

void BadFilesTest::path_that_is_no_file_is_refused()
{
    QFETCH(QString, name);
    QFETCH(int, number);
    QVERIFY(QDir(m_folder->path()).mkdir(u"ordner"_qs));
    QVERIFY(putBytes(path("datei"), "x"));
    QVERIFY(QFile::link(path("fehlt"), path("ins-leere")));
    QVERIFY(QFile::link(path("kreis"), path("kreis")));
    const auto error = load(m_folder->path() + u'/' + name);
    QVERIFY(error);
    QCOMPARE(error->number(), number);
}

void BadFilesTest::missing_file_and_missing_folder_differ()
{
    QCOMPARE(load(QString())->number(), 75);
    QCOMPARE(load(u"gibt es nicht.xml"_qs)->number(), 53);
    QCOMPARE(load(u"gibt es nicht/a.xml"_qs)->number(), 76);
    QCOMPARE(load(path("fehlt.xml"))->description(), u"Datei nicht gefunden"_qs);
    QCOMPARE(load(path("fehlt/a.xml"))->description(), u"Pfad nicht gefunden"_qs);
}

void BadFilesTest::pipe_is_refused_without_waiting()
{
    QCOMPARE(::mkfifo(QFile::encodeName(path("rohr")).constData(), 0600), 0);
    const auto number =
        inChild([&] { return errorNumber([&] { m_document->LoadFile(path("rohr")); }); }, 10);
    QVERIFY2(number, "loading waited for a writer");
    QCOMPARE(*number, 75);
}

void BadFilesTest::device_is_refused()
{
    QCOMPARE(load(u"/dev/null"_qs)->number(), 75);
    QVERIFY(load(u"/dev/null"_qs)->description().endsWith(u"das ist keine Datei"_qs));
    QCOMPARE(load(u"/dev/zero"_qs)->number(), 75);
}

void BadFilesTest::file_without_permission_is_refused()
{
    QVERIFY(putBytes(path("a.xml"), tableWithValue("v")));
    QVERIFY(QFile::setPermissions(path("a.xml"), {}));
    QCOMPARE(::chmod(QFile::encodeName(m_folder->path()).constData(), 0755), 0);
    const auto number = inChild([&] {
        return becomeUnprivileged() ? errorNumber([&] { m_document->LoadFile(path("a.xml")); })
                                    : notPossible;
    });
    QVERIFY(number);
    if (*number == notPossible)
        QSKIP("the superuser's rights can't be given up here");
    QCOMPARE(*number, 70);
}

void BadFilesTest::file_in_a_closed_folder_is_refused()
{
    QVERIFY(QDir(m_folder->path()).mkdir(u"zu"_qs));
    QVERIFY(putBytes(path("zu/a.xml"), tableWithValue("v")));
    QVERIFY(QFile::setPermissions(path("zu"), {}));
    QCOMPARE(::chmod(QFile::encodeName(m_folder->path()).constData(), 0755), 0);
    const auto number = inChild([&] {
        return becomeUnprivileged() ? errorNumber([&] { m_document->LoadFile(path("zu/a.xml")); })
                                    : notPossible;
    });
    QVERIFY(
        QFile::setPermissions(path("zu"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QVERIFY(number);
    if (*number == notPossible)
        QSKIP("the superuser's rights can't be given up here");
    QCOMPARE(*number, 70);
}

void BadFilesTest::huge_file_is_refused_without_taking_memory()
{
    QVERIFY(putBytes(path("a.xml"), tableWithValue("v")));
    QVERIFY(QFile::resize(path("a.xml"), qint64{2} * 1024 * 1024 * 1024));
    const auto grown = inChild([&] {
        rusage before = {};
        rusage after = {};
        ::getrusage(RUSAGE_SELF, &before);
        const auto error = errorOf([&] { m_document->LoadFile(path("a.xml")); });
        ::getrusage(RUSAGE_SELF, &after);
        const bool clear = error && error->number() == 321 &&
                           error->description().contains(u"2048 MiB"_qs) &&
                           error->description().contains(u"512 MiB"_qs);
        return clear ? static_cast<int>(after.ru_maxrss - before.ru_maxrss) : -1;
    });
    QVERIFY(grown);
    QVERIFY(*grown >= 0);
    QVERIFY2(*grown < 10'000, qPrintable(QString::number(*grown))); // KiB
}

void BadFilesTest::largest_size_is_still_read_and_one_byte_more_refused()
{
    // A sparse file of zeros: refused for what it holds at the limit, for its size above it.
    QVERIFY(putBytes(path("a.xml"), QByteArray()));
    QVERIFY(QFile::resize(path("a.xml"), Kalibrierungsdatei::maximumSize));
    QVERIFY(load(path("a.xml"))->description().contains(u"Zeile 1"_qs));
    QVERIFY(QFile::resize(path("a.xml"), Kalibrierungsdatei::maximumSize + 1));
    QVERIFY(load(path("a.xml"))->description().contains(u"MiB"_qs));
}

// Such as those the kernel makes up: they say that they are empty. This one is a long text with a
// zero at its very end.
void BadFilesTest::file_that_hides_its_size_is_read_to_its_end()
{
    QProcess process;
    QProcessEnvironment environment;
    environment.insert(u"A"_qs, u"x"_qs.repeated(10'000));
    process.setProcessEnvironment(environment);
    process.start(u"sleep"_qs, {u"60"_qs});
    QVERIFY(process.waitForStarted());
    const QString file = u"/proc/%1/environ"_qs.arg(process.processId());
    const QByteArray contents = bytesAt(file);
    const auto error = load(file);
    process.kill();
    process.waitForFinished();
    if (contents.size() < 10'000)
        QSKIP("no files of that kind here");
    QVERIFY(error);
    QCOMPARE(error->number(), 321);
    QVERIFY2(error->description().contains(u"U+0000"_qs), qPrintable(error->description()));
}

void BadFilesTest::lack_of_memory_is_a_numbered_error()
{
#if defined(__SANITIZE_ADDRESS__)
    QSKIP("the sanitizer's own memory knows no limit");
#else
    QVERIFY(putBytes(path("a.xml"), tableWithValue("v")));
    QVERIFY(QFile::resize(path("a.xml"), 500'000'000));
    const auto number = inChild([&] {
        if (!limitMemory(20'000'000)) // less than the file needs
            return notPossible;
        return errorNumber([&] { m_document->LoadFile(path("a.xml")); });
    });
    QVERIFY(number);
    if (*number == notPossible)
        QSKIP("the process's size is not known here");
    QCOMPARE(*number, 7);
#endif
}

void BadFilesTest::lack_of_memory_at_any_moment_leaves_the_document_alone()
{
#if defined(__SANITIZE_ADDRESS__)
    QSKIP("the sanitizer's own memory knows no limit");
#else
    QByteArray rows;
    for (int i = 0; i < 300'000; ++i)
        rows += "<z:row Variable='k" + QByteArray::number(i) + "' Wert='v'/>";
    QVERIFY(putBytes(path("a.xml"), tableOf(rows)));
    constexpr int changed = 1;
    constexpr int loaded = 0;
    // From too little for reading the file to enough for all of it, each time in a fresh process:
    // memory that is given back would be there for the next try.
    int answer = changed;
    int refused = 0;
    for (rlim_t more = 4'000'000; answer != loaded; more += 4'000'000) {
        const auto ofChild = inChild([&] {
            if (!limitMemory(more))
                return notPossible;
            const int number = errorNumber([&] { m_document->LoadFile(path("a.xml")); });
            liftMemoryLimit();
            if (number == 0)
                return loaded;
            const bool same =
                m_document->IsDirty() && entriesOf(m_document->DataStore()) == m_before;
            return same ? number : changed;
        });
        QVERIFY(ofChild);
        answer = *ofChild;
        if (answer == notPossible)
            QSKIP("the process's size is not known here");
        QVERIFY2(answer == loaded || answer == 7, qPrintable(QString::number(answer)));
        refused += answer == 7 ? 1 : 0;
        QVERIFY(more < 500'000'000);
    }
    QVERIFY(refused > 0);
#endif
}

void BadFilesTest::links_to_a_file_are_followed()
{
    QVERIFY(putBytes(path("a.xml"), tableWithValue("&falsch;")));
    QVERIFY(QFile::link(path("a.xml"), path("eins")));
    QVERIFY(QFile::link(path("eins"), path("zwei")));
    QCOMPARE(load(path("zwei"))->number(), 321);
}

void BadFilesTest::bad_contents_leave_the_document_alone_data()
{
    QTest::addColumn<QByteArray>("contents");
    const QByteArray good = tableOf("<z:row Variable='Anzahl Pr\xc3\xbc"
                                    "ffelder' Wert='9'/>"
                                    "<z:row Variable='k' Wert='v'/>");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("binary") << QByteArray::fromHex("7f454c460201010000000000");
    QTest::newRow("cut off") << good.left(good.size() - 7);
    QTest::newRow("two roots") << good + "<xml/>";
    QTest::newRow("document type") << "<!DOCTYPE xml>" + good;
    QTest::newRow("invalid encoding in the last row") << tableWithValue("\xff");
    QTest::newRow("nested 300,000 deep") << QByteArray("<xml>").repeated(300'000);
    QTest::newRow("nested 300,000 deep and closed, no table")
        << QByteArray("<xml>").repeated(300'000) + QByteArray("</xml>").repeated(300'000);
    QByteArray wide = "<xml";
    for (int i = 0; i < 40'000; ++i)
        wide += " a" + QByteArray::number(i % 39'999) + "='x'";
    QTest::newRow("40,000 attributes, two of one name") << wide + "/>";
    QTest::newRow("no columns") << QByteArray(good).replace("AttributeType", "X");
}

void BadFilesTest::bad_contents_leave_the_document_alone()
{
    QFETCH(QByteArray, contents);
    QVERIFY(putBytes(path("a.xml"), contents));
    const auto error = load(path("a.xml"));
    QVERIFY(error);
    QCOMPARE(error->number(), 321);
    QVERIFY(error->description().startsWith(u"Ungültiges Dateiformat: "_qs));
    QCOMPARE(bytesAt(path("a.xml")), contents);
}

REGISTER_TEST(BadFilesTest)
#include "tst_badfiles.moc"
