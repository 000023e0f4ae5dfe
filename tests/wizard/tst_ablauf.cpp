#include "tests/support/testregistry.h"
#include "tests/wizard/beispielblatt.h"

#include "core/runtimeerror.h"
#include "core/urteil.h"

#include <QLabel>
#include <QPaintEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QTextEdit>
#include <QTreeWidget>

/// The result pages inside the main window, and a whole calibration by keyboard.
class TestAblauf : public QObject
{
    Q_OBJECT

private slots:
    void fileSavedOnPageFourShowsItsList();
    void anotherFileShowsItsOwnResults();
    void newResultsAreAllPainted_data();
    void newResultsAreAllPainted();
    void optionsAreOpenedModallyAndThePageIsEnteredAgain();
    void changedMinimumFlipsTheVerdictAtOnce();
    void windowThatDoesNotOpenIsReported();
    void saveCommandSaves();
    void protocolCommandGetsTheDocument();
    void failedProtocolCommandIsReported();
    void exportCommandGetsTheDocument();
    void commandsWithoutAWindowAreDisabledAndSaySo();
    void captionsOfTheResultPages();
    void accessibleNamesAreUniqueOnEveryPage();
    void mnemonicsDoNotClashOnEveryPage();
    void smallestWindowCutsNothingOnEveryPage();
    void wholeCalibrationByKeyboard();
};

namespace {

QString verdict(const PageFixture &f)
{
    return f.find<QTextEdit>(u"labPlausibilität"_qs)->toPlainText();
}

// Types into whatever has the focus; the first letter opens a table's editor, which gets the rest.
void keys(const QString &text)
{
    for (const QChar letter : text)
        QTest::keyClick(QApplication::focusWidget(), letter.toLatin1());
}
void key(Qt::Key which, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::keyClick(QApplication::focusWidget(), which, modifiers);
    QCoreApplication::processEvents();
}

bool insideAnItemView(const QWidget *widget)
{
    for (const QWidget *above = widget->parentWidget(); above; above = above->parentWidget()) {
        if (qobject_cast<const QAbstractItemView *>(above))
            return true;
    }
    return false;
}

QChar mnemonic(const QString &text)
{
    const auto at = text.indexOf(u'&');
    return at < 0 || at + 1 >= text.size() ? QChar() : text[at + 1].toUpper();
}

} // namespace

void TestAblauf::fileSavedOnPageFourShowsItsList()
{
    PageFixture f(4);
    f.open();
    QCOMPARE(f.activePage(), 4);
    auto *list = f.find<QTreeWidget>(u"lvPlausibilität"_qs);
    QCOMPARE(list->topLevelItem(0)->text(0), u"Mittelwerte"_qs);
    QCOMPARE(list->topLevelItem(1)->text(1), f.document.StatistikMittelwertString(mDirekt));
    QVERIFY(verdict(f).contains(u"liegt über dem minimal erforderlichen Wert von 0,65."_qs));
}

void TestAblauf::anotherFileShowsItsOwnResults()
{
    PageFixture f(4);
    f.open();
    const QString old = f.find<QTreeWidget>(u"lvPlausibilität"_qs)->topLevelItem(7)->text(1);
    Kalibrierung other(QLocale(QLocale::German, QLocale::Germany));
    other.LoadFile(f.window->FileName());
    other.setMesswert(pmIndirekt, 1, 1, 500.0);
    other.SaveFile(f.path(u"anders.xml"_qs));
    f.window->FileOpen(f.path(u"anders.xml"_qs));
    auto *list = f.find<QTreeWidget>(u"lvPlausibilität"_qs);
    QCOMPARE(list->topLevelItem(7)->text(1), other.StatistikVarianzString(mIndirekt));
    QVERIFY(list->topLevelItem(7)->text(1) != old);
    QVERIFY(verdict(f).contains(u"darf somit nicht"_qs));
}

namespace {

// What has been painted of a widget.
struct PaintedRegion : QObject
{
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent *>(event)->region();
        return false;
    }
    QRegion region;
};

} // namespace

// A part of the window, such as the row under a menu that closes, is painted first.
void TestAblauf::newResultsAreAllPainted_data()
{
    QTest::addColumn<int>("page");
    QTest::newRow("fields") << 2;
    QTest::newRow("values") << 3;
    QTest::newRow("results") << 4;
}

