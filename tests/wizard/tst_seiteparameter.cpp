#include "tests/support/testregistry.h"
#include "tests/wizard/fakes.h"
#include "wizard/auswahlfeld.h"
#include "wizard/zahlenfeld.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QToolButton>
#include <QWheelEvent>

/// The characteristics page: what is refused, completed, shown and stored.
class TestSeiteParameter : public QObject
{
    Q_OBJECT

private slots:
    void freshDocumentFillsTheBoxes();
    void presetsAreOfferedInTheirOrder();
    void firstPresetDoesNotBecomeTheText();
    void emptyBoxRefusesTheStep_data();
    void emptyBoxRefusesTheStep();
    void checksGoInOrderAndStopAtTheFirst();
    void blanksCountAsEmpty();
    void fieldCountIsChecked_data();
    void fieldCountIsChecked();
    void unreadablePlacesRefuseTheStep();
    void leavingABoxForAnotherChecksIt();
    void oneBoxIsCheckedAtATime();
    void navigationButtonsMenusAndListsCheckNothing();
    void placesAreCheckedOnLeaving_data();
    void placesAreCheckedOnLeaving();
    void symbolAloneIsCompleted();
    void completionLeavesOtherTextsAlone();
    void shortcutToTheNextPageCompletesToo();
    void shortcutBackCompletesAndChecksNothing();
    void longTextsShowFromTheirBeginning();
    void wheelChangesNothing();
    void typingIsNeverCompletedOrReplaced();
    void arrowKeysCountAndClamp();
    void arrowButtonsCount();
    void unchangedTextsAreNeverWrittenBack();
    void unreadableFileValuesAreRefusedForwardOnly();
    void goodStepStoresEverything();
    void backKeepsWhatCannotBeStored();
    void pastedControlCharactersAreNotTaken();
    void undoneTypingIsNoChange();
    void oddTextsSurvive_data();
    void oddTextsSurvive();
    void placesInBothLocales_data();
    void placesInBothLocales();
    void manyFieldsFromAFileMayStay();

private:
    static void fillBoxes(WizardFixture &f);
};

namespace {

const QStringList nineBoxes{u"cboDirektesPrüfmerkmal"_qs,
                            u"cboDirektesPrüfmerkmalZeichen"_qs,
                            u"cboDirektesPrüfmerkmalEinheit"_qs,
                            u"cboIndirektesPrüfmerkmal"_qs,
                            u"cboIndirektesPrüfmerkmalZeichen"_qs,
                            u"cboIndirektesPrüfmerkmalEinheit"_qs,
                            u"cboMessreihe"_qs,
                            u"cboMessreiheZeichen"_qs,
                            u"cboMessreiheEinheit"_qs};

const QStringList nineMessages{
    u"Bitte geben Sie ein Direktes Prüfmerkmal an."_qs,
    u"Bitte geben Sie ein gültiges Formelzeichen für das direkte Prüfmerkmal an."_qs,
    u"Bitte geben Sie ein gültige Einheit für das direkte Prüfmerkmal an."_qs,
    u"Bitte geben Sie ein Indirektes Prüfmerkmal an."_qs,
    u"Bitte geben Sie ein gültiges Formelzeichen für das indirekte Prüfmerkmal an."_qs,
    u"Bitte geben Sie ein gültige Einheit für das indirekte Prüfmerkmal an."_qs,
    u"Bitte geben Sie eine Messreihe an."_qs,
    u"Bitte geben Sie ein gültiges Formelzeichen für die Messreihen an."_qs,
    u"Bitte geben Sie ein gültige Einheit für die Messreihen an."_qs};

const QString placesMessage = u"Bitte geben Sie eine gültige Stellenanzahl an."_qs;
const QString fieldsMessage =
    u"Bitte geben Sie eine gültige Anzahl der Messreihen an (Mindeswert: 3 Messreihen)."_qs;

QStringList listOf(const QComboBox *box)
{
    QStringList entries;
    for (int i = 0; i < box->count(); ++i)
        entries.append(box->itemText(i));
    return entries;
}

// A click into the middle of a box, and the events after it.
void clickInto(QWidget *box)
{
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(4, box->height() / 2));
    QCoreApplication::processEvents();
}

} // namespace

