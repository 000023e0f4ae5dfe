#include "tests/support/testregistry.h"
#include "tests/wizard/beispielblatt.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>

/// Which page shows, and what a step does to the document.
class TestSeitenfolge : public QObject
{
    Q_OBJECT

private slots:
    void startsOnTheWelcomePage();
    void startsOnPageOneWhenTheWelcomePageIsOff();
    void welcomePageNamesProductAndVersion();
    void clickOnTheBoxIsStoredAtOnce();
    void exactlyOnePanelShows();
    void firstPageHasNoWayBack();
    void lastPageHasNoWayForward();
    void showableEndsAtTheBounds();
    void pageThatIsNotShowableRefusesTheStep();
    void reenteringNeverTakesThePageOver();
    void backSkipsChecksButStores();
    void closeButtonClosesTheWindow();
    void infoButtonOpensTheInfoBoxModally();
    void helpFileStandsBesideTheProgram();
    void captionsOfThePages();
    void everyPageThereAndBackInBothLocales_data();
    void everyPageThereAndBackInBothLocales();
    void enterPressesTheFocusedButton();
};

namespace {

// A document that every forward check accepts.
void fillCharacteristics(Kalibrierung &document)
{
    for (Prüfmerkmal *m : {&document.DirektesPrüfmerkmal(), &document.IndirektesPrüfmerkmal()}) {
        m->setName(u"Verdichtungsgrad"_qs);
        m->setFormelzeichen(u"DPr"_qs);
        m->setEinheit(u"%"_qs);
    }
    document.setIsDirty(false);
}

} // namespace

void TestSeitenfolge::startsOnTheWelcomePage()
{
    WizardFixture f({QLocale::German}, false);
    f.open();
    QCOMPARE(f.activePage(), 0);
    QVERIFY(f.find<QScrollArea>(u"picContainer0"_qs)->isVisible());
    QTRY_VERIFY(f.find<QPushButton>(u"cmdNext"_qs)->hasFocus());
}

void TestSeitenfolge::startsOnPageOneWhenTheWelcomePageIsOff()
{
    WizardFixture f;
    f.open();
    QCOMPARE(f.activePage(), 1);
    QVERIFY(f.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->hasFocus());
}

void TestSeitenfolge::welcomePageNamesProductAndVersion()
{
    WizardFixture f({QLocale::German}, false);
    f.open();
    QVERIFY(f.find<QLabel>(u"labVersion"_qs)
                ->text()
                .contains(QRegularExpression(u"^Version \\d+\\.\\d+\\.\\d+$"_qs)));
    QCOMPARE(f.find<QLabel>(u"labThema"_qs)->text(),
             u"Kalibrierung eines indirekten Prüfmerkmals\nmit einem direkten Prüfmerkmal"_qs);
    QVERIFY(!f.find<QLabel>(u"labFirma"_qs)->text().isEmpty());
    QCOMPARE(f.find<QCheckBox>(u"chkDontShowPage0"_qs)->text().remove(u'&'),
             u"Diese Seite nicht mehr anzeigen."_qs);
}

void TestSeitenfolge::clickOnTheBoxIsStoredAtOnce()
{
    WizardFixture f({QLocale::German}, false);
    f.open();
    auto *box = f.find<QCheckBox>(u"chkDontShowPage0"_qs);
    QVERIFY(!box->isChecked());
    box->click();
    QCOMPARE(f.settings.value(u"Main/DontShowPage0"_qs).toInt(), 1);
    box->click();
    QCOMPARE(f.settings.value(u"Main/DontShowPage0"_qs).toInt(), 0);
}

void TestSeitenfolge::exactlyOnePanelShows()
{
    PageFixture f(0);
    f.open();
    QPoint place;
    for (int page = 0; page < 6; ++page) {
        QCOMPARE(f.activePage(), page);
        for (int i = 0; i < 6; ++i) {
            const auto *panel = f.find<QScrollArea>(u"picContainer"_qs + QString::number(i));
            QCOMPARE(panel->isVisible(), i == page);
            QCOMPARE(panel->frameShape(), QFrame::NoFrame);
        }
        const auto *shown = f.find<QScrollArea>(u"picContainer"_qs + QString::number(page));
        if (page == 1)
            place = shown->pos(); // below the steps, which the welcome page hasn't got
        QCOMPARE(shown->x(), 0);
        QVERIFY(page == 0 || shown->pos() == place);
        f.click(u"cmdNext"_qs);
    }
}

