#include "protocol/windows/savetarget.h"
#include "tests/support/testregistry.h"
#include "wizard/fehlerbericht.h"
#include "wizard/frminfo.h"
#include "wizard/qtdialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

/// The real boxes, and the one form of a failure.
class TestQtDialogs : public QObject
{
    Q_OBJECT

private slots:
    void messageShowsIconTitleAndText_data();
    void messageShowsIconTitleAndText();
    void emptyTitleIsTheApplications();
    void textIsNeverTakenForMarkup();
    void questionReturnsItsAnswer_data();
    void questionReturnsItsAnswer();
    void escapeCancelsTheQuestion();
    void conflictReturnsItsAnswer_data();
    void conflictReturnsItsAnswer();
    void openDialogFiltersXml();
    void saveDialogStartsWithTheOldNameAndAddsTheSuffix();
    void savedNameGetsItsSuffix_data();
    void savedNameGetsItsSuffix();
    void existingFileIsReplacedOnlyWhenAskedFor_data();
    void existingFileIsReplacedOnlyWhenAskedFor();
    void onlyTheFileThatIsWrittenIsAskedAbout_data();
    void onlyTheFileThatIsWrittenIsAskedAbout();
    void refusedFileOfAnotherFolderIsChosenAgainThere();
    void dialogsStartInAFolderThatExists_data();
    void dialogsStartInAFolderThatExists();
    void cancelledFileDialogsGiveNothing();
    void windowThatWaitsForItsDialogIsNotClosed_data();
    void windowThatWaitsForItsDialogIsNotClosed();
    void failureHasOneForm_data();
    void failureHasOneForm();
    void numberZeroShowsNoBox();
    void outOfMemoryIsReportedToo();
    void infoBoxNamesTheProduct();
};

namespace {

// Runs \a look on the modal window of type Box as soon as it is there.
template <typename Box, typename Look>
void whenShown(Look look)
{
    auto *timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, look] {
        if (auto *box = qobject_cast<Box *>(QApplication::activeModalWidget())) {
            timer->deleteLater();
            look(*box);
        }
    });
    timer->start(5);
}

QString replaceQuestion(const QString &name)
{
    return u"„%1“ gibt es schon. Soll die Datei ersetzt werden?"_qs.arg(name);
}

} // namespace

void TestQtDialogs::messageShowsIconTitleAndText_data()
{
    QTest::addColumn<int>("icon");
    QTest::addColumn<int>("expected");
    QTest::newRow("information") << int(Dialogs::Icon::Information)
                                 << int(QMessageBox::Information);
    QTest::newRow("exclamation") << int(Dialogs::Icon::Exclamation) << int(QMessageBox::Warning);
    QTest::newRow("critical") << int(Dialogs::Icon::Critical) << int(QMessageBox::Critical);
}

void TestQtDialogs::messageShowsIconTitleAndText()
{
    QFETCH(int, icon);
    QFETCH(int, expected);
    QtDialogs dialogs;
    QMessageBox::Icon shownIcon = QMessageBox::NoIcon;
    QString title;
    QString text;
    whenShown<QMessageBox>([&](QMessageBox &box) {
        shownIcon = box.icon();
        title = box.windowTitle();
        text = box.text();
        QTest::keyClick(&box, Qt::Key_Return);
    });
    dialogs.message(nullptr, static_cast<Dialogs::Icon>(icon), u"Titel"_qs, u"eins\r\nzwei"_qs);
    QCOMPARE(int(shownIcon), expected);
    QCOMPARE(title, u"Titel"_qs);
    QCOMPARE(text, u"eins\nzwei"_qs);
}

void TestQtDialogs::emptyTitleIsTheApplications()
{
    QtDialogs dialogs;
    QString title;
    whenShown<QMessageBox>([&](QMessageBox &box) {
        title = box.windowTitle();
        box.accept();
    });
    dialogs.message(nullptr, Dialogs::Icon::Critical, {}, u"x"_qs);
    QCOMPARE(title, QGuiApplication::applicationDisplayName());
    QVERIFY(!title.isEmpty());
}