void TestSeiteParameter::fillBoxes(WizardFixture &f)
{
    for (const QString &name : nineBoxes)
        f.find<QComboBox>(name)->setEditText(u"Text"_qs);
}

void TestSeiteParameter::freshDocumentFillsTheBoxes()
{
    WizardFixture f;
    f.open();
    const QStringList texts{
        u""_qs,  u""_qs, u""_qs, u""_qs, u""_qs, u""_qs, u"Anzahl der Übergänge"_qs,
        u"Z"_qs, u"-"_qs};
    for (int i = 0; i < 9; ++i)
        QCOMPARE(f.find<QComboBox>(nineBoxes[i])->currentText(), texts[i]);
    QCOMPARE(f.find<QLineEdit>(u"txtDirektesPrüfmerkmalStellen"_qs)->text(), u"2"_qs);
    QCOMPARE(f.find<QLineEdit>(u"txtIndirektesPrüfmerkmalStellen"_qs)->text(), u"2"_qs);
    QCOMPARE(f.find<QLineEdit>(u"txtMessreiheStellen"_qs)->text(), u"0"_qs);
    QCOMPARE(f.find<QLineEdit>(u"txtMessreihen"_qs)->text(), u"3"_qs);
    for (const QString &arrows :
         {u"udDirektesPrüfmerkmalStellen"_qs, u"udIndirektesPrüfmerkmalStellen"_qs, u"UpDown1"_qs,
          u"udMessreihen"_qs})
        QVERIFY(f.find<QWidget>(arrows)->isVisible());
    QVERIFY(!f.document.IsDirty());
}

void TestSeiteParameter::presetsAreOfferedInTheirOrder()
{
    WizardFixture f;
    f.open();
    QCOMPARE(listOf(f.find<QComboBox>(nineBoxes[0])),
             QStringList({u"Verdichtungsgrad"_qs, u"Verformungsmodul"_qs}));
    QCOMPARE(listOf(f.find<QComboBox>(nineBoxes[1])), QStringList({u"DPr"_qs, u"EV2"_qs}));
    QCOMPARE(listOf(f.find<QComboBox>(nineBoxes[2])), QStringList({u"%"_qs, u"MN/m²"_qs}));
    QCOMPARE(listOf(f.find<QComboBox>(nineBoxes[3])),
             QStringList({u"Verdichtungsgrad"_qs, u"Verformungsmodul"_qs,
                          u"Dynamischer Verformungsmodul"_qs,
                          u"Messwert Flächendeckende Dynamische Verdichtungskontrolle"_qs}));
    QCOMPARE(listOf(f.find<QComboBox>(nineBoxes[4])),
             QStringList({u"DPr"_qs, u"EV2"_qs, u"EVD"_qs, u"F"_qs}));
    QCOMPARE(listOf(f.find<QComboBox>(nineBoxes[5])),
             QStringList({u"%"_qs, u"MN/m²"_qs, u"MN/m²"_qs, u"-"_qs}));
    QCOMPARE(listOf(f.find<QComboBox>(nineBoxes[6])), QStringList{u"Anzahl der Übergänge"_qs});
    QCOMPARE(listOf(f.find<QComboBox>(nineBoxes[7])), QStringList{u"Z"_qs});
    QCOMPARE(listOf(f.find<QComboBox>(nineBoxes[8])), QStringList{u"-"_qs});
    f.find<QPushButton>(u"cmdPrevious"_qs)->click();
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    QCOMPARE(f.find<QComboBox>(nineBoxes[3])->count(), 4); // not added again
}

void TestSeiteParameter::firstPresetDoesNotBecomeTheText()
{
    WizardFixture f;
    f.document.DirektesPrüfmerkmal().setEinheit(u"Stück"_qs);
    f.open();
    QCOMPARE(f.find<QComboBox>(nineBoxes[0])->currentText(), u""_qs);
    QCOMPARE(f.find<QComboBox>(nineBoxes[0])->currentIndex(), -1);
    QCOMPARE(f.find<QComboBox>(nineBoxes[2])->currentText(), u"Stück"_qs);
}