void TestSeitenfolge::firstPageHasNoWayBack()
{
    WizardFixture f({QLocale::German}, false);
    f.open();
    QVERIFY(!f.find<QPushButton>(u"cmdPrevious"_qs)->isEnabled());
    QVERIFY(f.find<QPushButton>(u"cmdNext"_qs)->isEnabled());
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    QVERIFY(f.find<QPushButton>(u"cmdPrevious"_qs)->isEnabled());
}

void TestSeitenfolge::lastPageHasNoWayForward()
{
    WizardFixture f;
    fillCharacteristics(f.document);
    f.document.DataStore().set(u"AssistentActivePage"_qs, std::int32_t{5});
    f.document.SaveFile(f.path(u"five.xml"_qs));
    f.open();
    f.window->FileOpen(f.path(u"five.xml"_qs));
    QCOMPARE(f.activePage(), 5);
    QVERIFY(!f.find<QPushButton>(u"cmdNext"_qs)->isEnabled());
    QVERIFY(f.find<QPushButton>(u"cmdPrevious"_qs)->isEnabled());
    QVERIFY(f.find<QPushButton>(u"cmdCancel"_qs)->isEnabled());
}

void TestSeitenfolge::showableEndsAtTheBounds()
{
    WizardFixture f;
    frmAssistent &window = f.open();
    for (int page = 0; page < 6; ++page)
        QVERIFY(window.PageShowable(page));
    for (const int page : {-1, 6, 100}) {
        QVERIFY(!window.PageShowable(page));
        window.setPageShowable(page, true);
        QVERIFY(!window.PageShowable(page));
    }
    window.setPageShowable(3, false);
    QVERIFY(!window.PageShowable(3));
    window.setPageShowable(3, true);
    QVERIFY(window.PageShowable(3));
}

void TestSeitenfolge::pageThatIsNotShowableRefusesTheStep()
{
    WizardFixture f({QLocale::German}, false);
    fillCharacteristics(f.document);
    frmAssistent &window = f.open();
    window.setPageShowable(1, false);
    f.find<QPushButton>(u"cmdNext"_qs)->click(); // still enabled: the page was entered before
    QCOMPARE(f.activePage(), 0);
    window.setPageShowable(1, true);
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    window.setPageShowable(0, false);
    f.find<QPushButton>(u"cmdPrevious"_qs)->click();
    QCOMPARE(f.activePage(), 1);
    window.setPageShowable(0, true);
    f.find<QPushButton>(u"cmdPrevious"_qs)->click();
    QCOMPARE(f.activePage(), 0);
    window.setPageShowable(2, false);
    f.find<QPushButton>(u"cmdNext"_qs)->click();
    QCOMPARE(f.activePage(), 1);
    QVERIFY(!f.find<QPushButton>(u"cmdNext"_qs)->isEnabled());
}

void TestSeitenfolge::reenteringNeverTakesThePageOver()
{
    WizardFixture f;
    frmAssistent &window = f.open();
    f.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->setEditText(u"getippt"_qs);
    f.document.DirektesPrüfmerkmal().setName(u"aus dem Dokument"_qs);
    f.document.setIsDirty(false);
    f.document.SaveFile(f.path(u"a.xml"_qs));
    window.FileOpen(f.path(u"a.xml"_qs)); // enters the page with direction 0
    QCOMPARE(f.document.DirektesPrüfmerkmal().Name(), u"aus dem Dokument"_qs);
    QCOMPARE(f.find<QComboBox>(u"cboDirektesPrüfmerkmal"_qs)->currentText(),
             u"aus dem Dokument"_qs);
    QVERIFY(!f.document.IsDirty());
}

void TestSeitenfolge::backSkipsChecksButStores()
{
    WizardFixture f;
    f.open();
    f.find<QComboBox>(u"cboIndirektesPrüfmerkmalEinheit"_qs)->setEditText(u"%"_qs);
    f.find<QLineEdit>(u"txtMessreihen"_qs)->setText(u"7"_qs);
    f.find<QPushButton>(u"cmdPrevious"_qs)->click();
    QCOMPARE(f.activePage(), 0);
    QVERIFY(f.dialogs.shown.empty());
    QCOMPARE(f.document.IndirektesPrüfmerkmal().Einheit(), u"%"_qs);
    QCOMPARE(f.document.PrüffelderAnzahl(), 7);
    QVERIFY(f.document.IsDirty());
}

