#include "app/wiederherstellungsfrage.h"
#include "app/wiederherstellungsplatz.h"
#include "tests/app/programmlauf.h"
#include "tests/support/testregistry.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

/// What the next start finds, whose it is, and what becomes of it.
class TestWiederherstellungsangebot : public QObject
{
    Q_OBJECT

private slots:
    void nothingLeftMeansNoQuestion();
    void answerDecides_data();
    void answerDecides();
    void oneAfterTheOtherUntilOneIsRestored();
    void runningProgramsWorkIsNotOffered();
    void twoProgramsKeepTheirOwnFiles();
    void usedAgainProcessNumberHidesNothing();
    void lockThatIsJustBeingFilledIsRespected();
    void diskThatTakesNothingHidesNothing_data();
    void diskThatTakesNothingHidesNothing();
    void clearedAwayWorkIsKeptAgainOnceThereIsRoom();
    void discardedWorkInAProtectedFolderIsNotOfferedAgain();
    void placeThatAnotherProgramHasTakenIsItsOwn_data();
    void placeThatAnotherProgramHasTakenIsItsOwn();
    void otherNumberFormatIsNotMisread();
    void fileOfANewerProgramIsLeftAlone();
    void unreadableFileIsToldOnce_data();
    void unreadableFileIsToldOnce();
    void fileThatWasNeverWrittenIsDropped();
    void leftoversAreTidiedUp();
    void boxNamesTimeAndFile_data();
    void boxNamesTimeAndFile();
};

namespace {

using Antwort = Wiederherstellung::Antwort;

// The folder that a crashed run on \a disk has left, with one file.
QString folderAfterACrash(const QTemporaryDir &disk)
{
    Programmlauf run(3, disk.filePath(u"w"_qs));
    run.start();
    run.typeAndKeep();
    return run.crash(disk);
}

// A start that finds what is in \a folder.
void startOn(Programmlauf &run, std::deque<Antwort> answers = {})
{
    run.startEmpty();
    run.answersToOffers = std::move(answers);
    run.recovery->offer();
}

// Another program that keeps a place in a folder until it is killed.
class OtherProgram
{
public:
    explicit OtherProgram(const QString &folder)
    {
        int ends[2];
        if (::pipe(ends) != 0)
            qFatal("no pipe");
        m_process = ::fork();
        if (m_process == 0) {
            const auto place = Wiederherstellungsplatz::create(folder);
            QFile::copy(folder + u"/vorlage"_qs, place->path());
            const char ready = 1;
            if (::write(ends[1], &ready, 1) == 1)
                ::pause();
            ::_exit(1);
        }
        char ready = 0;
        const bool started = ::read(ends[0], &ready, 1) == 1;
        ::close(ends[0]);
        ::close(ends[1]);
        if (!started)
            qFatal("the other program did not start");
    }
    ~OtherProgram() { kill(); }
    Q_DISABLE_COPY_MOVE(OtherProgram)

    void kill()
    {
        if (m_process <= 0)
            return;
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
        m_process = 0;
    }

private:
    pid_t m_process;
};

// Turns the only recovery file of \a folder into what other programs start with.
void makeTemplate(const QString &folder)
{
    QFile::rename(folder + u'/' + Programmlauf::filesIn(folder).value(0), folder + u"/vorlage"_qs);
}

// As long as it lives, this process can write nothing: no byte at all, or only where everybody may.
class DiskThatTakesNothing
{
public:
    explicit DiskThatTakesNothing(bool full) : m_full(full)
    {
        if (!m_full) {
            m_isSo = ::geteuid() != 0 || ::seteuid(nobody) == 0;
            return;
        }
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        m_isSo = ::getrlimit(RLIMIT_FSIZE, &m_before) == 0;
        const rlimit nothing = {0, m_before.rlim_max};
        m_isSo = m_isSo && ::setrlimit(RLIMIT_FSIZE, &nothing) == 0;
    }
    ~DiskThatTakesNothing()
    {
        const bool back = m_full ? ::setrlimit(RLIMIT_FSIZE, &m_before) == 0
                                 : ::geteuid() == ::getuid() || ::seteuid(::getuid()) == 0;
        if (m_full)
            std::signal(SIGXFSZ, m_handler);
        if (!back)
            qFatal("the disk stays as it is");
    }
    Q_DISABLE_COPY_MOVE(DiskThatTakesNothing)