void TestSeiteParameter::emptyBoxRefusesTheStep_data()
{
    QTest::addColumn<int>("box");
    for (int i = 0; i < 9; ++i)
        QTest::newRow(qPrintable(QString::number(i))) << i;
}

void TestSeiteParameter::emptyBoxRefusesTheStep()
{
    QFETCH(int, box);
    WizardFixture f;
    f.open();
    fillBoxes(f);
    f.find<QComboBox>(nineBoxes[box])->setEditText(u"   "_qs);
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    QCOMPARE(f.activePage(), 1);
    QCOMPARE(f.dialogs.shown, std::vector{informationBox(nineMessages[box])});
    QVERIFY(f.find<QComboBox>(nineBoxes[box])->hasFocus());
    QCOMPARE(f.find<QComboBox>(nineBoxes[box])->currentText(), u"   "_qs);
    QCOMPARE(f.document.DirektesPrüfmerkmal().Name(), u""_qs); // nothing is taken over
}

void TestSeiteParameter::checksGoInOrderAndStopAtTheFirst()
{
    WizardFixture f;
    f.open();
    for (const QString &name : nineBoxes)
        f.find<QComboBox>(name)->setEditText(u""_qs);
    for (int i = 0; i < 9; ++i) {
        f.find<QPushButton>(u"cmdNext"_qs)->click();
        QCOMPARE(f.dialogs.shown.size(), std::size_t(i) + 1);
        QCOMPARE(f.dialogs.shown.back().text, nineMessages[i]);
        f.find<QComboBox>(nineBoxes[i])->setEditText(u"x"_qs);
    }
    f.find<QLineEdit>(u"txtMessreihen"_qs)->setText(u"2"_qs);
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    QCOMPARE(f.dialogs.shown.back().text, fieldsMessage);
}

void TestSeiteParameter::blanksCountAsEmpty()
{
    WizardFixture f;
    f.open();
    fillBoxes(f);
    f.find<QComboBox>(nineBoxes[0])->setEditText(u" \u00a0 "_qs);
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    QCOMPARE(f.dialogs.shown, std::vector{informationBox(nineMessages[0])});
}

void TestSeiteParameter::fieldCountIsChecked_data()
{
    const QString most =
        u"Bitte geben Sie eine gültige Anzahl der Messreihen an (Höchstwert: 9999 Messreihen)."_qs;
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("stored");
    QTest::newRow("2") << u"2"_qs << fieldsMessage << 3;
    QTest::newRow("3") << u"3"_qs << u""_qs << 3;
    QTest::newRow("3,5") << u"3,5"_qs << u""_qs << 3;
    QTest::newRow("2,9") << u"2,9"_qs << fieldsMessage << 3;
    QTest::newRow("abc") << u"abc"_qs << fieldsMessage << 3;
    QTest::newRow("empty") << u""_qs << fieldsMessage << 3;
    QTest::newRow("0") << u"0"_qs << fieldsMessage << 3;
    QTest::newRow("-5") << u"-5"_qs << fieldsMessage << 3;
    QTest::newRow("9999") << u"9999"_qs << u""_qs << 9999;
    QTest::newRow("10000") << u"10000"_qs << most << 3;
    QTest::newRow("1e400") << u"1e400"_qs << most << 3;
}

void TestSeiteParameter::fieldCountIsChecked()
{
    QFETCH(QString, text);
    QFETCH(QString, message);
    QFETCH(int, stored);
    WizardFixture f;
    f.open();
    fillBoxes(f);
    auto *box = f.find<QLineEdit>(u"txtMessreihen"_qs);
    box->selectAll();
    QTest::keyClicks(box, text);
    if (text.isEmpty())
        QTest::keyClick(box, Qt::Key_Delete);
    QCOMPARE(box->text(), text);
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    if (message.isEmpty()) {
        QVERIFY(f.dialogs.shown.empty());
        QCOMPARE(f.activePage(), 2);
    } else {
        QCOMPARE(f.dialogs.shown, std::vector{informationBox(message)});
        QCOMPARE(f.activePage(), 1);
        QVERIFY(box->hasFocus());
        QCOMPARE(box->text(), text);
    }
    QCOMPARE(f.document.PrüffelderAnzahl(), stored);
}