void TestQtDialogs::textIsNeverTakenForMarkup()
{
    QtDialogs dialogs;
    Qt::TextFormat format = Qt::AutoText;
    whenShown<QMessageBox>([&](QMessageBox &box) {
        format = box.textFormat();
        box.accept();
    });
    dialogs.message(nullptr, Dialogs::Icon::Critical, {}, u"<b>fett</b>"_qs);
    QCOMPARE(format, Qt::PlainText);
}

void TestQtDialogs::questionReturnsItsAnswer_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("answer");
    QTest::newRow("yes") << int(QMessageBox::Yes) << int(Dialogs::Answer::Yes);
    QTest::newRow("no") << int(QMessageBox::No) << int(Dialogs::Answer::No);
    QTest::newRow("cancel") << int(QMessageBox::Cancel) << int(Dialogs::Answer::Cancel);
}

void TestQtDialogs::questionReturnsItsAnswer()
{
    QFETCH(int, button);
    QFETCH(int, answer);
    QtDialogs dialogs;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    whenShown<QMessageBox>([&](QMessageBox &box) {
        icon = box.icon();
        QCOMPARE(box.standardButtons(), QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        box.button(static_cast<QMessageBox::StandardButton>(button))->click();
    });
    QCOMPARE(int(dialogs.question(nullptr, u"T"_qs, u"?"_qs)), answer);
    QCOMPARE(icon, QMessageBox::Question);
}

void TestQtDialogs::escapeCancelsTheQuestion()
{
    QtDialogs dialogs;
    whenShown<QMessageBox>([](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Escape); });
    QCOMPARE(dialogs.question(nullptr, u"T"_qs, u"?"_qs), Dialogs::Answer::Cancel);
}

void TestQtDialogs::conflictReturnsItsAnswer_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("answer");
    QTest::newRow("mine") << u"Meine Fassung behalten"_qs << int(Dialogs::Conflict::KeepMine);
    QTest::newRow("other") << u"Unter anderem Namen..."_qs << int(Dialogs::Conflict::OtherName);
    QTest::newRow("escape") << u""_qs << int(Dialogs::Conflict::Cancel);
}