void TestAblauf::newResultsAreAllPainted()
{
    QFETCH(int, page);
    PageFixture f(page);
    f.open();
    const QStringList views{fieldsGrid, valuesGrid, u"lvPlausibilität"_qs};
    auto *list = f.find<QWidget>(views.at(page - 2));
    auto *area = page == 4 ? f.find<QTreeWidget>(views.at(2))->viewport()
                           : f.grid(views.at(page - 2)).table()->viewport();
    QVERIFY(list->isVisible());
    QCoreApplication::processEvents();
    PaintedRegion painted;
    area->installEventFilter(&painted);
    f.window->FileOpen(f.window->FileName());
    area->repaint(QRect(0, 0, 20, 10));
    QTest::qWait(50);
    QVERIFY((QRegion(area->rect()) - painted.region).isEmpty());
}

void TestAblauf::optionsAreOpenedModallyAndThePageIsEnteredAgain()
{
    PageFixture f(4);
    f.open();
    f.windows.whileShown = [&] { f.document.setNachkommastellenMittelwerte(3); };
    f.click(u"cmdPlausibilitätOptionen"_qs);
    QCOMPARE(f.windows.calls, QStringList({u"options"_qs, u"modal"_qs}));
    QCOMPARE(f.windows.owner, f.window.get());
    QCOMPARE(f.activePage(), 4);
    auto *list = f.find<QTreeWidget>(u"lvPlausibilität"_qs);
    QCOMPARE(list->topLevelItem(1)->text(1), f.document.StatistikMittelwertString(mDirekt));
    QVERIFY(list->topLevelItem(1)->text(1).contains(QRegularExpression(u",\\d{3}$"_qs)));
}

void TestAblauf::changedMinimumFlipsTheVerdictAtOnce()
{
    PageFixture f(4);
    f.document.setMesswert(pmIndirekt, 1, 1, 90.0); // away from the line
    f.open();
    const double reached = f.document.StatistikBestimmtheitsmaß(mIndirekt, mDirekt);
    for (const bool good : {true, false, true}) {
        f.windows.whileShown = [&] {
            f.document.setMinBestimmtheitsmaßIndirektDirekt(good ? reached / 2.0
                                                                 : (reached + 1.0) / 2.0);
        };
        f.click(u"cmdPlausibilitätOptionen"_qs);
        QCOMPARE(verdict(f), urteil(f.document, u"\n"_qs).satz);
        QCOMPARE(verdict(f).contains(u"darf somit nicht"_qs), !good);
        QStringList ratings;
        auto *list = f.find<QTreeWidget>(u"lvPlausibilität"_qs);
        for (int i = 0; i < list->topLevelItemCount(); ++i) {
            if (!list->topLevelItem(i)->text(2).isEmpty())
                ratings.append(list->topLevelItem(i)->text(2));
        }
        QCOMPARE(ratings, QStringList{good ? u"gut"_qs : u"kritisch"_qs});
    }
}

void TestAblauf::windowThatDoesNotOpenIsReported()
{
    PageFixture f(4);
    f.open();
    f.windows.whileShown = [] { throw RunTimeError(ErrorNumber::OutOfMemory); };
    f.click(u"cmdPlausibilitätOptionen"_qs);
    QCOMPARE(f.dialogs.shown,
             std::vector{exclamationBox(u"Beim Öffnen des Fensters ist ein Fehler aufgetreten:\r\n"
                                        u"Nicht genügend Speicher (7)"_qs)});
}

void TestAblauf::saveCommandSaves()
{
    PageFixture f(5);
    f.open();
    f.document.setMesswert(pmDirekt, 1, 1, 50.0);
    f.click(u"cmdOutSave"_qs);
    QVERIFY(!f.document.IsDirty());
    QVERIFY(f.dialogs.savedAt.isEmpty());
}

void TestAblauf::protocolCommandGetsTheDocument()
{
    PageFixture f(5);
    const Kalibrierung *shown = nullptr;
    const QWidget *owner = nullptr;
    f.showProtocol = [&](Kalibrierung &document, QWidget *window) {
        shown = &document;
        owner = window;
    };
    f.open();
    f.click(u"cmdOutProtocoll"_qs);
    QCOMPARE(shown, &f.document);
    QCOMPARE(owner, f.window.get());
    QVERIFY(f.dialogs.shown.empty());
}