void TestSeiteParameter::unreadablePlacesRefuseTheStep()
{
    WizardFixture f;
    f.open();
    fillBoxes(f);
    f.find<QLineEdit>(u"txtMessreiheStellen"_qs)->setText(u"zwei"_qs);
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    QCOMPARE(f.dialogs.shown, std::vector{informationBox(placesMessage)});
    QCOMPARE(f.activePage(), 1);
    QCOMPARE(f.document.Kovariable().Nachkommastellen(), 0);
}

void TestSeiteParameter::leavingABoxForAnotherChecksIt()
{
    WizardFixture f;
    f.open();
    clickInto(f.find<QComboBox>(nineBoxes[1]));
    QCOMPARE(f.dialogs.shown, std::vector{informationBox(nineMessages[0])});
    QVERIFY(f.find<QComboBox>(nineBoxes[0])->hasFocus());
    QTest::keyClicks(QApplication::focusWidget(), u"Dichte"_qs);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCoreApplication::processEvents();
    QCOMPARE(f.dialogs.shown.size(), std::size_t{1});
    QVERIFY(f.find<QComboBox>(nineBoxes[1])->hasFocus());
}

void TestSeiteParameter::oneBoxIsCheckedAtATime()
{
    WizardFixture f;
    f.open();
    // Both boxes are empty; the second is only passed on the way, and on the way back.
    f.find<QComboBox>(nineBoxes[1])->setFocus();
    f.find<QComboBox>(nineBoxes[2])->setFocus();
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    QCOMPARE(f.dialogs.shown, std::vector{informationBox(nineMessages[0])});
    QVERIFY(f.find<QComboBox>(nineBoxes[0])->hasFocus());
}

void TestSeiteParameter::navigationButtonsMenusAndListsCheckNothing()
{
    WizardFixture f;
    f.open();
    auto *first = f.find<QComboBox>(nineBoxes[0]);
    f.find<QPushButton>(u"cmdPrevious"_qs)->setFocus();
    QCoreApplication::processEvents();
    QVERIFY(f.dialogs.shown.empty());
    first->setFocus();
    first->showPopup();
    QCoreApplication::processEvents();
    first->hidePopup();
    QCoreApplication::processEvents();
    QVERIFY(f.dialogs.shown.empty());
    first->setFocus();
    auto *menu = f.find<QMenu>(u"m_File"_qs);
    QTest::keyClick(f.window.get(), Qt::Key_D, Qt::AltModifier);
    QTRY_VERIFY(menu->isVisible());
    QTest::keyClick(menu, Qt::Key_Escape);
    QTRY_VERIFY(!menu->isVisible());
    QTest::keyClick(f.window->menuBar(), Qt::Key_Escape);
    QCoreApplication::processEvents();
    QVERIFY(f.dialogs.shown.empty());
    first->setFocus();
    QTest::mouseClick(f.find<QPushButton>(u"cmdPrevious"_qs), Qt::LeftButton);
    QCoreApplication::processEvents();
    QVERIFY(f.dialogs.shown.empty());
    QCOMPARE(f.activePage(), 0);
}

void TestSeiteParameter::placesAreCheckedOnLeaving_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("good");
    QTest::newRow("abc") << u"abc"_qs << false;
    QTest::newRow("empty") << u""_qs << false;
    QTest::newRow("1,5") << u"1,5"_qs << true;
    QTest::newRow("2.7") << u"2.7"_qs << true;
    QTest::newRow("-1") << u"-1"_qs << true;
}