    bool isSo() const { return m_isSo; }

private:
    static constexpr uid_t nobody = 65534; // the superuser may write everywhere
    bool m_full;
    bool m_isSo = false;
    rlimit m_before = {};
    void (*m_handler)(int) = SIG_DFL;
};

void overwrite(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write a test file");
}

} // namespace

void TestWiederherstellungsangebot::nothingLeftMeansNoQuestion()
{
    const QTemporaryDir disk;
    Programmlauf run(1, disk.filePath(u"w"_qs));
    startOn(run);
    QVERIFY(run.offers.empty());
    QVERIFY(run.dialogs.shown.empty());
    QVERIFY(!QFile::exists(run.folderOfRecovery));
}

void TestWiederherstellungsangebot::answerDecides_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<int>("offersOfTheNextStart");
    QTest::newRow("later") << int(Antwort::Später) << 1;
    QTest::newRow("discard") << int(Antwort::Verwerfen) << 0;
    QTest::newRow("restore and discard") << int(Antwort::Wiederherstellen) << 0;
}

void TestWiederherstellungsangebot::answerDecides()
{
    QFETCH(int, answer);
    QFETCH(int, offersOfTheNextStart);
    const auto choice = static_cast<Antwort>(answer);
    const QTemporaryDir disk;
    const QString folder = folderAfterACrash(disk);
    {
        Programmlauf run(1, folder);
        startOn(run, {choice});
        QCOMPARE(run.offers.size(), std::size_t{1});
        QCOMPARE(run.document.IsDirty(), choice == Antwort::Wiederherstellen);
        QCOMPARE(run.files().size(), choice == Antwort::Verwerfen ? 0 : 1);
        run.dialogs.answers = {Dialogs::Answer::No};
        run.window->close();
        QCOMPARE(run.dialogs.questions.size(), choice == Antwort::Wiederherstellen ? 1 : 0);
    }
    Programmlauf next(1, folder);
    startOn(next);
    QCOMPARE(next.offers.size(), std::size_t(offersOfTheNextStart));
    QCOMPARE(QDir(folder).entryList(QDir::Files).size(), offersOfTheNextStart); // and no locks
}

void TestWiederherstellungsangebot::oneAfterTheOtherUntilOneIsRestored()
{
    const QTemporaryDir disk;
    const QString folder = folderAfterACrash(disk);
    const QString first = folder + u'/' + Programmlauf::filesIn(folder).value(0);
    for (const QString &name : {u"b.xml"_qs, u"c.xml"_qs, u"d.xml"_qs})
        QVERIFY(QFile::copy(first, folder + u'/' + name));
    Programmlauf run(1, folder);
    startOn(run, {Antwort::Später, Antwort::Verwerfen, Antwort::Wiederherstellen});
    QCOMPARE(run.offers.size(), std::size_t{3}); // the last one waits for the next start
    QCOMPARE(run.files().size(), 3);
    QVERIFY(run.document.IsDirty());

    Programmlauf next(1, folder); // while the first still runs, with what it has restored
    startOn(next);
    QCOMPARE(next.offers.size(), std::size_t{2});
}

void TestWiederherstellungsangebot::runningProgramsWorkIsNotOffered()
{
    const QTemporaryDir disk;
    const QString folder = folderAfterACrash(disk);
    makeTemplate(folder);
    OtherProgram other(folder);
    QCOMPARE(Programmlauf::filesIn(folder).size(), 1);
    {
        Programmlauf run(1, folder);
        startOn(run, {Antwort::Verwerfen});
        QVERIFY(run.offers.empty());
        QCOMPARE(run.files().size(), 1);
    }
    other.kill(); // no orderly end
    Programmlauf run(1, folder);
    startOn(run, {Antwort::Wiederherstellen});
    QCOMPARE(run.offers.size(), std::size_t{1});
    QVERIFY(run.document.IsDirty());
}

