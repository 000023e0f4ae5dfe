#include "tests/support/testregistry.h"
#include "tests/wizard/dialoge/beispiel.h"
#include "tests/wizard/dialoge/optionendialog.h"

#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

namespace {

const QString places = u"txtMittelwerteStellen"_qs;
const QString badPlaces = u"Bitte geben Sie eine gültige Anzahl von Nachkommastellen an."_qs;
const QString badMinimum = u"Bitte geben Sie ein gültiges minimales Bestimmtheitsmaß ein."_qs;

std::vector<FakeDialogs::Shown> one(const QString &text)
{
    return {informationBox(text)};
}

} // namespace

/// Arrows, checks when the focus leaves a box, and the check of Ok.
class TestFrmCalcOptionsEingaben : public QObject
{
    Q_OBJECT

private slots:
    void minimumArrowsStayWithinTheirRange_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("direction");
        QTest::addColumn<QString>("result");
        QTest::newRow("up") << u"0,65"_qs << 1 << u"0,66"_qs;
        QTest::newRow("down") << u"0,65"_qs << -1 << u"0,64"_qs;
        QTest::newRow("down at the lower end") << u"0,25"_qs << -1 << u"0,25"_qs;
        QTest::newRow("up to the upper end") << u"0,99"_qs << 1 << u"1,00"_qs;
        QTest::newRow("up at the upper end") << u"1,00"_qs << 1 << u"1,00"_qs;
        QTest::newRow("up from no number") << u"abc"_qs << 1 << u"0,25"_qs;
        QTest::newRow("down from no number") << u"abc"_qs << -1 << u"0,25"_qs;
        QTest::newRow("up from nothing") << u""_qs << 1 << u"0,25"_qs;
        QTest::newRow("a point is none here") << u"0.5"_qs << 1 << u"0,25"_qs;
        QTest::newRow("from far below") << u"-7"_qs << 1 << u"0,25"_qs;
        QTest::newRow("from far above") << u"12"_qs << -1 << u"1,00"_qs;
        QTest::newRow("between two steps") << u"0,655"_qs << 1 << u"0,67"_qs;
    }

    void minimumArrowsStayWithinTheirRange()
    {
        QFETCH(QString, text);
        QFETCH(int, direction);
        QFETCH(QString, result);
        Kalibrierung document(beispiel::german);
        const Optionendialog dialog(document);
        dialog.box(minimumBox)->setText(text);
        clickArrow(dialog, u"udMinBestimmtheitsmaßIndirektDirekt"_qs, direction);
        QCOMPARE(dialog.box(minimumBox)->text(), result);
    }

    void minimumStepsInTheLocale()
    {
        Kalibrierung document(beispiel::english);
        const Optionendialog dialog(document);
        QTest::keyClick(dialog.box(minimumBox), Qt::Key_Up);
        QCOMPARE(dialog.box(minimumBox)->text(), u"0.66"_qs);
    }

    // From end to end: no step is lost in the last bits of 0.01.
    void everyHundredthIsReached()
    {
        Kalibrierung document(beispiel::german);
        const Optionendialog dialog(document);
        QLineEdit *box = dialog.box(minimumBox);
        box->setText(u"0,25"_qs);
        for (int hundredths = 26; hundredths <= 100; ++hundredths) {
            QTest::keyClick(box, Qt::Key_Up);
            QCOMPARE(box->text(), document.values().display(hundredths / 100.0, 2));
        }
        for (int hundredths = 99; hundredths >= 25; --hundredths) {
            QTest::keyClick(box, Qt::Key_Down);
            QCOMPARE(box->text(), document.values().display(hundredths / 100.0, 2));
        }
    }

    void placesArrowsCountFromZero_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("direction");
        QTest::addColumn<QString>("result");
        QTest::newRow("up") << u"1"_qs << 1 << u"2"_qs;
        QTest::newRow("down") << u"1"_qs << -1 << u"0"_qs;
        QTest::newRow("down at 0") << u"0"_qs << -1 << u"0"_qs;
        QTest::newRow("up at the most that are shown") << u"30"_qs << 1 << u"30"_qs;
        QTest::newRow("up from no number") << u"abc"_qs << 1 << u"1"_qs;
    }

    void placesArrowsCountFromZero()
    {
        QFETCH(QString, text);
        QFETCH(int, direction);
        QFETCH(QString, result);
        Kalibrierung document(beispiel::german);
        const Optionendialog dialog(document);
        dialog.box(places)->setText(text);
        clickArrow(dialog, u"UpDown1"_qs, direction);
        QCOMPARE(dialog.box(places)->text(), result);
    }

    // What a text of decimal places is worth: refused (no value), or the leading number, rounded.
    void placesTexts_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("stored");
        constexpr int refused = -1000;
        const QLocale &german = beispiel::german;
        QTest::newRow("3") << german << u"3"_qs << 3;
        QTest::newRow("2.7") << german << u"2.7"_qs << 3;
        QTest::newRow("2.5, half to even") << german << u"2.5"_qs << 2;
        QTest::newRow("1,5") << german << u"1,5"_qs << 1;
        QTest::newRow("negative") << german << u"-1"_qs << -1;
        QTest::newRow("blanks around") << german << u" 4 "_qs << 4;
        QTest::newRow("nothing") << german << QString() << refused;
        QTest::newRow("blanks") << german << u"  "_qs << refused;
        QTest::newRow("abc") << german << u"abc"_qs << refused;
        QTest::newRow("trailing text") << german << u"3 Stellen"_qs << refused;
        QTest::newRow("nan") << german << u"nan"_qs << refused;
        QTest::newRow("out of range") << german << u"1e400"_qs << refused;
        QTest::newRow("too large to store") << german << u"99999999999"_qs << refused;
        QTest::newRow("English 2.7") << beispiel::english << u"2.7"_qs << 3;
        QTest::newRow("English 1,5") << beispiel::english << u"1,5"_qs << refused;
    }

    void placesTexts()
    {
        QFETCH(QLocale, locale);
        QFETCH(QString, text);
        QFETCH(int, stored);
        const bool good = stored > -1000;
        Kalibrierung document(locale);
        Optionendialog dialog(document);
        type(dialog, places, text);
        QTest::keyClick(dialog.box(places), Qt::Key_Tab);
        QCoreApplication::processEvents();
        QCOMPARE(dialog.messages.shown, good ? std::vector<FakeDialogs::Shown>{} : one(badPlaces));
        QCOMPARE(dialog.box(places)->hasFocus(), !good);
        QCOMPARE(dialog.box(places)->text(), text);
        dialog.ok();
        QCOMPARE(dialog.isGone(), good);
        QCOMPARE(document.NachkommastellenMittelwerte(), good ? stored : 1);
    }

    void minimumTexts_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("good");
        QTest::addColumn<double>("stored");
        const QLocale &german = beispiel::german;
        QTest::newRow("0,7") << german << u"0,7"_qs << true << 0.7;
        QTest::newRow("below the arrows' range") << german << u"0,1"_qs << true << 0.1;
        QTest::newRow("above the arrows' range") << german << u"2"_qs << true << 2.0;
        QTest::newRow("negative") << german << u"-0,5"_qs << true << -0.5;
        QTest::newRow("grouped") << german << u"1.000"_qs << true << 1000.0;
        QTest::newRow("a point") << german << u"0.7"_qs << false << 0.65;
        QTest::newRow("1.5") << german << u"1.5"_qs << false << 0.65;
        QTest::newRow("nothing") << german << QString() << false << 0.65;
        QTest::newRow("nan") << german << u"nan"_qs << false << 0.65;
        QTest::newRow("percent") << german << u"70 %"_qs << false << 0.65;
        QTest::newRow("out of range") << german << u"1e400"_qs << false << 0.65;
        QTest::newRow("English 0.7") << beispiel::english << u"0.7"_qs << true << 0.7;
        QTest::newRow("English 0,7") << beispiel::english << u"0,7"_qs << false << 0.65;
    }

    void minimumTexts()
    {
        QFETCH(QLocale, locale);
        QFETCH(QString, text);
        QFETCH(bool, good);
        QFETCH(double, stored);
        Kalibrierung document(locale);
        Optionendialog dialog(document);
        type(dialog, minimumBox, text);
        QTest::keyClick(dialog.box(minimumBox), Qt::Key_Tab);
        QCoreApplication::processEvents();
        QCOMPARE(dialog.messages.shown, good ? std::vector<FakeDialogs::Shown>{} : one(badMinimum));
        QCOMPARE(dialog.box(minimumBox)->hasFocus(), !good);
        dialog.ok();
        QCOMPARE(dialog.isGone(), good);
        QCOMPARE(document.MinBestimmtheitsmaßIndirektDirekt(), stored);
    }

    void everyBoxKeepsTheFocusWhileItIsBad_data() { eachBox(); }

    void everyBoxKeepsTheFocusWhileItIsBad()
    {
        QFETCH(QString, name);
        Kalibrierung document(beispiel::german);
        const Optionendialog dialog(document);
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
            // Backwards from the first box lies the cancel button, which discards the entries.
            if (key == Qt::Key_Backtab && name == allBoxes.constFirst())
                continue;
            type(dialog, name, u"abc"_qs);
            QTest::keyClick(dialog.box(name), key);
            QCoreApplication::processEvents();
            QVERIFY(dialog.box(name)->hasFocus());
            QCOMPARE(dialog.box(name)->text(), u"abc"_qs);
        }
        const std::size_t times = name == allBoxes.constFirst() ? 1 : 2;
        QCOMPARE(dialog.messages.shown,
                 std::vector<FakeDialogs::Shown>(
                     times, informationBox(name == minimumBox ? badMinimum : badPlaces)));
    }

    void okChecksEveryBoxAndWritesNothingWhenOneIsBad_data() { eachBox(); }

    void okChecksEveryBoxAndWritesNothingWhenOneIsBad()
    {
        QFETCH(QString, name);
        for (const bool byEnter : {false, true}) {
            Kalibrierung document(beispiel::german);
            const QByteArray before = document.ContentString();
            const Optionendialog dialog(document);
            dialog.enterEverywhere();
            type(dialog, name, u"abc"_qs);
            if (byEnter) {
                QTest::keyClick(dialog.box(name), Qt::Key_Return);
                QCoreApplication::processEvents();
            } else {
                dialog.ok();
            }
            QCOMPARE(dialog.messages.shown, one(name == minimumBox ? badMinimum : badPlaces));
            QVERIFY(dialog->isVisible());
            QVERIFY(dialog.box(name)->hasFocus());
            QCOMPARE(dialog.box(name)->selectedText(), u"abc"_qs);
            QCOMPARE(document.ContentString(), before);
        }
    }

    // A press that moved the focus would set off the box's own check before Ok checks all.
    void aSlowClickOnOkShowsOneMessage()
    {
        Kalibrierung document(beispiel::german);
        const Optionendialog dialog(document);
        type(dialog, minimumBox, u"abc"_qs);
        auto *ok = control<QPushButton>(*dialog, u"cmdOk"_qs);
        QTest::mousePress(ok, Qt::LeftButton);
        QCoreApplication::processEvents();
        QVERIFY(dialog.messages.shown.empty());
        QTest::mouseRelease(ok, Qt::LeftButton);
        QCoreApplication::processEvents();
        QCOMPARE(dialog.messages.shown, one(badMinimum));
        QVERIFY(dialog.box(minimumBox)->hasFocus());
    }

    void okReportsOnlyTheFirstOfSeveralBadBoxes()
    {
        Kalibrierung document(beispiel::german);
        const Optionendialog dialog(document);
        for (const QString &name : allBoxes)
            dialog.box(name)->setText(u"abc"_qs);
        dialog.box(allBoxes.constFirst())->setText(u"1"_qs);
        dialog.box(minimumBox)->setFocus();
        dialog.ok();
        QCOMPARE(dialog.messages.shown, one(badPlaces));
        QVERIFY(dialog.box(allBoxes.at(1))->hasFocus());
    }

    void enterInAGoodBoxStoresAll()
    {
        Kalibrierung document(beispiel::german);
        Optionendialog dialog(document);
        type(dialog, places, u"5"_qs);
        QTest::keyClick(dialog.box(places), Qt::Key_Return);
        QTRY_VERIFY(dialog.isGone());
        QCOMPARE(document.NachkommastellenMittelwerte(), 5);
        QVERIFY(dialog.messages.shown.empty());
    }

    void movingOnToAbbruchIsNotChecked()
    {
        Kalibrierung document(beispiel::german);
        const Optionendialog dialog(document);
        type(dialog, minimumBox, u"abc"_qs);
        control<QPushButton>(*dialog, u"cmdCancel"_qs)->setFocus();
        QCoreApplication::processEvents();
        QVERIFY(dialog.messages.shown.empty());
    }

    void tabOrderRunsFromTopToBottom()
    {
        Kalibrierung document(beispiel::german);
        const Optionendialog dialog(document);
        QStringList order = allBoxes;
        order.insert(6, u"chkRoundIntermediaryResults"_qs);
        order += {u"cmdOk"_qs, u"cmdCancel"_qs};
        for (const QString &name : order) {
            QVERIFY2(QApplication::focusWidget()->objectName() == name, qPrintable(name));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QCoreApplication::processEvents();
        }
    }

private:
    static void eachBox()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : allBoxes)
            QTest::newRow(qPrintable(name)) << name;
    }

    static void type(const Optionendialog &dialog, const QString &name, const QString &text)
    {
        QLineEdit *box = dialog.box(name);
        box->setFocus();
        box->selectAll();
        QTest::keyClick(box, Qt::Key_Delete);
        QTest::keyClicks(box, text);
    }

    static void clickArrow(const Optionendialog &dialog, const QString &name, int direction)
    {
        const auto arrows = control<QWidget>(*dialog, name)->findChildren<QToolButton *>();
        const Qt::ArrowType wanted = direction > 0 ? Qt::UpArrow : Qt::DownArrow;
        for (QToolButton *arrow : arrows) {
            if (arrow->arrowType() == wanted)
                QTest::mouseClick(arrow, Qt::LeftButton);
        }
        QCoreApplication::processEvents();
    }
};

REGISTER_TEST(TestFrmCalcOptionsEingaben)
#include "tst_frmcalcoptionseingaben.moc"