void TestQtDialogs::conflictReturnsItsAnswer()
{
    QFETCH(QString, button);
    QFETCH(int, answer);
    QtDialogs dialogs;
    whenShown<QMessageBox>([&](QMessageBox &box) {
        for (QAbstractButton *each : box.buttons()) {
            if (!button.isEmpty() && each->text().remove(u'&') == button)
                return each->click();
        }
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    QCOMPARE(int(dialogs.conflict(nullptr, u"T"_qs, u"?"_qs)), answer);
}

void TestQtDialogs::openDialogFiltersXml()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.xml"_qs);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QtDialogs dialogs;
    QStringList filters;
    whenShown<QFileDialog>([&](QFileDialog &dialog) {
        filters = dialog.nameFilters();
        QCOMPARE(dialog.directory().absolutePath(), folder.path());
        dialog.selectFile(path);
        static_cast<QDialog &>(dialog).accept();
    });
    QCOMPARE(dialogs.openFileName(nullptr, path), std::optional(path));
    QCOMPARE(filters, QStringList({u"XML-Dateien (*.xml)"_qs, u"alle Dateien (*)"_qs}));
}

void TestQtDialogs::saveDialogStartsWithTheOldNameAndAddsTheSuffix()
{
    const QTemporaryDir folder;
    QtDialogs dialogs;
    QString preset;
    whenShown<QFileDialog>([&](QFileDialog &dialog) {
        QCOMPARE(dialog.acceptMode(), QFileDialog::AcceptSave);
        preset = dialog.selectedFiles().value(0);
        // As a user types it: selecting depends on whether the folder has been read already.
        dialog.findChild<QLineEdit *>(u"fileNameEdit"_qs)->setText(u"neu"_qs);
        static_cast<QDialog &>(dialog).accept();
    });
    QCOMPARE(dialogs.saveFileName(nullptr, folder.filePath(u"alt.xml"_qs)),
             std::optional(folder.filePath(u"neu.xml"_qs)));
    QCOMPARE(preset, folder.filePath(u"alt.xml"_qs));
}

void TestQtDialogs::savedNameGetsItsSuffix_data()
{
    QTest::addColumn<QString>("preset");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("saved");
    QTest::newRow("no suffix") << u"alt.xml"_qs << u"neu"_qs << u"neu.xml"_qs;
    QTest::newRow("suffix typed") << u"alt.xml"_qs << u"neu.xml"_qs << u"neu.xml"_qs;
    QTest::newRow("in capitals") << u"alt.xml"_qs << u"NEU.XML"_qs << u"NEU.XML"_qs;
    QTest::newRow("point in the name") << u"alt.xml"_qs << u"Feld 1.2"_qs << u"Feld 1.2.xml"_qs;
    QTest::newRow("nothing saved before") << u""_qs << u"neu.alt"_qs << u"neu.alt.xml"_qs;
    QTest::newRow("all files") << u"alt.kal"_qs << u"neu.kal"_qs << u"neu.kal"_qs;
    QTest::newRow("all files, no suffix") << u"alt.kal"_qs << u"neu"_qs << u"neu"_qs;
}

void TestQtDialogs::savedNameGetsItsSuffix()
{
    QFETCH(QString, preset);
    QFETCH(QString, typed);
    QFETCH(QString, saved);
    const QTemporaryDir folder;
    QtDialogs dialogs;
    whenShown<QFileDialog>([&](QFileDialog &dialog) {
        dialog.setDirectory(folder.path());
        dialog.findChild<QLineEdit *>(u"fileNameEdit"_qs)->setText(typed);
        static_cast<QDialog &>(dialog).accept();
    });
    QCOMPARE(dialogs.saveFileName(nullptr, preset.isEmpty() ? preset : folder.filePath(preset)),
             std::optional(folder.filePath(saved)));
}

void TestQtDialogs::existingFileIsReplacedOnlyWhenAskedFor_data()
{
    QTest::addColumn<QString>("existing");
    QTest::addColumn<QString>("typed");
    QTest::newRow("full name") << u"alt.xml"_qs << u"alt.xml"_qs;
    QTest::newRow("suffix added") << u"alt.xml"_qs << u"alt"_qs;
    QTest::newRow("suffix added behind a point") << u"Feld 1.2.xml"_qs << u"Feld 1.2"_qs;
}

void TestQtDialogs::existingFileIsReplacedOnlyWhenAskedFor()
{
    QFETCH(QString, existing);
    QFETCH(QString, typed);
    const QTemporaryDir folder;
    QFile file(folder.filePath(existing));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QtDialogs dialogs;
    QStringList questions;
    const auto answer = [&](QMessageBox::StandardButton button) {
        whenShown<QFileDialog>([&, button](QFileDialog &dialog) {
            whenShown<QMessageBox>([&, button](QMessageBox &box) {
                questions.append(box.text());
                box.button(button)->click();
            });
            dialog.findChild<QLineEdit *>(u"fileNameEdit"_qs)->setText(typed);
            static_cast<QDialog &>(dialog).accept();
        });
    };
    answer(QMessageBox::Yes);
    QCOMPARE(dialogs.saveFileName(nullptr, folder.filePath(u"x.xml"_qs)),
             std::optional(folder.filePath(existing)));
    QCOMPARE(questions, QStringList{replaceQuestion(existing)});

    // Who does not want that chooses once more, from the name that he typed.
    questions.clear();
    answer(QMessageBox::No);
    QString again;
    QTimer secondRound;
    connect(&secondRound, &QTimer::timeout, this, [&] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (!dialog || questions.isEmpty())
            return;
        again = QFileInfo(dialog->selectedFiles().value(0)).fileName();
        dialog->reject();
    });
    secondRound.start(5);
    QVERIFY(!dialogs.saveFileName(nullptr, folder.filePath(u"x.xml"_qs)));
    QCOMPARE(questions, QStringList{replaceQuestion(existing)});
    QCOMPARE(again, existing);
}