void TestWiederherstellungsangebot::twoProgramsKeepTheirOwnFiles()
{
    const QTemporaryDir disk;
    const QString folder = disk.filePath(u"w"_qs);
    Programmlauf one(3, folder);
    one.start();
    one.typeAndKeep();
    const QStringList ofOne = one.files();
    {
        Programmlauf two(3, folder);
        two.start();
        two.recovery->offer();
        QVERIFY(two.offers.empty());
        two.typeAndKeep(u"8"_qs);
        QCOMPARE(two.files().size(), 2);
        two.end();
    }
    QCOMPARE(one.files(), ofOne);
}

void TestWiederherstellungsangebot::usedAgainProcessNumberHidesNothing()
{
    const QTemporaryDir disk;
    const QString folder = folderAfterACrash(disk);
    makeTemplate(folder);
    OtherProgram other(folder);
    other.kill();
    const QString lock =
        folder + u'/' + QDir(folder).entryList({u"*.lock"_qs}, QDir::Files).value(0);
    QFile file(lock);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QByteArrayList lines = file.readAll().split('\n');
    file.close();
    QVERIFY(lines.size() > 1);
    lines[0] = QByteArray::number(QCoreApplication::applicationPid()); // given out once more
    overwrite(lock, lines.join('\n'));
    Programmlauf run(1, folder);
    startOn(run, {Antwort::Wiederherstellen});
    QCOMPARE(run.offers.size(), std::size_t{1});
    QVERIFY(run.document.IsDirty());
}

void TestWiederherstellungsangebot::lockThatIsJustBeingFilledIsRespected()
{
    const QTemporaryDir disk;
    const QString folder = folderAfterACrash(disk);
    QFile lock(folder + u'/' + Programmlauf::filesIn(folder).value(0).chopped(4) + u".lock"_qs);
    overwrite(lock.fileName(), {});
    const auto setAge = [&lock](int seconds) {
        return lock.open(QIODevice::ReadWrite) &&
               lock.setFileTime(QDateTime::currentDateTime().addSecs(-seconds),
                                QFileDevice::FileModificationTime);
    };
    QVERIFY(setAge(-3600)); // however long the test is held up: it was made a moment ago
    lock.close();
    {
        Programmlauf run(1, folder);
        startOn(run);
        QVERIFY(run.offers.empty());
        QVERIFY(run.dialogs.shown.empty());
    }
    QVERIFY(lock.exists());
    QVERIFY(setAge(60));
    lock.close();
    Programmlauf run(1, folder); // its program was killed before it filled the lock
    startOn(run);
    QCOMPARE(run.offers.size(), std::size_t{1});
}

void TestWiederherstellungsangebot::diskThatTakesNothingHidesNothing_data()
{
    QTest::addColumn<bool>("full");
    QTest::addColumn<bool>("lockLeft");
    QTest::newRow("full") << true << false;
    QTest::newRow("full, and a lock is left") << true << true;
    QTest::newRow("protected") << false << false;
    QTest::newRow("protected, and a lock is left") << false << true;
}

void TestWiederherstellungsangebot::diskThatTakesNothingHidesNothing()
{
    QFETCH(bool, full);
    QFETCH(bool, lockLeft);
    if (!full && ::geteuid() != 0)
        QSKIP("the program lifts its owner's protection of the folder");
    const QTemporaryDir disk;
    const QString folder = folderAfterACrash(disk);
    if (lockLeft) {
        makeTemplate(folder);
        OtherProgram(folder).kill();
        QVERIFY(QFile::remove(folder + u"/vorlage"_qs));
    }
    QCOMPARE(QDir(folder).entryList(QDir::Files).size(), lockLeft ? 2 : 1);
    const QByteArray name = QFile::encodeName(folder);
    for (const QString &file : QDir(folder).entryList(QDir::Files))
        QVERIFY(::chmod((name + '/' + QFile::encodeName(file)).constData(), 0644) == 0);
    QVERIFY(::chmod(QFile::encodeName(disk.path()).constData(), 0755) == 0);
    QVERIFY(::chmod(name.constData(), full ? 0777 : 0555) == 0);
    Programmlauf run(1, folder);
    run.startEmpty();
    run.answersToOffers = {Antwort::Wiederherstellen};
    {
        const DiskThatTakesNothing nothing(full);
        QVERIFY(nothing.isSo());
        run.recovery->offer();
        run.recovery->check(); // what is the matter is told now
    }
    QVERIFY(::chmod(name.constData(), 0755) == 0);
    QCOMPARE(run.offers.size(), std::size_t{1});
    QVERIFY(run.document.IsDirty());
    QVERIFY(run.dialogs.shown.empty());
    QCOMPARE(run.files().size(), 1);
    const QString notice = run.find<QLabel>(u"labHinweis"_qs)->text();
    QVERIFY2(notice.contains(full ? u"(Datenträger voll, 61)"_qs : u", 70)"_qs),
             qPrintable(notice));
    run.recovery->check(); // and now there is room again
    QVERIFY(!run.find<QLabel>(u"labHinweis"_qs)->isVisible());
    QCOMPARE(QDir(folder).entryList(QDir::Files).size(), 2); // with its lock
}

