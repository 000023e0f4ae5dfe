#include "tests/core/file/childprocess.h"
#include "tests/core/file/rowsetsupport.h"
#include "tests/support/testregistry.h"

#include "core/atomicfile.h"
#include "core/kalibrierung.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

#include <sys/stat.h>

namespace {

const QLocale german(QLocale::German, QLocale::Germany);

mode_t modeOf(const QString &path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
}

bool linkTo(const char *contents, const QString &path)
{
    return ::symlink(contents, QFile::encodeName(path).constData()) == 0;
}

} // namespace

/// Saving to every kind of place that a file can have.
class SaveTargetsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void new_file_gets_the_permissions_of_new_files_data();
    void new_file_gets_the_permissions_of_new_files();
    void existing_file_keeps_its_permissions_data();
    void existing_file_keeps_its_permissions();
    void existing_file_keeps_its_owner();
    void longest_names_are_saved_data();
    void longest_names_are_saved();
    void relative_path_is_saved();
    void link_is_followed_and_stays_a_link();
    void chain_of_links_is_followed();
    void link_to_a_new_file_makes_that_file();
    void link_through_a_linked_folder_leads_where_the_system_says();
    void second_name_of_the_file_keeps_the_old_contents();
    void place_that_can_not_hold_a_file_is_refused_data();
    void place_that_can_not_hold_a_file_is_refused();
    void abandoned_file_leaves_nothing_behind();
    void system_errors_have_their_numbers();

private:
    QString path(const char *name) const { return m_folder->filePath(QString::fromUtf8(name)); }
    QStringList names() const
    {
        return QDir(m_folder->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    bool isSaved(const QString &file) const { return bytesAt(file) == m_saved; }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Kalibrierung> m_document;
    QByteArray m_saved;
};

void SaveTargetsTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_document = std::make_unique<Kalibrierung>(german);
    m_document->SaveFile(path("vorlage"));
    m_saved = bytesAt(path("vorlage"));
    QVERIFY(m_saved.size() > 1000);
    QVERIFY(QFile::remove(path("vorlage")));
}

void SaveTargetsTest::new_file_gets_the_permissions_of_new_files_data()
{
    QTest::addColumn<uint>("mask");
    QTest::addColumn<uint>("expected");
    QTest::newRow("usual") << 0022u << 0644u;
    QTest::newRow("group") << 0002u << 0664u;
    QTest::newRow("private") << 0077u << 0600u;
}

void SaveTargetsTest::new_file_gets_the_permissions_of_new_files()
{
    QFETCH(uint, mask);
    QFETCH(uint, expected);
    const mode_t before = ::umask(mask);
    m_document->SaveFile(path("a.xml"));
    ::umask(before);
    QCOMPARE(modeOf(path("a.xml")), expected);
}

void SaveTargetsTest::existing_file_keeps_its_permissions_data()
{
    QTest::addColumn<uint>("mode");
    for (const uint mode : {0600u, 0640u, 0604u, 0666u, 0755u})
        QTest::addRow("%o", mode) << mode;
}

void SaveTargetsTest::existing_file_keeps_its_permissions()
{
    QFETCH(uint, mode);
    QVERIFY(putBytes(path("a.xml"), "alt"));
    QCOMPARE(::chmod(QFile::encodeName(path("a.xml")).constData(), mode), 0);
    const mode_t before = ::umask(0077);
    m_document->SaveFile(path("a.xml"));
    ::umask(before);
    QVERIFY(isSaved(path("a.xml")));
    QCOMPARE(modeOf(path("a.xml")), mode);
}

void SaveTargetsTest::existing_file_keeps_its_owner()
{
    if (::geteuid() != 0)
        QSKIP("only the superuser can give a file to somebody else");
    QVERIFY(putBytes(path("a.xml"), "alt"));
    QCOMPARE(::chown(QFile::encodeName(path("a.xml")).constData(), 65534, 65533), 0);
    m_document->SaveFile(path("a.xml"));
    QCOMPARE(QFileInfo(path("a.xml")).ownerId(), 65534u);
    QCOMPARE(QFileInfo(path("a.xml")).groupId(), 65533u);
    QVERIFY(isSaved(path("a.xml")));
}

void SaveTargetsTest::longest_names_are_saved_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("250 bytes") << u"n"_qs.repeated(246) + u".xml"_qs;
    QTest::newRow("255 bytes") << u"n"_qs.repeated(251) + u".xml"_qs;
    QTest::newRow("254 bytes of umlauts") << u"ü"_qs.repeated(125) + u".xml"_qs;
    QTest::newRow("blanks and signs") << u" Prüfung % 'Süd' \"1\" & <2> $x;.xml "_qs;
    QTest::newRow("line break") << u"a\nb.xml"_qs;
    QTest::newRow("no ending") << u"a"_qs;
    QTest::newRow("hidden") << u".a.xml"_qs;
    QTest::newRow("looks like an option") << u"-rf"_qs;
    QTest::newRow("beyond the basic plane") << u"𝄞.xml"_qs;
}