void TestAblauf::failedProtocolCommandIsReported()
{
    PageFixture f(5);
    f.showProtocol = [](Kalibrierung &, QWidget *) {
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    };
    f.open();
    f.click(u"cmdOutProtocoll"_qs);
    const FakeDialogs::Shown expected{
        Dialogs::Icon::Critical, u""_qs, // the application's title
        u"Währen der Programmausführung ist ein Fehler aufgetreten:\r\n"
        u"Ungültiger Prozeduraufruf oder ungültiges Argument (5)"_qs};
    QCOMPARE(f.dialogs.shown, std::vector{expected});
    QCOMPARE(f.activePage(), 5);
}

void TestAblauf::exportCommandGetsTheDocument()
{
    PageFixture f(5);
    int opened = 0;
    f.showExport = [&](Kalibrierung &document, QWidget *) { opened += &document == &f.document; };
    f.open();
    f.click(u"cmdOutExport"_qs);
    QCOMPARE(opened, 1);
}

void TestAblauf::commandsWithoutAWindowAreDisabledAndSaySo()
{
    PageFixture f(5);
    f.open();
    for (const QString &name : {u"cmdOutProtocoll"_qs, u"cmdOutExport"_qs}) {
        QVERIFY(!f.find<QPushButton>(name)->isEnabled());
        QCOMPARE(f.find<QPushButton>(name)->toolTip(),
                 u"In dieser Fassung des Programms noch nicht enthalten."_qs);
    }
    QVERIFY(f.find<QPushButton>(u"cmdOutSave"_qs)->isEnabled());
}

void TestAblauf::captionsOfTheResultPages()
{
    PageFixture f(4);
    f.open();
    QCOMPARE(f.find<QLabel>(u"labPageCaption4"_qs)->text(), u"Schritt 4: Plausibilitätsprüfung"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.find<QLabel>(u"labPageCaption5"_qs)->text(),
             u"Schritt 5: Ausgabe der Ergebnisse"_qs);
}

void TestAblauf::accessibleNamesAreUniqueOnEveryPage()
{
    PageFixture f(1);
    f.open();
    for (int page = 1; page < 5; ++page)
        f.click(u"cmdNext"_qs);
    QCOMPARE(f.activePage(), 5);
    QStringList names;
    for (const auto *widget : f.window->findChildren<QWidget *>()) {
        if (!widget->accessibleName().isEmpty())
            names.append(widget->accessibleName());
    }
    names.sort();
    QStringList unique = names;
    unique.removeDuplicates();
    QCOMPARE(names, unique);
    for (const QString &name : {u"Werte der Prüffelder"_qs, u"Namen der Prüfpunkte"_qs,
                                u"Messwerte"_qs, u"Plausibilitätsprüfung"_qs, u"Urteil"_qs})
        QVERIFY2(names.contains(name), qPrintable(name));
}

void TestAblauf::mnemonicsDoNotClashOnEveryPage()
{
    PageFixture f(1);
    f.showProtocol = [](Kalibrierung &, QWidget *) {};
    f.showExport = f.showProtocol;
    f.open();
    for (int page = 1; page <= 5; ++page) {
        QString taken = u"DH"_qs; // the menus
        QStringList texts;
        for (const auto *button : f.window->findChildren<QAbstractButton *>()) {
            if (button->isVisible())
                texts.append(button->text());
        }
        for (const auto *label : f.window->findChildren<QLabel *>()) {
            if (label->isVisible() && label->buddy())
                texts.append(label->text());
        }
        for (const QString &text : texts) {
            const QChar letter = mnemonic(text);
            QVERIFY2(letter.isNull() || !taken.contains(letter), qPrintable(text));
            taken.append(letter);
        }
        f.click(u"cmdNext"_qs);
    }
}

void TestAblauf::smallestWindowCutsNothingOnEveryPage()
{
    PageFixture f(1);
    f.open();
    for (const QSize size : {QSize(900, 650), QSize(1920, 1080)}) {
        f.window->resize(size);
        for (int page = 1; page <= 5; ++page) {
            QCoreApplication::processEvents();
            QCOMPARE(f.activePage(), page);
            const auto *panel = f.find<QScrollArea>(u"picContainer"_qs + QString::number(page));
            QCOMPARE(panel->verticalScrollBar()->maximum(), 0);
            QCOMPARE(panel->horizontalScrollBar()->maximum(), 0);
            for (const auto *child : panel->widget()->findChildren<QWidget *>()) {
                // What scrolls has contents that reach beyond it.
                if (child->isVisible() && !insideAnItemView(child))
                    QVERIFY2(child->parentWidget()->rect().contains(child->geometry()),
                             qPrintable(child->objectName()));
            }
            if (page < 5)
                f.click(u"cmdNext"_qs);
        }
        for (int page = 5; page > 1; --page)
            f.click(u"cmdPrevious"_qs);
    }
}