void TestWiederherstellungsangebot::clearedAwayWorkIsKeptAgainOnceThereIsRoom()
{
    const QTemporaryDir disk;
    const QString folder = disk.filePath(u"w"_qs);
    Programmlauf run(3, folder);
    run.start();
    run.typeAndKeep();
    const QString path = folder + u'/' + run.files().value(0);
    const qint64 size = QFileInfo(path).size();
    QVERIFY(size > 0 && QFile::remove(path));
    {
        const DiskThatTakesNothing full(true);
        if (!full.isSo())
            QSKIP("no such limit here");
        run.recovery->check();
    }
    run.recovery->check(); // without a further change
    QCOMPARE(QFileInfo(path).size(), size);
}

void TestWiederherstellungsangebot::discardedWorkInAProtectedFolderIsNotOfferedAgain()
{
    const QTemporaryDir disk;
    const QString folder = folderAfterACrash(disk);
    const QByteArray name = QFile::encodeName(folder);
    const QByteArray file = name + '/' + QFile::encodeName(Programmlauf::filesIn(folder).value(0));
    QVERIFY(::chmod(file.constData(), 0666) == 0);
    QVERIFY(::chmod(QFile::encodeName(disk.path()).constData(), 0755) == 0);
    QVERIFY(::chmod(name.constData(), 0555) == 0);
    {
        Programmlauf run(1, folder);
        run.startEmpty();
        run.answersToOffers = {Antwort::Verwerfen};
        const DiskThatTakesNothing nothing(false);
        QVERIFY(nothing.isSo());
        run.recovery->offer();
        QCOMPARE(run.offers.size(), std::size_t{1});
        run.recovery->offer();
        QCOMPARE(run.offers.size(), std::size_t{1});
        QVERIFY(run.dialogs.shown.empty());
    }
    QVERIFY(::chmod(name.constData(), 0755) == 0);
}

void TestWiederherstellungsangebot::placeThatAnotherProgramHasTakenIsItsOwn_data()
{
    QTest::addColumn<bool>("goesOn");
    QTest::newRow("the other one works on and saves") << true;
    QTest::newRow("the other one ends") << false;
}

void TestWiederherstellungsangebot::placeThatAnotherProgramHasTakenIsItsOwn()
{
    QFETCH(const bool, goesOn);
    const QTemporaryDir disk;
    const QString folder = disk.filePath(u"w"_qs);
    Programmlauf next(1, folder);
    {
        Programmlauf run(3, folder);
        run.start();
        run.typeAndKeep();
        run.removeLock();
        startOn(next, {Antwort::Wiederherstellen});
        QCOMPARE(next.offers.size(), std::size_t{1});
        if (goesOn) {
            run.recovery->check(); // keeps the work in a place of its own now
            QCOMPARE(run.files().size(), 2);
            run.find<QAction>(u"mf_save"_qs)->trigger();
            QCoreApplication::processEvents();
            QCOMPARE(run.files().size(), 1);
        } else {
            run.end();
        }
    }
    QCOMPARE(next.files().size(), 1);
    Programmlauf third(1, folder);
    startOn(third);
    QVERIFY(third.offers.empty()); // nor is its lock gone
}

