// Targets that can't be written, interrupted writing, a C library that writes numbers with a comma.

#include "export/mappenpruefung.h"
#include "export/tabellenausgabe.h"
#include "tests/export/beispiele.h"
#include "tests/export/mappenleser.h"
#include "tests/support/testregistry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <clocale>
#include <csignal>
#include <functional>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace {

const QDateTime created = QDateTime::fromSecsSinceEpoch(0);

// 0, -1 for cancelled, or the error's number.
int schreibe(Kalibrierung &document, const QString &target,
             const Tabellenfortschritt &progress = {})
{
    try {
        return schreibeTabelle(document, target, created, progress) ? 0 : -1;
    } catch (const RunTimeError &error) {
        return error.number();
    }
}

QByteArray inhalt(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool lege(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// Points with values that don't repeat, so that they pack badly.
std::unique_ptr<Kalibrierung> gross(int fields, int points)
{
    std::vector<std::vector<double>> direct(static_cast<std::size_t>(fields));
    double value = 0.5;
    for (std::vector<double> &field : direct) {
        for (int point = 0; point < points; ++point) {
            value = 3.9 * value * (1 - value); // logistic map: as good as random
            field.push_back(std::round(value * 1e6) / 1e6);
        }
    }
    auto document = std::make_unique<Kalibrierung>(QLocale(QLocale::German));
    setzeWerte(*document, direct, direct);
    return document;
}

#ifdef Q_OS_UNIX
// The exit code of \a work in a process of its own.
int imKind(const std::function<int()> &work)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// As imKind(), where no more than \a count further files can be open.
int mitWenigenDateien(int count, const std::function<int()> &work)
{
    return imKind([&] {
        const int next = dup(0);
        for (int handle = next; handle < next + count; ++handle)
            close(handle); // also what was open behind a gap
        const auto limit = static_cast<rlim_t>(next + count);
        const rlimit both{limit, limit};
        return next >= 0 && setrlimit(RLIMIT_NOFILE, &both) == 0 ? work() : -1;
    });
}
#endif

} // namespace

class TestZiele : public QObject
{
    Q_OBJECT

private slots:
    void anExistingFileIsReplaced()
    {
        QTemporaryDir folder;
        const QString target = folder.filePath(u"Maß der Übergänge ².xlsx"_qs);
        QVERIFY(lege(target, "old"));
        QCOMPARE(schreibe(*dokument("ordinary"), target), 0);
        QVERIFY(inhalt(target).startsWith("PK"));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }

    void aMissingFolderIsNamed()
    {
        QTemporaryDir folder;
        QCOMPARE(schreibe(*dokument("ordinary"), folder.filePath(u"fehlt/a.xlsx"_qs)), 76);
        QCOMPARE(schreibe(*dokument("ordinary"), folder.path()), 75);
    }

    void countsThatAreNoneAreAnErrorAndWriteNothing()
    {
        QTemporaryDir folder;
        const auto document = dokument("ordinary");
        document->DataStore().set(u"Anzahl Prüffelder"_qs, u"viele"_qs);
        QCOMPARE(schreibe(*document, folder.filePath(u"a.xlsx"_qs)), 13);
        document->DataStore().set(u"Anzahl Prüffelder"_qs, u"2000000000"_qs);
        QCOMPARE(schreibe(*document, folder.filePath(u"a.xlsx"_qs)), 6);
        document->DataStore().set(u"Anzahl Prüffelder"_qs, u"3"_qs);
        document->DataStore().set(u"Prüffeld Prüfpunktanzahl 2"_qs, u"2000000000"_qs);
        QCOMPARE(schreibe(*document, folder.filePath(u"a.xlsx"_qs)), 6);
        QVERIFY(QDir(folder.path()).isEmpty());
    }

#ifdef Q_OS_UNIX
    // Here nothing keeps a file that another program has open from being replaced: that one goes on
    // reading what it has opened.
    void aFileThatIsOpenElsewhereIsReplaced()
    {
        QTemporaryDir folder;
        const QString target = folder.filePath(u"a.xlsx"_qs);
        QVERIFY(lege(target, "old"));
        QFile elsewhere(target);
        QVERIFY(elsewhere.open(QIODevice::ReadWrite));
        QCOMPARE(schreibe(*dokument("ordinary"), target), 0);
        QCOMPARE(elsewhere.readAll(), QByteArray("old"));
        QVERIFY(inhalt(target).startsWith("PK"));
        QVERIFY(GeleseneMappe::lies(target).blaetter().size() == 4 || !GeleseneMappe::moeglich());
    }

    void aFolderWithoutWritePermissionIsNamed()
    {
        QTemporaryDir folder;
        const QString closed = folder.filePath(u"zu"_qs);
        QVERIFY(QDir().mkdir(closed));
        using F = QFileDevice;
        const auto readable =
            F::ReadOwner | F::ExeOwner | F::ReadGroup | F::ExeGroup | F::ReadOther | F::ExeOther;
        QVERIFY(QFile::setPermissions(folder.path(), readable | F::WriteOwner));
        QVERIFY(QFile::setPermissions(closed, readable));
        const int code = imKind([&] {
            constexpr uid_t nobody = 65534; // root may write everywhere
            if (getuid() == 0 && setuid(nobody) != 0)
                return -1;
            return schreibe(*dokument("ordinary"), closed + u"/a.xlsx"_qs);
        });
        QCOMPARE(code, 70);
        QVERIFY(QDir(closed).isEmpty());
    }

    void aFullDiskLeavesTheOldFile_data()
    {
        QTest::addColumn<int>("bytes");
        QTest::newRow("no room for a byte") << 0;
        QTest::newRow("no room for the file") << 10'000;
        // The sheet's temporary file is longer than what is packed of it, and the library does not
        // notice when that is cut short.
        QTest::newRow("no room for the library's temporary file") << 200'000;
    }

    void aFullDiskLeavesTheOldFile()
    {
        QFETCH(int, bytes);
        QTemporaryDir folder;
        const QString target = folder.filePath(u"a.xlsx"_qs);
        const auto document = gross(10, 200);
        QCOMPARE(schreibe(*document, target), 0);
        const qint64 size = inhalt(target).size();
        QVERIFY2(size > 50'000 && size < 150'000, QByteArray::number(size).constData());
        QVERIFY(lege(target, "old"));
        const int code = imKind([&] {
            std::signal(SIGXFSZ, SIG_IGN);
            const auto limit = static_cast<rlim_t>(bytes);
            const rlimit both{limit, limit};
            if (setrlimit(RLIMIT_FSIZE, &both) != 0)
                return -1;
            return schreibe(*document, target);
        });
        QCOMPARE(code, 61);
        QCOMPARE(inhalt(target), QByteArray("old"));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }

    void tooFewFilesAreNamedAndLeaveTheOldFile()
    {
        QTemporaryDir folder;
        const QString target = folder.filePath(u"a.xlsx"_qs);
        const auto document = dokument("ordinary");
        constexpr int enough = 12;
        int failed = 0;
        for (int count = 0; count <= enough; ++count) {
            QVERIFY(lege(target, "old"));
            const int code = mitWenigenDateien(count, [&] { return schreibe(*document, target); });
            if (code == 0)
                break;
            QCOMPARE(code, 75);
            QCOMPARE(inhalt(target), QByteArray("old"));
            QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
            ++failed;
        }
        QVERIFY2(failed >= 6 && failed < enough, QByteArray::number(failed).constData());
        // Other files may be opened while this one is written.
        QCOMPARE(mitWenigenDateien(0,
                                   [&] {
                                       try {
                                           pruefeMappe(target, {}, [](auto, auto) { return true; });
                                           return 0;
                                       } catch (const RunTimeError &error) {
                                           return int{error.number()};
                                       }
                                   }),
                 75);
    }

    void numbersHaveAPointUnderAGermanCLocale()
    {
        if (!GeleseneMappe::moeglich())
            QSKIP("python3-openpyxl is not installed");
        QTemporaryDir folder;
        bool good = false;
        starteProgramm(
            u"localedef"_qs,
            {u"-i"_qs, u"de_DE"_qs, u"-f"_qs, u"UTF-8"_qs, folder.filePath(u"de_DE.UTF-8"_qs)},
            &good);
        if (!good)
            QSKIP("no German locale can be made here (package locales)");
        const QString target = folder.filePath(u"a.xlsx"_qs);
        const auto hasComma = [] { return *std::localeconv()->decimal_point == ','; };
        const int code = imKind([&] {
            qputenv("LOCPATH", folder.path().toUtf8());
            if (!std::setlocale(LC_ALL, "de_DE.UTF-8") || !hasComma())
                return 201;
            const int written = schreibe(*dokument("ordinary"), target);
            return hasComma() ? written : 202; // only while writing is it another one
        });
        QCOMPARE(code, 0);
        const GeleseneMappe book = GeleseneMappe::lies(target);
        QCOMPARE(book.zelle(u"Messwerte"_qs, u"E2"_qs).wert.toDouble(), 95.1);
        QVERIFY(book.zelle(u"Auswertung"_qs, u"B3"_qs).wert.isDouble());
    }
#endif

    void progressGrowsToOneHundred()
    {
        QTemporaryDir folder;
        std::vector<int> reported;
        QCOMPARE(schreibe(*gross(20, 1000), folder.filePath(u"a.xlsx"_qs),
                          [&](int percent) {
                              reported.push_back(percent);
                              return true;
                          }),
                 0);
        QVERIFY(reported.size() > 10);
        QVERIFY(std::is_sorted(reported.begin(), reported.end()));
        QCOMPARE(reported.back(), 100);
        QVERIFY(reported.front() < 10);
    }

    void cancellingLeavesTheOldFile_data()
    {
        QTest::addColumn<int>("percent");
        QTest::newRow("while rows are written") << 12;
        QTest::newRow("before packing") << 60;
        QTest::newRow("before it is checked") << 90;
        QTest::newRow("while it is checked") << 95;
    }

    void cancellingLeavesTheOldFile()
    {
        QFETCH(int, percent);
        QTemporaryDir folder;
        const QString target = folder.filePath(u"a.xlsx"_qs);
        QVERIFY(lege(target, "old"));
        QCOMPARE(schreibe(*gross(20, 1000), target, [&](int now) { return now < percent; }), -1);
        QCOMPARE(inhalt(target), QByteArray("old"));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }

    void writingManyFilesKeepsNoFileOpen()
    {
        if (!QFile::exists(u"/proc/self/fd"_qs))
            QSKIP("open files can't be counted here");
        QTemporaryDir folder;
        const auto count = [] { return QDir(u"/proc/self/fd"_qs).entryList().size(); };
        const auto document = dokument("ordinary");
        schreibe(*document, folder.filePath(u"a.xlsx"_qs));
        const auto before = count();
        for (int i = 0; i < 5; ++i) {
            schreibe(*document, folder.filePath(u"a.xlsx"_qs));
            schreibe(*document, folder.filePath(u"a.xlsx"_qs), [](int) { return false; });
            schreibe(*document, folder.filePath(u"fehlt/a.xlsx"_qs));
        }
        QCOMPARE(count(), before);
    }
};

REGISTER_TEST(TestZiele)
#include "tst_ziele.moc"