void TestQtDialogs::onlyTheFileThatIsWrittenIsAskedAbout_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QStringList>("existing");
    QTest::addColumn<QString>("written");
    QTest::addColumn<bool>("asked");
    QTest::newRow("another file has the typed name")
        << u"a.xml"_qs << QStringList{u"a.xml"_qs} << u"a.xml.pdf"_qs << false;
    QTest::newRow("both are there")
        << u"a.xml"_qs << QStringList{u"a.xml"_qs, u"a.xml.pdf"_qs} << u"a.xml.pdf"_qs << true;
    QTest::newRow("typed in full")
        << u"a.pdf"_qs << QStringList{u"a.pdf"_qs} << u"a.pdf"_qs << true;
    QTest::newRow("nothing is there") << u"a.pdf"_qs << QStringList{} << u"a.pdf"_qs << false;
}

void TestQtDialogs::onlyTheFileThatIsWrittenIsAskedAbout()
{
    QFETCH(QString, typed);
    QFETCH(QStringList, existing);
    QFETCH(QString, written);
    QFETCH(bool, asked);
    const QTemporaryDir folder;
    for (const QString &name : existing)
        QVERIFY(QFile(folder.filePath(name)).open(QIODevice::WriteOnly));
    QStringList questions;
    QTimer user;
    connect(&user, &QTimer::timeout, this, [&] {
        QWidget *window = QApplication::activeModalWidget();
        if (auto *box = qobject_cast<QMessageBox *>(window)) {
            questions.append(box->text());
            box->button(QMessageBox::Yes)->click();
        } else if (auto *dialog = qobject_cast<QFileDialog *>(window)) {
            dialog->findChild<QLineEdit *>(u"fileNameEdit"_qs)->setText(typed);
            // Not from within the timer, which would not go on while a question is open.
            QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
        }
    });
    user.start(5);
    QCOMPARE(chooseSaveTarget(
                 nullptr, {u"T"_qs, u"PDF-Dokumente"_qs, u".pdf"_qs, folder.filePath(u"x.pdf"_qs)}),
             folder.filePath(written));
    QCOMPARE(questions, asked ? QStringList{replaceQuestion(written)} : QStringList());
}

void TestQtDialogs::refusedFileOfAnotherFolderIsChosenAgainThere()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(u"anderer"_qs));
    const QString existing = folder.filePath(u"anderer/a.xml"_qs);
    QVERIFY(QFile(existing).open(QIODevice::WriteOnly));
    bool refused = false;
    QString again;
    QTimer user;
    connect(&user, &QTimer::timeout, this, [&] {
        QWidget *window = QApplication::activeModalWidget();
        auto *dialog = qobject_cast<QFileDialog *>(window);
        if (auto *box = qobject_cast<QMessageBox *>(window)) {
            refused = true;
            box->button(QMessageBox::No)->click();
        } else if (dialog && refused) {
            again = dialog->selectedFiles().value(0);
            dialog->reject();
        } else if (dialog) {
            dialog->findChild<QLineEdit *>(u"fileNameEdit"_qs)
                ->setText(folder.filePath(u"anderer/a"_qs));
            QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
        }
    });
    user.start(5);
    QtDialogs dialogs;
    QVERIFY(!dialogs.saveFileName(nullptr, folder.filePath(u"x.xml"_qs)));
    QCOMPARE(again, existing);
}

namespace {

// A home folder of the test's own.
class HomeFolder
{
public:
    explicit HomeFolder(bool documents)
    {
        if (documents)
            QDir(m_folder.path()).mkdir(u"Documents"_qs);
        qputenv("HOME", QFile::encodeName(m_folder.path()));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_folder.path()));
    }
    ~HomeFolder()
    {
        restore("HOME", m_home);
        restore("XDG_CONFIG_HOME", m_config);
    }
    Q_DISABLE_COPY_MOVE(HomeFolder)

    QString path() const { return m_folder.path(); }