void TestWiederherstellungsangebot::otherNumberFormatIsNotMisread()
{
    const QTemporaryDir disk;
    const QString folder = folderAfterACrash(disk);
    const QStringList before = Programmlauf::filesIn(folder);
    {
        Programmlauf run(1, folder, 4, QLocale(QLocale::English, QLocale::UnitedStates));
        startOn(run, {Antwort::Wiederherstellen});
        QVERIFY(run.offers.empty());
        QVERIFY(!run.document.IsDirty());
        QCOMPARE(run.dialogs.shown,
                 std::vector{informationBox(
                     u"Ungespeicherte Arbeit wurde gesichert, als Zahlen anders geschrieben "
                     u"wurden. Damit keine Zahl falsch gelesen wird, bleibt sie liegen.\r\nBitte "
                     u"stellen Sie das frühere Zahlenformat ein und starten Sie das Programm noch "
                     u"einmal."_qs)});
        QCOMPARE(run.files(), before);
    }
    Programmlauf run(1, folder);
    startOn(run, {Antwort::Wiederherstellen});
    QVERIFY(run.document.IsDirty());
    QVERIFY(run.dialogs.shown.empty());
}

void TestWiederherstellungsangebot::fileOfANewerProgramIsLeftAlone()
{
    const QTemporaryDir disk;
    const QString folder = folderAfterACrash(disk);
    const QString path = folder + u'/' + Programmlauf::filesIn(folder).value(0);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QByteArray content = file.readAll();
    file.close();
    // The header begins with the number 1 in four bytes, which becomes 9.
    const auto number = content.indexOf("AAAAA", content.indexOf("Wiederherstellung"));
    QVERIFY(number > 0);
    content[number + 4] = 'C';
    overwrite(path, content);
    for (int start = 1; start <= 2; ++start) {
        Programmlauf run(1, folder);
        startOn(run, {Antwort::Wiederherstellen});
        QVERIFY(run.offers.empty());
        QCOMPARE(run.dialogs.shown,
                 std::vector{informationBox(
                     u"Ungespeicherte Arbeit aus einer neueren Fassung dieses Programms ist noch "
                     u"vorhanden.\r\nBitte öffnen Sie die neuere Fassung, um sie "
                     u"wiederherzustellen."_qs)});
        QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList{QFileInfo(path).fileName()});
    }
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), content);
}

void TestWiederherstellungsangebot::unreadableFileIsToldOnce_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no XML") << QByteArray("kaputt");
    QTest::newRow("zeros") << QByteArray(5000, '\0');
    QTest::newRow("cut off") << QByteArray("cut");
    QTest::newRow("header damaged") << QByteArray("header");
    QTest::newRow("a calibration only") << QByteArray("calibration");
}