void TestSeiteParameter::placesAreCheckedOnLeaving()
{
    QFETCH(QString, text);
    QFETCH(bool, good);
    WizardFixture f;
    f.open();
    fillBoxes(f);
    auto *box = f.find<QLineEdit>(u"txtDirektesPrüfmerkmalStellen"_qs);
    box->setFocus();
    QCoreApplication::processEvents();
    box->setText(text);
    f.find<QLineEdit>(u"txtMessreihen"_qs)->setFocus();
    QCoreApplication::processEvents();
    QCOMPARE(box->hasFocus(), !good);
    QCOMPARE(f.dialogs.shown,
             good ? std::vector<FakeDialogs::Shown>() : std::vector{informationBox(placesMessage)});
}

void TestSeiteParameter::symbolAloneIsCompleted()
{
    WizardFixture f;
    f.open();
    auto *symbol = f.find<QComboBox>(nineBoxes[4]);
    symbol->setFocus();
    f.dialogs.shown.clear();
    QTest::keyClicks(symbol, u"EVD"_qs);
    QCOMPARE(f.find<QComboBox>(nineBoxes[3])->currentText(), u""_qs);
    QTest::keyClick(symbol, Qt::Key_Tab);
    QCOMPARE(f.find<QComboBox>(nineBoxes[3])->currentText(), u"Dynamischer Verformungsmodul"_qs);
    QCOMPARE(symbol->currentText(), u"EVD"_qs);
    QCOMPARE(f.find<QComboBox>(nineBoxes[5])->currentText(), u"MN/m²"_qs);
    QCOMPARE(f.find<QComboBox>(nineBoxes[0])->currentText(), u""_qs);
}

void TestSeiteParameter::completionLeavesOtherTextsAlone()
{
    WizardFixture f;
    f.open();
    f.find<QComboBox>(nineBoxes[3])->setEditText(u"Eigener Wert"_qs);
    auto *symbol = f.find<QComboBox>(nineBoxes[4]);
    symbol->setFocus();
    symbol->setEditText(u"EVD"_qs);
    QTest::keyClick(symbol, Qt::Key_Tab);
    QCOMPARE(f.find<QComboBox>(nineBoxes[3])->currentText(), u"Eigener Wert"_qs);
    QCOMPARE(f.find<QComboBox>(nineBoxes[5])->currentText(), u""_qs);
}

void TestSeiteParameter::shortcutToTheNextPageCompletesToo()
{
    WizardFixture f;
    f.open();
    for (int i = 0; i < 3; ++i)
        f.find<QComboBox>(nineBoxes[i])->setEditText(u"x"_qs);
    auto *symbol = f.find<QComboBox>(nineBoxes[4]);
    symbol->setFocus();
    QCoreApplication::processEvents();
    QTest::keyClicks(symbol, u"F"_qs);
    QTest::keyClick(f.window.get(), Qt::Key_W, Qt::AltModifier);
    QTRY_COMPARE(f.activePage(), 2);
    QVERIFY(f.dialogs.shown.empty());
    QCOMPARE(f.document.IndirektesPrüfmerkmal().Name(),
             u"Messwert Flächendeckende Dynamische Verdichtungskontrolle"_qs);
}

void TestSeiteParameter::shortcutBackCompletesAndChecksNothing()
{
    WizardFixture f;
    f.open();
    f.find<QComboBox>(nineBoxes[0])->setEditText(u"x"_qs);
    auto *symbol = f.find<QComboBox>(nineBoxes[4]);
    symbol->setFocus();
    QCoreApplication::processEvents();
    QTest::keyClicks(symbol, u"EVD"_qs);
    QTest::keyClick(f.window.get(), Qt::Key_Z, Qt::AltModifier);
    QTRY_COMPARE(f.activePage(), 0);
    QCoreApplication::processEvents();
    QVERIFY(f.dialogs.shown.empty());
    QCOMPARE(f.document.IndirektesPrüfmerkmal().Name(), u"Dynamischer Verformungsmodul"_qs);
    QCOMPARE(f.document.IndirektesPrüfmerkmal().Einheit(), u"MN/m²"_qs);
}