// Start, characteristics from the presets, fields, values, verdict, file: nothing but keys.
void TestAblauf::wholeCalibrationByKeyboard()
{
    WizardFixture f(QLocale(QLocale::German, QLocale::Germany), false);
    f.open();
    QTRY_VERIFY(f.find<QPushButton>(u"cmdNext"_qs)->hasFocus());
    key(Qt::Key_Space);
    QCOMPARE(f.activePage(), 1);

    key(Qt::Key_Down); // "Verdichtungsgrad"
    key(Qt::Key_Tab);
    for (int i = 0; i < 3; ++i)
        key(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"cboIndirektesPrüfmerkmal"_qs);
    for (int i = 0; i < 4; ++i)
        key(Qt::Key_Down); // the roller's measurement value
    key(Qt::Key_P, Qt::AltModifier);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"txtMessreihen"_qs);
    key(Qt::Key_Up);
    key(Qt::Key_W, Qt::AltModifier);
    QTRY_COMPARE(f.activePage(), 2);
    QCOMPARE(f.document.DirektesPrüfmerkmal().Bezeichung(), u"Verdichtungsgrad DPr"_qs);
    QCOMPARE(f.document.IndirektesPrüfmerkmal().Formelzeichen(), u"F"_qs);
    QCOMPARE(f.document.PrüffelderAnzahl(), 4);

    for (int field = 1; field <= 4; ++field) {
        key(Qt::Key_Tab); // over the name
        keys(u"3"_qs);
        key(Qt::Key_Return);
        keys(QString::number(2 * field));
        key(Qt::Key_Return);
    }
    key(Qt::Key_W, Qt::AltModifier);
    QTRY_COMPARE(f.activePage(), 3);
    QCOMPARE(f.document.PrüffeldPrüfpunkte(4), 3);
    QCOMPARE(f.document.PrüffeldWert(4), 8.0);

    for (int row = 0; row < 12; ++row) {
        keys(u"%1,%2"_qs.arg(QString::number(94 + row / 3), QString::number(row % 3 * 25 + 11)));
        key(Qt::Key_Return);
        keys(QString::number(20 + 6 * (row / 3) + row % 3));
        key(Qt::Key_Return);
    }
    key(Qt::Key_W, Qt::AltModifier);
    QTRY_COMPARE(f.activePage(), 4);
    QVERIFY(f.dialogs.shown.empty());
    QVERIFY(urteil(f.document).gut);
    QCOMPARE(f.find<QTextEdit>(u"labPlausibilität"_qs)->toPlainText(),
             urteil(f.document, u"\n"_qs).satz);

    key(Qt::Key_W, Qt::AltModifier);
    QTRY_COMPARE(f.activePage(), 5);
    QCOMPARE(QApplication::focusWidget()->objectName(), u"cmdOutSave"_qs);
    f.dialogs.saveNames = {f.path(u"fertig.xml"_qs)};
    key(Qt::Key_Space);
    QCOMPARE(f.window->windowTitle(), u"Kalibrierung nach Wendral - fertig.xml"_qs);
    QVERIFY(!f.document.IsDirty());

    Kalibrierung read(QLocale(QLocale::German, QLocale::Germany));
    read.LoadFile(f.path(u"fertig.xml"_qs));
    QCOMPARE(read.PrüfpunkteTotal(), 12);
    QCOMPARE(read.MesswertString(pmDirekt, 4, 3), u"97,61"_qs);
    QCOMPARE(read.MesswertString(pmIndirekt, 4, 3), u"40,00"_qs);
    QCOMPARE(read.StatistikBestimmtheitsmaß(mIndirekt, mDirekt),
             f.document.StatistikBestimmtheitsmaß(mIndirekt, mDirekt));
    key(Qt::Key_S, Qt::AltModifier);
    QTRY_VERIFY(!f.window->isVisible());
    QVERIFY(f.dialogs.questions.isEmpty());
}

REGISTER_TEST(TestAblauf)
#include "tst_ablauf.moc"