void TestWiederherstellungsangebot::unreadableFileIsToldOnce()
{
    QFETCH(QByteArray, content);
    const QTemporaryDir disk;
    const QString folder = folderAfterACrash(disk);
    const QString path = folder + u'/' + Programmlauf::filesIn(folder).value(0);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray good = file.readAll();
    file.close();
    if (content == "cut")
        content = good.left(good.size() * 2 / 3);
    else if (content == "header")
        content = QByteArray(good).replace("AAAAA", "AAAA");
    else if (content == "calibration") {
        Kalibrierung(QLocale(QLocale::German)).SaveFile(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        content = file.readAll();
        file.close();
    }
    QVERIFY(content != good);
    overwrite(path, content);
    QVERIFY(QFile::copy(path, folder + u"/b.xml"_qs)); // two of them, and one message

    Programmlauf run(1, folder);
    startOn(run, {Antwort::Wiederherstellen});
    QVERIFY(run.offers.empty());
    QCOMPARE(run.dialogs.shown,
             std::vector{informationBox(
                 u"Ungespeicherte Arbeit aus einem früheren Programmlauf konnte nicht gelesen "
                 u"werden.\r\nIhre gespeicherten Dateien sind davon nicht betroffen."_qs)});
    QVERIFY(!run.document.IsDirty());
    QCOMPARE(run.activePage(), 1);
    QCOMPARE(QDir(folder).entryList({u"*.defekt"_qs}, QDir::Files).size(), 2); // kept aside

    Programmlauf next(1, folder);
    startOn(next);
    QVERIFY(next.dialogs.shown.empty());
    QVERIFY(next.offers.empty());
}

void TestWiederherstellungsangebot::fileThatWasNeverWrittenIsDropped()
{
    const QTemporaryDir disk;
    overwrite(disk.filePath(u"a.xml"_qs), {});
    Programmlauf run(1, disk.path());
    startOn(run);
    QVERIFY(run.offers.empty());
    QVERIFY(run.dialogs.shown.empty());
    QVERIFY(QDir(disk.path()).isEmpty());
}

void TestWiederherstellungsangebot::leftoversAreTidiedUp()
{
    const QTemporaryDir disk;
    const QString folder = folderAfterACrash(disk);
    makeTemplate(folder);
    OtherProgram other(folder);
    other.kill();
    for (const QString &name : Programmlauf::filesIn(folder))
        QVERIFY(QFile::remove(folder + u'/' + name)); // its lock is left alone
    const OtherProgram running(folder);
    const QString temporary = folder + u"/~wendral-00000001.tmp"_qs;
    overwrite(temporary, "x");
    overwrite(folder + u"/~wendral-00000002.tmp"_qs, "x"); // may be of the running one
    QFile old(temporary);
    QVERIFY(old.open(QIODevice::ReadWrite));
    QVERIFY(old.setFileTime(QDateTime::currentDateTime().addDays(-2),
                            QFileDevice::FileModificationTime));
    old.close();
    Programmlauf run(1, folder);
    startOn(run);
    QCOMPARE(QDir(folder).entryList({u"*.lock"_qs}, QDir::Files).size(), 1); // the running one's
    QCOMPARE(QDir(folder).entryList({u"*.tmp"_qs}, QDir::Files),
             QStringList{u"~wendral-00000002.tmp"_qs});
}

void TestWiederherstellungsangebot::boxNamesTimeAndFile_data()
{
    QTest::addColumn<QString>("press");
    QTest::addColumn<int>("answer");
    QTest::newRow("restore") << u"&Wiederherstellen"_qs << int(Antwort::Wiederherstellen);
    QTest::newRow("discard") << u"&Verwerfen"_qs << int(Antwort::Verwerfen);
    QTest::newRow("later") << u"&Später"_qs << int(Antwort::Später);
    QTest::newRow("escape") << u""_qs << int(Antwort::Später);
}

void TestWiederherstellungsangebot::boxNamesTimeAndFile()
{
    QFETCH(QString, press);
    QFETCH(int, answer);
    QString text;
    QString title;
    QStringList captions;
    QString preset;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        timer.stop();
        text = box->text();
        title = box->windowTitle();
        preset = box->defaultButton()->text();
        QAbstractButton *pressed = nullptr;
        for (QAbstractButton *button : box->buttons()) {
            captions.append(button->text());
            if (button->text() == press)
                pressed = button;
        }
        if (pressed)
            pressed->click();
        else
            QTest::keyClick(box, Qt::Key_Escape);
    });
    timer.start(5);
    const Wiederherstellung::Fund found{QDateTime(QDate(2026, 3, 14), QTime(15, 9, 26)),
                                        press.isEmpty() ? QString() : u"/ordner/<b>feld.xml"_qs};
    const auto given =
        frageNachWiederherstellung(nullptr, found, QLocale(QLocale::German, QLocale::Germany));
    QCOMPARE(int(given), answer);
    QCOMPARE(title, u"Kalibrierung nach Wendral"_qs);
    QVERIFY2(text.contains(u"Stand: Samstag, 14. März 2026, 15:09"_qs), qPrintable(text));
    QVERIFY2(text.contains(press.isEmpty() ? u"Datei: noch ohne Namen"_qs
                                           : u"Datei: <b>feld.xml\nOrdner: /ordner"_qs),
             qPrintable(text));
    captions.sort();
    QCOMPARE(captions, QStringList({u"&Später"_qs, u"&Verwerfen"_qs, u"&Wiederherstellen"_qs}));
    QCOMPARE(preset, u"&Wiederherstellen"_qs);
}

REGISTER_TEST(TestWiederherstellungsangebot)
#include "tst_wiederherstellungsangebot.moc"