void TestSeiteParameter::longTextsShowFromTheirBeginning()
{
    const QString longName = u"Messwert Flächendeckende Dynamische Verdichtungskontrolle"_qs;
    WizardFixture f;
    f.document.DirektesPrüfmerkmal().setName(longName);
    f.open();
    const auto cursor = [&](int box) {
        return f.find<QComboBox>(nineBoxes[box])->lineEdit()->cursorPosition();
    };
    QCOMPARE(f.find<QComboBox>(nineBoxes[0])->currentText(), longName);
    QCOMPARE(cursor(0), 0);
    QCOMPARE(cursor(6), 0);
    auto *chosen = f.find<QComboBox>(nineBoxes[3]);
    chosen->showPopup();
    QTest::keyClick(chosen->view(), Qt::Key_End);
    QTest::keyClick(chosen->view(), Qt::Key_Return);
    QCOMPARE(chosen->currentText(), longName);
    QCOMPARE(cursor(3), 0);
}

void TestSeiteParameter::wheelChangesNothing()
{
    WizardFixture f;
    f.open();
    const auto turn = [](QWidget *over) {
        for (const int step : {-120, 120, -120}) {
            QWheelEvent event(QPointF(5, 5), over->mapToGlobal(QPointF(5, 5)), QPoint(),
                              QPoint(0, step), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                              false);
            QApplication::sendEvent(over, &event);
        }
    };
    for (const QString &name : nineBoxes) {
        auto *box = f.find<QComboBox>(name);
        const QString before = box->currentText();
        box->setFocus();
        turn(box);
        turn(box->lineEdit());
        QCOMPARE(box->currentText(), before);
    }
    auto *count = f.find<QLineEdit>(u"txtMessreihen"_qs);
    turn(count);
    QCOMPARE(count->text(), u"3"_qs);
}

void TestSeiteParameter::typingIsNeverCompletedOrReplaced()
{
    WizardFixture f;
    f.open();
    auto *name = f.find<QComboBox>(nineBoxes[0]);
    QTest::keyClicks(name, u"verdichtungsgrad"_qs);
    QTest::keyClick(name, Qt::Key_Return);
    QCOMPARE(name->currentText(), u"verdichtungsgrad"_qs);
    QTest::keyClick(name, Qt::Key_Tab);
    QCoreApplication::processEvents();
    QCOMPARE(name->currentText(), u"verdichtungsgrad"_qs);
    QCOMPARE(name->count(), 2); // nothing is added to the list either
}

void TestSeiteParameter::arrowKeysCountAndClamp()
{
    WizardFixture f;
    f.open();
    auto *box = f.find<QLineEdit>(u"txtMessreihen"_qs);
    QTest::keyClick(box, Qt::Key_Up);
    QCOMPARE(box->text(), u"4"_qs);
    QTest::keyClick(box, Qt::Key_Down);
    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(box->text(), u"3"_qs);
    box->setText(u"abc"_qs);
    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(box->text(), u"3"_qs);
    box->setText(u"50000"_qs);
    QTest::keyClick(box, Qt::Key_Up);
    QCOMPARE(box->text(), u"9999"_qs);
    auto *places = f.find<QLineEdit>(u"txtMessreiheStellen"_qs);
    QTest::keyClick(places, Qt::Key_Down);
    QCOMPARE(places->text(), u"0"_qs);
    QTest::keyClick(places, Qt::Key_Up);
    QCOMPARE(places->text(), u"1"_qs);
}

void TestSeiteParameter::arrowButtonsCount()
{
    WizardFixture f;
    f.open();
    const auto buttons = f.find<QWidget>(u"udMessreihen"_qs)->findChildren<QToolButton *>();
    QCOMPARE(buttons.size(), 2);
    QTest::mouseClick(buttons.at(0), Qt::LeftButton);
    QTest::mouseClick(buttons.at(0), Qt::LeftButton);
    QCOMPARE(f.find<QLineEdit>(u"txtMessreihen"_qs)->text(), u"5"_qs);
    QTest::mouseClick(buttons.at(1), Qt::LeftButton);
    QCOMPARE(f.find<QLineEdit>(u"txtMessreihen"_qs)->text(), u"4"_qs);
}