void TestSeitenfolge::closeButtonClosesTheWindow()
{
    WizardFixture f;
    f.open();
    f.find<QPushButton>(u"cmdCancel"_qs)->click();
    QVERIFY(!f.window->isVisible());
    QVERIFY(f.dialogs.questions.isEmpty());
}

void TestSeitenfolge::infoButtonOpensTheInfoBoxModally()
{
    WizardFixture f({QLocale::German}, false);
    f.open();
    auto *button = f.find<QPushButton>(u"cmdInfo"_qs);
    QCOMPARE(button->text().remove(u'&'), u"Info..."_qs);
    button->click();
    QCOMPARE(f.windows.calls, QStringList({u"info"_qs, u"modal"_qs}));
    QCOMPARE(f.windows.owner, f.window.get());
}

void TestSeitenfolge::helpFileStandsBesideTheProgram()
{
    WizardFixture f;
    f.open();
    QCOMPARE(f.help.file, f.folder.path() + u"/Wendral.chm"_qs);
}

void TestSeitenfolge::captionsOfThePages()
{
    PageFixture f(1);
    f.open();
    const QStringList captions{
        u"Schritt 1: Festlegen der Eingangsparameter"_qs, u"Schritt 2: Werte der Prüffelder"_qs,
        u"Schritt 3: Messwerteingabe"_qs, u"Schritt 4: Plausibilitätsprüfung"_qs,
        u"Schritt 5: Ausgabe der Ergebnisse"_qs};
    for (int page = 1; page <= 5; ++page) {
        QCOMPARE(f.activePage(), page);
        const auto *caption = f.find<QLabel>(u"labPageCaption"_qs + QString::number(page));
        QVERIFY(caption->isVisible());
        QCOMPARE(caption->text(), captions.at(page - 1));
        f.click(u"cmdNext"_qs);
    }
    QVERIFY(!f.window->findChild<QLabel *>(u"labPageCaption0"_qs));
}

void TestSeitenfolge::everyPageThereAndBackInBothLocales_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("value");
    const QLocale german(QLocale::German, QLocale::Germany);
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    QTest::newRow("German") << german << u"1.234,567"_qs;
    QTest::newRow("English") << english << u"1,234.567"_qs;
}

void TestSeitenfolge::everyPageThereAndBackInBothLocales()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, value);
    constexpr double stored = 1234.567;
    PageFixture f(1, 3, 4, locale);
    f.document.DirektesPrüfmerkmal().setNachkommastellen(3);
    f.document.Kovariable().setNachkommastellen(3);
    f.open();
    f.find<QLineEdit>(u"txtMessreihen"_qs)->setText(u"4"_qs);
    f.click(u"cmdNext"_qs);
    f.type(fieldsGrid, 4, 2, value);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.activePage(), 3);
    for (int row = 13; row <= 16; ++row) {
        f.type(valuesGrid, row, 2, value);
        f.type(valuesGrid, row, 3, QString::number(row));
    }
    QCOMPARE(f.grid(valuesGrid).textMatrix(13, 2), value);
    f.click(u"cmdNext"_qs);
    f.click(u"cmdNext"_qs);
    QCOMPARE(f.activePage(), 5);
    for (int page = 4; page >= 0; --page) {
        f.click(u"cmdPrevious"_qs);
        QCOMPARE(f.activePage(), page);
    }
    QVERIFY(f.dialogs.shown.empty());
    QCOMPARE(f.document.PrüffeldWert(4), stored);
    QVERIFY(f.document.Messwert(pmDirekt, 4, 1) == Variant(stored));
    QCOMPARE(f.grid(valuesGrid).textMatrix(13, 2), value);
}

void TestSeitenfolge::enterPressesTheFocusedButton()
{
    PageFixture f(1);
    f.open();
    for (const int target : {2, 3}) {
        f.find<QPushButton>(u"cmdNext"_qs)->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(f.activePage(), target);
    }
    f.find<QPushButton>(u"cmdPrevious"_qs)->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Enter);
    QCOMPARE(f.activePage(), 2);
}

REGISTER_TEST(TestSeitenfolge)
#include "tst_seitenfolge.moc"