void SaveTargetsTest::longest_names_are_saved()
{
    QFETCH(QString, name);
    const QString file = m_folder->filePath(name);
    m_document->SaveFile(file);
    QVERIFY(isSaved(file));
    m_document->SaveFile(file);
    QVERIFY(isSaved(file));
    QCOMPARE(names(), QStringList{name});
    m_document->LoadFile(file);
}

void SaveTargetsTest::relative_path_is_saved()
{
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_folder->path()));
    m_document->SaveFile(u"a.xml"_qs);
    m_document->SaveFile(u"./b.xml"_qs);
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(isSaved(path("a.xml")));
    QVERIFY(isSaved(path("b.xml")));
}

void SaveTargetsTest::link_is_followed_and_stays_a_link()
{
    QVERIFY(putBytes(path("ziel.xml"), "alt"));
    QVERIFY(linkTo("ziel.xml", path("link.xml")));
    m_document->SaveFile(path("link.xml"));
    QVERIFY(QFileInfo(path("link.xml")).isSymLink());
    QVERIFY(!QFileInfo(path("ziel.xml")).isSymLink());
    QVERIFY(isSaved(path("ziel.xml")));
    QCOMPARE(names(), (QStringList{u"link.xml"_qs, u"ziel.xml"_qs}));
}

void SaveTargetsTest::chain_of_links_is_followed()
{
    QVERIFY(QDir(m_folder->path()).mkdir(u"fern"_qs));
    QVERIFY(putBytes(path("fern/ziel.xml"), "alt"));
    QVERIFY(linkTo("ziel.xml", path("fern/3")));
    QVERIFY(linkTo("fern/3", path("2")));
    QVERIFY(linkTo(QFile::encodeName(path("2")).constData(), path("1")));
    m_document->SaveFile(path("1"));
    QVERIFY(isSaved(path("fern/ziel.xml")));
    for (const char *link : {"1", "2", "fern/3"})
        QVERIFY(QFileInfo(path(link)).isSymLink());
}

void SaveTargetsTest::link_to_a_new_file_makes_that_file()
{
    QVERIFY(linkTo("neu.xml", path("link.xml")));
    m_document->SaveFile(path("link.xml"));
    QVERIFY(isSaved(path("neu.xml")));
    QVERIFY(QFileInfo(path("link.xml")).isSymLink());
}

// Shortening "../" as text would leave the linked folder by the wrong door.
void SaveTargetsTest::link_through_a_linked_folder_leads_where_the_system_says()
{
    QVERIFY(QDir(m_folder->path()).mkpath(u"a/b"_qs));
    QVERIFY(putBytes(path("a/ziel.xml"), "alt"));
    QVERIFY(putBytes(path("ziel.xml"), "anderes"));
    QVERIFY(linkTo("a/b", path("ordner")));
    QVERIFY(linkTo("../ziel.xml", path("a/b/link.xml")));
    m_document->SaveFile(path("ordner/link.xml"));
    QVERIFY(isSaved(path("a/ziel.xml")));
    QCOMPARE(bytesAt(path("ziel.xml")), QByteArray("anderes"));

    QVERIFY(putBytes(path("a/ziel.xml"), "alt"));
    m_document->SaveFile(path("ordner/../ziel.xml"));
    QVERIFY(isSaved(path("a/ziel.xml")));
    QCOMPARE(bytesAt(path("ziel.xml")), QByteArray("anderes"));
}

void SaveTargetsTest::second_name_of_the_file_keeps_the_old_contents()
{
    QVERIFY(putBytes(path("a.xml"), "alt"));
    QCOMPARE(::link(QFile::encodeName(path("a.xml")).constData(),
                    QFile::encodeName(path("b.xml")).constData()),
             0);
    m_document->SaveFile(path("a.xml"));
    QVERIFY(isSaved(path("a.xml")));
    QCOMPARE(bytesAt(path("b.xml")), QByteArray("alt"));
}