void TestSeiteParameter::unchangedTextsAreNeverWrittenBack()
{
    WizardFixture f;
    // A stored text with a line break shows as one line, places beyond 30 as they are.
    f.document.DirektesPrüfmerkmal().setName(u"zwei\nZeilen"_qs);
    f.document.DataStore().set(u"Anzahl Prüffelder"_qs, u"3,5"_qs);
    f.document.DataStore().set(u"Kovariable Nachkommastellen"_qs, u"0,4"_qs);
    f.document.setIsDirty(false);
    f.open();
    const QByteArray before = f.document.ContentString();
    for (int round = 0; round < 3; ++round) {
        f.find<QPushButton>(u"cmdPrevious"_qs)->click();
        f.find<QPushButton>(u"cmdNext"_qs)->click();
    }
    QCOMPARE(f.document.ContentString(), before);
    QVERIFY(!f.document.IsDirty());
    QCOMPARE(f.document.PrüffelderAnzahl(), 4);
}

void TestSeiteParameter::unreadableFileValuesAreRefusedForwardOnly()
{
    WizardFixture f;
    f.document.DataStore().set(u"Anzahl Prüffelder"_qs, u"viele"_qs);
    f.document.DataStore().set(u"Direktes Prüfmerkmal Nachkommastellen"_qs, u"x"_qs);
    f.document.setIsDirty(false);
    f.open();
    fillBoxes(f);
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    QCOMPARE(f.dialogs.shown, std::vector{informationBox(fieldsMessage)});
    f.find<QLineEdit>(u"txtMessreihen"_qs)->setText(u"4"_qs);
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    QCOMPARE(f.dialogs.shown.back(), informationBox(placesMessage));
    f.find<QPushButton>(u"cmdPrevious"_qs)->click();
    QCOMPARE(f.dialogs.shown.size(), std::size_t{2});
    QCOMPARE(f.activePage(), 0);
    QCOMPARE(f.document.PrüffelderAnzahl(), 4);
}

void TestSeiteParameter::goodStepStoresEverything()
{
    WizardFixture f;
    f.open();
    for (int i = 0; i < 9; ++i)
        f.find<QComboBox>(nineBoxes[i])->setEditText(u"Text "_qs + QString::number(i));
    f.find<QLineEdit>(u"txtDirektesPrüfmerkmalStellen"_qs)->setText(u"1"_qs);
    f.find<QLineEdit>(u"txtIndirektesPrüfmerkmalStellen"_qs)->setText(u"0"_qs);
    f.find<QLineEdit>(u"txtMessreiheStellen"_qs)->setText(u"40"_qs);
    f.find<QLineEdit>(u"txtMessreihen"_qs)->setText(u"12"_qs);
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    QCOMPARE(f.activePage(), 2);
    QVERIFY(f.dialogs.shown.empty());
    int i = 0;
    for (Prüfmerkmal *m : {&f.document.DirektesPrüfmerkmal(), &f.document.IndirektesPrüfmerkmal(),
                           &f.document.Kovariable()}) {
        QCOMPARE(m->Name(), u"Text "_qs + QString::number(i++));
        QCOMPARE(m->Formelzeichen(), u"Text "_qs + QString::number(i++));
        QCOMPARE(m->Einheit(), u"Text "_qs + QString::number(i++));
    }
    QCOMPARE(f.document.DirektesPrüfmerkmal().Nachkommastellen(), 1);
    QCOMPARE(f.document.IndirektesPrüfmerkmal().Nachkommastellen(), 0);
    QCOMPARE(f.document.Kovariable().Nachkommastellen(), 40);
    QCOMPARE(f.document.PrüffelderAnzahl(), 12);
    QVERIFY(f.document.IsDirty());
}

void TestSeiteParameter::backKeepsWhatCannotBeStored()
{
    WizardFixture f;
    f.open();
    f.find<QLineEdit>(u"txtMessreihen"_qs)->setText(u"2"_qs);
    f.find<QLineEdit>(u"txtDirektesPrüfmerkmalStellen"_qs)->setText(u"abc"_qs);
    f.find<QComboBox>(nineBoxes[0])->setEditText(u"behalten"_qs);
    f.find<QPushButton>(u"cmdPrevious"_qs)->click();
    QCOMPARE(f.activePage(), 0);
    QVERIFY(f.dialogs.shown.empty());
    QCOMPARE(f.document.PrüffelderAnzahl(), 3);
    QCOMPARE(f.document.DirektesPrüfmerkmal().Nachkommastellen(), 2);
    QCOMPARE(f.document.DirektesPrüfmerkmal().Name(), u"behalten"_qs);
}