private:
    static void restore(const char *name, const QByteArray &value)
    {
        if (value.isNull())
            qunsetenv(name);
        else
            qputenv(name, value);
    }

    QTemporaryDir m_folder;
    QByteArray m_home = qgetenv("HOME");
    QByteArray m_config = qgetenv("XDG_CONFIG_HOME");
};

} // namespace

void TestQtDialogs::dialogsStartInAFolderThatExists_data()
{
    QTest::addColumn<QString>("startAt");
    QTest::addColumn<bool>("documents");
    QTest::addColumn<QString>("folder");
    QTest::newRow("documents") << u""_qs << true << u"/Documents"_qs;
    QTest::newRow("no folder for documents") << u""_qs << false << u""_qs;
    QTest::newRow("file's folder is gone") << u"/weg/a.xml"_qs << true << u"/Documents"_qs;
    QTest::newRow("both are gone") << u"/weg/a.xml"_qs << false << u""_qs;
    QTest::newRow("file is gone, its folder not") << u"/a.xml"_qs << true << u""_qs;
}

void TestQtDialogs::dialogsStartInAFolderThatExists()
{
    QFETCH(QString, startAt);
    QFETCH(bool, documents);
    QFETCH(QString, folder);
    const HomeFolder home(documents);
    const QString start = startAt.isEmpty() ? startAt : home.path() + startAt;
    QtDialogs dialogs;
    QStringList folders;
    const auto look = [&](QFileDialog &dialog) {
        folders.append(dialog.directory().absolutePath());
        dialog.reject();
    };
    whenShown<QFileDialog>(look);
    QVERIFY(!dialogs.openFileName(nullptr, start));
    whenShown<QFileDialog>(look);
    QVERIFY(!dialogs.saveFileName(nullptr, start));
    QCOMPARE(folders, QStringList({home.path() + folder, home.path() + folder}));
}

void TestQtDialogs::cancelledFileDialogsGiveNothing()
{
    QtDialogs dialogs;
    whenShown<QFileDialog>([](QFileDialog &dialog) { dialog.reject(); });
    QVERIFY(!dialogs.openFileName(nullptr, {}));
    whenShown<QFileDialog>([](QFileDialog &dialog) { dialog.reject(); });
    QVERIFY(!dialogs.saveFileName(nullptr, {}));
}

namespace {

struct Recorder : QtDialogs
{
    void message(QWidget *, Icon shownIcon, const QString &shownTitle,
                 const QString &shownText) override
    {
        ++count;
        icon = shownIcon;
        title = shownTitle;
        text = shownText;
    }
    int count = 0;
    Icon icon = Icon::Information;
    QString title;
    QString text;
};

} // namespace

void TestQtDialogs::windowThatWaitsForItsDialogIsNotClosed_data()
{
    using Ask = std::function<void(QtDialogs &, QWidget *)>;
    QTest::addColumn<Ask>("ask");
    QTest::newRow("message") << Ask([](QtDialogs &dialogs, QWidget *owner) {
        dialogs.message(owner, Dialogs::Icon::Information, {}, u"Text"_qs);
    });
    QTest::newRow("question") << Ask(
        [](QtDialogs &dialogs, QWidget *owner) { dialogs.question(owner, {}, u"Text"_qs); });
    QTest::newRow("conflict") << Ask(
        [](QtDialogs &dialogs, QWidget *owner) { dialogs.conflict(owner, {}, u"Text"_qs); });
    QTest::newRow("file to open") << Ask(
        [](QtDialogs &dialogs, QWidget *owner) { dialogs.openFileName(owner, {}); });
    QTest::newRow("file to save to")
        << Ask([](QtDialogs &dialogs, QWidget *owner) { dialogs.saveFileName(owner, {}); });
}