void SaveTargetsTest::place_that_can_not_hold_a_file_is_refused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("number");
    QTest::newRow("a folder") << u"ordner"_qs << 75;
    QTest::newRow("a folder with a slash") << u"ordner/"_qs << 75;
    QTest::newRow("this folder") << u"."_qs << 75;
    QTest::newRow("missing folder") << u"fehlt/a.xml"_qs << 76;
    QTest::newRow("folder that is a file") << u"datei/a.xml"_qs << 76;
    QTest::newRow("a pipe") << u"rohr"_qs << 75;
    QTest::newRow("link to a folder") << u"zum-ordner"_qs << 75;
    QTest::newRow("link to itself") << u"kreis"_qs << 75;
    QTest::newRow("link into a missing folder") << u"ins-leere"_qs << 76;
    QTest::newRow("256 bytes") << u"n"_qs.repeated(256) << 75;
    QTest::newRow("a path that is too long") << u"./"_qs.repeated(3000) + u"a.xml"_qs << 75;
    QTest::newRow("a name with a zero in it") << u"a"_qs + QChar(0) + u".xml"_qs << 75;
}

void SaveTargetsTest::place_that_can_not_hold_a_file_is_refused()
{
    QFETCH(QString, name);
    QFETCH(int, number);
    QVERIFY(QDir(m_folder->path()).mkdir(u"ordner"_qs));
    QVERIFY(putBytes(path("datei"), "x"));
    QCOMPARE(::mkfifo(QFile::encodeName(path("rohr")).constData(), 0600), 0);
    QVERIFY(linkTo("ordner", path("zum-ordner")));
    QVERIFY(linkTo("kreis", path("kreis")));
    QVERIFY(linkTo("fehlt/a.xml", path("ins-leere")));
    const QStringList before = names();
    const auto error = errorOf([&] { m_document->SaveFile(m_folder->path() + u'/' + name); });
    QVERIFY(error);
    QCOMPARE(error->number(), number);
    QCOMPARE(names(), before);
    QCOMPARE(bytesAt(path("datei")), QByteArray("x"));
    QVERIFY(QDir(path("ordner")).isEmpty());
    QCOMPARE(errorNumber([&] { m_document->SaveFile(QString()); }), 75);
    QCOMPARE(errorNumber([&] { m_document->SaveFile(u"/dev/null"_qs); }), 75);
}

void SaveTargetsTest::abandoned_file_leaves_nothing_behind()
{
    QVERIFY(putBytes(path("a.xml"), "alt"));
    {
        AtomicFile file(path("a.xml"));
        file.write("neu");
        QCOMPARE(bytesAt(file.temporaryPath()), QByteArray("neu"));
        QCOMPARE(names().size(), 2);
    }
    QCOMPARE(names(), QStringList{u"a.xml"_qs});
    QCOMPARE(bytesAt(path("a.xml")), QByteArray("alt"));

    AtomicFile file(path("a.xml"));
    file.device().write("von einer Bibliothek geschrieben");
    file.commit();
    QCOMPARE(bytesAt(path("a.xml")), QByteArray("von einer Bibliothek geschrieben"));
}

void SaveTargetsTest::system_errors_have_their_numbers()
{
    const ErrorNumber other = ErrorNumber::InvalidFileFormat;
    QCOMPARE(errorNumberOf(ENOSPC, other), ErrorNumber::DiskFull);
    QCOMPARE(errorNumberOf(EDQUOT, other), ErrorNumber::DiskFull);
    QCOMPARE(errorNumberOf(EFBIG, other), ErrorNumber::DiskFull);
    QCOMPARE(errorNumberOf(EACCES, other), ErrorNumber::PermissionDenied);
    QCOMPARE(errorNumberOf(EPERM, other), ErrorNumber::PermissionDenied);
    QCOMPARE(errorNumberOf(EROFS, other), ErrorNumber::PermissionDenied);
    QCOMPARE(errorNumberOf(ENOENT, other), ErrorNumber::PathNotFound);
    QCOMPARE(errorNumberOf(ENOTDIR, other), ErrorNumber::PathNotFound);
    QCOMPARE(errorNumberOf(ENAMETOOLONG, other), ErrorNumber::PathFileAccess);
    QCOMPARE(errorNumberOf(EISDIR, other), ErrorNumber::PathFileAccess);
    QCOMPARE(errorNumberOf(ENOMEM, other), ErrorNumber::OutOfMemory);
    QCOMPARE(errorNumberOf(EIO, other), ErrorNumber::DeviceIo);
    QCOMPARE(errorNumberOf(EMFILE, other), ErrorNumber::PathFileAccess);
    QCOMPARE(errorNumberOf(ENFILE, other), ErrorNumber::PathFileAccess);
    QCOMPARE(errorNumberOf(0, other), other);
    for (const int tooMany : {EMFILE, ENFILE})
        QCOMPARE(errorOf(tooMany, other, u"im Ordner"_qs).description(),
                 u"Fehler beim Zugriff auf Pfad/Datei: zu viele offene Dateien"_qs);
    QCOMPARE(errorOf(ENOSPC, other, u"im Ordner"_qs).description(),
             u"Datenträger voll: im Ordner"_qs);
}

REGISTER_TEST(SaveTargetsTest)
#include "tst_savetargets.moc"