void TestSeiteParameter::pastedControlCharactersAreNotTaken()
{
    WizardFixture f;
    f.open();
    fillBoxes(f);
    auto *box = f.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs);
    box->lineEdit()->setText(u"[]"_qs);
    box->lineEdit()->setCursorPosition(1);
    QGuiApplication::clipboard()->setText(u"\u0001a\vb\u0007"_qs);
    QTest::keyClick(box->lineEdit(), Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(box->lineEdit(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(box->currentText(), u"[]"_qs);
    QTest::keyClick(box->lineEdit(), Qt::Key_V, Qt::ControlModifier);
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    QCOMPARE(f.activePage(), 2);
    QCOMPARE(f.document.DirektesPrüfmerkmal().Name(), u"[a  b]"_qs);
}

void TestSeiteParameter::undoneTypingIsNoChange()
{
    Auswahlfeld box;
    box.setText(u"a\tb"_qs); // as another program may have put it into the file
    QTest::keyClicks(box.lineEdit(), u"x"_qs);
    QVERIFY(box.text() != u"a\tb"_qs);
    QTest::keyClick(box.lineEdit(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(box.text(), u"a\tb"_qs);
}

void TestSeiteParameter::oddTextsSurvive_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("quotes") << u"\"Wert\" 'x' „y“"_qs;
    QTest::newRow("markup") << u"<b>fett</b> &amp; <script>"_qs;
    QTest::newRow("200 characters") << QString(200, u'W');
    QTest::newRow("blanks around") << u"  Wert  "_qs;
    QTest::newRow("other scripts") << u"密度 плотность 𝛼"_qs;
}

void TestSeiteParameter::oddTextsSurvive()
{
    QFETCH(QString, text);
    WizardFixture f;
    f.open();
    for (const QString &name : nineBoxes)
        f.find<QComboBox>(name)->setEditText(text);
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    QCOMPARE(f.activePage(), 2);
    f.window->FileSave(f.path(u"odd.xml"_qs));
    f.window->FileOpen(f.path(u"odd.xml"_qs));
    f.find<QPushButton>(u"cmdPrevious"_qs)->click();
    for (const QString &name : nineBoxes)
        QCOMPARE(f.find<QComboBox>(name)->currentText(), text);
}

void TestSeiteParameter::placesInBothLocales_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("stored"); // -1: refused
    const QLocale de(QLocale::German, QLocale::Germany);
    const QLocale en(QLocale::English, QLocale::UnitedStates);
    QTest::newRow("German comma") << de << u"1,5"_qs << 2;
    QTest::newRow("German point") << de << u"2.7"_qs << 3;
    QTest::newRow("English point") << en << u"2.7"_qs << 3;
    QTest::newRow("English comma") << en << u"1,5"_qs << -1;
}

void TestSeiteParameter::placesInBothLocales()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, text);
    QFETCH(int, stored);
    WizardFixture f(locale);
    f.open();
    fillBoxes(f);
    f.find<QLineEdit>(u"txtDirektesPrüfmerkmalStellen"_qs)->setText(text);
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    QCOMPARE(f.activePage(), stored < 0 ? 1 : 2);
    QCOMPARE(f.document.DirektesPrüfmerkmal().Nachkommastellen(), stored < 0 ? 2 : stored);
}

void TestSeiteParameter::manyFieldsFromAFileMayStay()
{
    WizardFixture f;
    f.document.setPrüffelderAnzahl(20000);
    f.document.setIsDirty(false);
    f.open();
    fillBoxes(f);
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    QVERIFY(f.dialogs.shown.empty());
    QCOMPARE(f.document.PrüffelderAnzahl(), 20000);
}

REGISTER_TEST(TestSeiteParameter)
#include "tst_seiteparameter.moc"