void TestQtDialogs::windowThatWaitsForItsDialogIsNotClosed()
{
    QFETCH(std::function<void(QtDialogs &, QWidget *)>, ask);
    auto *owner = new QWidget;
    const QPointer<QWidget> alive(owner);
    owner->setAttribute(Qt::WA_DeleteOnClose);
    owner->show();
    whenShown<QDialog>([&](QDialog &box) { // as the end of a session does
        QVERIFY(!owner->close());
        QEvent quit(QEvent::Quit);
        QCoreApplication::sendEvent(qApp, &quit);
        QVERIFY(!quit.isAccepted() && box.isVisible());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(alive);
        box.reject();
    });
    QtDialogs dialogs;
    ask(dialogs, owner);
    QVERIFY(alive && owner->close());
    QTRY_VERIFY(!alive);
}

void TestQtDialogs::failureHasOneForm_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("end");
    QTest::newRow("positive") << 53 << u"\r\nBeschreibung (53)"_qs;
    QTest::newRow("negative") << -2147467259 << u"\r\nBeschreibung (-2147467259)"_qs;
    QTest::newRow("no grouping") << 1234567 << u"\r\nBeschreibung (1234567)"_qs;
}

void TestQtDialogs::failureHasOneForm()
{
    QFETCH(int, number);
    QFETCH(QString, end);
    Recorder dialogs;
    fehlerbericht::show(dialogs, {nullptr, Dialogs::Icon::Critical, u"T"_qs, u"Fehler:"_qs}, number,
                        u"Beschreibung"_qs);
    QCOMPARE(dialogs.count, 1);
    QCOMPARE(dialogs.icon, Dialogs::Icon::Critical);
    QCOMPARE(dialogs.title, u"T"_qs);
    QCOMPARE(dialogs.text, u"Fehler:"_qs + end);
}

void TestQtDialogs::numberZeroShowsNoBox()
{
    Recorder dialogs;
    fehlerbericht::show(dialogs, {}, 0, u"trotzdem eine Beschreibung"_qs);
    QVERIFY(fehlerbericht::guarded(dialogs, {}, [] {}));
    QCOMPARE(dialogs.count, 0);
}

void TestQtDialogs::outOfMemoryIsReportedToo()
{
    Recorder dialogs;
    QVERIFY(!fehlerbericht::guarded(dialogs,
                                    {nullptr, Dialogs::Icon::Exclamation, u"T"_qs, u"Fehler:"_qs},
                                    [] { throw std::bad_alloc(); }));
    QCOMPARE(dialogs.text, u"Fehler:\r\nNicht genügend Speicher (7)"_qs);
}

void TestQtDialogs::infoBoxNamesTheProduct()
{
    frmInfo box;
    const auto text = [&](const QString &name) { return box.findChild<QLabel *>(name)->text(); };
    QCOMPARE(box.windowTitle(), u"Info"_qs);
    QCOMPARE(text(u"labInfo"_qs), u"Info über Kalibrierung nach Wendral"_qs);
    QCOMPARE(text(u"labProductName"_qs), u"Kalibrierung nach Wendral"_qs);
    QVERIFY(
        text(u"labVersion"_qs).contains(QRegularExpression(u"^Version \\d+\\.\\d+\\.\\d+$"_qs)));
    QVERIFY(!text(u"labWarnung"_qs).isEmpty());
    const auto *contact = box.findChild<QTextEdit *>(u"rtfKontakt"_qs);
    QVERIFY(contact->isReadOnly());
    const QStringList blocks = contact->toPlainText().split(u"\n\n"_qs);
    QCOMPARE(blocks.size(), 3);
    QVERIFY(blocks[0].startsWith(u"Herstellung Vertrieb\n"_qs));
    QVERIFY(blocks[1].startsWith(u"Support und programmtechnische Umsetzung\n"_qs));
    box.show();
    box.findChild<QPushButton *>(u"cmdClose"_qs)->click();
    QVERIFY(!box.isVisible());
}

REGISTER_TEST(TestQtDialogs)
#include "tst_qtdialogs.moc"
