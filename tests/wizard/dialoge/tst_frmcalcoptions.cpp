#include "tests/support/testregistry.h"
#include "tests/wizard/dialoge/beispiel.h"
#include "tests/wizard/dialoge/optionendialog.h"

#include <QAccessible>
#include <QGroupBox>
#include <QLabel>
#include <QTest>
#include <QToolButton>

namespace {

/// One row of fields: caption, box, arrows, accessible name, the document's property.
struct Row
{
    QString caption;
    QString box;
    QString arrows;
    QString name;
    std::int32_t (Kalibrierung::*get)();
    void (Kalibrierung::*set)(std::int32_t);
};

const std::vector<Row> &rows()
{
    static const std::vector<Row> all{
        {u"Mittelwerte:"_qs, u"txtMittelwerteStellen"_qs, u"UpDown1"_qs,
         u"Nachkommastellen Mittelwerte"_qs, &Kalibrierung::NachkommastellenMittelwerte,
         &Kalibrierung::setNachkommastellenMittelwerte},
        {u"Varianzen:"_qs, u"txtVarianzenStellen"_qs, u"udVarianzenStellen"_qs,
         u"Nachkommastellen Varianzen"_qs, &Kalibrierung::NachkommastellenVarianzen,
         &Kalibrierung::setNachkommastellenVarianzen},
        {u"Kovarianzen:"_qs, u"txtKovarianzenStellen"_qs, u"udKovarianzenStellen"_qs,
         u"Nachkommastellen Kovarianzen"_qs, &Kalibrierung::NachkommastellenKovarianzen,
         &Kalibrierung::setNachkommastellenKovarianzen},
        {u"Bestimmtheitsmaße:"_qs, u"txtBestimmtheitsmaßeStellen"_qs,
         u"udBestimmtheitsmaßeStellen"_qs, u"Nachkommastellen Bestimmtheitsmaße"_qs,
         &Kalibrierung::NachkommastellenBestimmtheitsmaße,
         &Kalibrierung::setNachkommastellenBestimmtheitsmaße},
        {u"Anstieg Gerade:"_qs, u"txtAnstiegStellen"_qs, u"udAnstiegStellen"_qs,
         u"Nachkommastellen Anstieg Gerade"_qs, &Kalibrierung::NachkommastellenAnstieg,
         &Kalibrierung::setNachkommastellenAnstieg},
        {u"Nullwert Gerade:"_qs, u"txtNullwertStellen"_qs, u"udNullwertStellen"_qs,
         u"Nachkommastellen Nullwert Gerade"_qs, &Kalibrierung::NachkommastellenAchsenabschnitt,
         &Kalibrierung::setNachkommastellenAchsenabschnitt},
    };
    return all;
}

const QString minimumCaption = u"minimales Bestimmtheitsmaß (indirekes, direktes Prüfmerkmal)"_qs;

} // namespace

/// What the dialog shows, and what Ok and Abbruch do with it.
class TestFrmCalcOptions : public QObject
{
    Q_OBJECT

private slots:
    void captionsStandAsTheyAre()
    {
        Kalibrierung document(beispiel::german);
        const Optionendialog dialog(document);
        QCOMPARE(dialog->windowTitle(), u"Berechnungsoptionen"_qs);
        QVERIFY(dialog->isModal());
        QCOMPARE(control<QPushButton>(*dialog, u"cmdOk"_qs)->text(), u"&Ok"_qs);
        QCOMPARE(control<QPushButton>(*dialog, u"cmdCancel"_qs)->text(), u"&Abbruch"_qs);
        QStringList captions;
        for (const QLabel *label : dialog->findChildren<QLabel *>())
            captions += seen(label->text());
        QVERIFY(captions.contains(
            u"Legen Sie hier fest, mit welchen Einstellungen die Berechnung der Korrelationsgeradengleichung vorgenommen werden soll."_qs));
        QCOMPARE(dialog->findChild<QGroupBox *>()->title(), u"Nachkommastellen für Anzeige"_qs);
        QCOMPARE(seen(dialog.rounding()->text()),
                 u"Zwischenergebnisse der Berechung runden (auf\nangezeigte Werte)"_qs);
        QCOMPARE(dialog.rounding()->accessibleName(),
                 u"Zwischenergebnisse der Berechung runden (auf angezeigte Werte)"_qs);
    }

    void everyBoxHasItsLabelArrowsAndName()
    {
        Kalibrierung document(beispiel::german);
        const Optionendialog dialog(document);
        QHash<QString, QString> captionOfBox;
        for (const QLabel *label : dialog->findChildren<QLabel *>()) {
            if (label->buddy())
                captionOfBox.insert(label->buddy()->objectName(), seen(label->text()));
        }
        for (const Row &row : rows()) {
            QCOMPARE(captionOfBox.value(row.box), row.caption);
            QCOMPARE(dialog.box(row.box)->accessibleName(), row.name);
            QCOMPARE(control<QWidget>(*dialog, row.arrows)->findChildren<QToolButton *>().size(),
                     2);
        }
        QCOMPARE(captionOfBox.value(minimumBox), minimumCaption);
        QCOMPARE(dialog.box(minimumBox)->accessibleName(), u"Minimales Bestimmtheitsmaß"_qs);
        QVERIFY(dialog->findChild<QWidget *>(u"udMinBestimmtheitsmaßIndirektDirekt"_qs));
        QCOMPARE(dialog->findChildren<QLineEdit *>().size(), 7); // none for standard deviations
    }

    void accessibleNamesAreUnique()
    {
        Kalibrierung document(beispiel::german);
        const Optionendialog dialog(document);
        QStringList names;
        for (QWidget *widget : dialog->findChildren<QWidget *>()) {
            const QAccessibleInterface *seenAs = QAccessible::queryAccessibleInterface(widget);
            const QString name = seenAs->text(QAccessible::Name);
            // Labels name others, and nobody lands on a bare container.
            const bool isControl =
                seenAs->role() != QAccessible::StaticText && seenAs->role() != QAccessible::Client;
            if (isControl)
                names += name;
        }
        QCOMPARE(names.size(), 1 + 7 + 14 + 3); // frame, boxes, arrows, buttons
        QCOMPARE(QSet<QString>(names.begin(), names.end()).size(), names.size());
    }

    void mnemonicsAreUnique()
    {
        Kalibrierung document(beispiel::german);
        const Optionendialog dialog(document);
        QStringList keys;
        const auto take = [&keys](const QString &text) {
            if (const auto at = text.indexOf(u'&'); at >= 0)
                keys += text.mid(at + 1, 1).toUpper();
        };
        for (const QLabel *label : dialog->findChildren<QLabel *>())
            take(label->text());
        for (const QAbstractButton *button : dialog->findChildren<QAbstractButton *>())
            take(button->text());
        QCOMPARE(keys.size(), 10);
        QCOMPARE(QSet<QString>(keys.begin(), keys.end()).size(), keys.size());
    }

    void fieldsShowTheDocument_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("minimum");
        QTest::newRow("German") << beispiel::german << u"0,70"_qs;
        QTest::newRow("English") << beispiel::english << u"0.70"_qs;
    }

    void fieldsShowTheDocument()
    {
        QFETCH(QLocale, locale);
        QFETCH(QString, minimum);
        Kalibrierung document(locale);
        std::int32_t places = 3;
        for (const Row &row : rows())
            (document.*row.set)(places++);
        document.setZwischenergebnisseRunden(true);
        document.setMinBestimmtheitsmaßIndirektDirekt(0.7);
        const Optionendialog dialog(document);
        places = 3;
        for (const Row &row : rows())
            QCOMPARE(dialog.box(row.box)->text(), QString::number(places++));
        QVERIFY(dialog.rounding()->isChecked());
        QCOMPARE(dialog.box(minimumBox)->text(), minimum);
    }

    void minimumIsShownWithTwoDecimalsAndNoGrouping_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("half away from zero") << 0.655 << u"0,66"_qs;
        QTest::newRow("whole") << 1.0 << u"1,00"_qs;
        QTest::newRow("thousands") << 1234567.5 << u"1234567,50"_qs;
        QTest::newRow("negative") << -0.5 << u"-0,50"_qs;
        QTest::newRow("nearly nothing") << -0.001 << u"0,00"_qs;
    }

    void minimumIsShownWithTwoDecimalsAndNoGrouping()
    {
        QFETCH(double, value);
        QFETCH(QString, text);
        Kalibrierung document(beispiel::german);
        document.setMinBestimmtheitsmaßIndirektDirekt(value);
        QCOMPARE(Optionendialog(document).box(minimumBox)->text(), text);
    }

    void okWritesEveryFieldAndUnloads()
    {
        Kalibrierung document(beispiel::german);
        document.setNachkommastellenStandardabweichung(9);
        Optionendialog dialog(document);
        dialog.enterEverywhere();
        dialog.ok();
        QTRY_VERIFY(dialog.isGone());
        std::int32_t places = 11;
        for (const Row &row : rows())
            QCOMPARE((document.*row.get)(), places++);
        QVERIFY(document.ZwischenergebnisseRunden());
        QCOMPARE(document.MinBestimmtheitsmaßIndirektDirekt(), 0.81);
        QCOMPARE(document.NachkommastellenStandardabweichung(), 9);
        QVERIFY(document.IsDirty());
    }

    void roundingCanBeSwitchedOffAgain()
    {
        Kalibrierung document(beispiel::german);
        document.setZwischenergebnisseRunden(true);
        Optionendialog dialog(document);
        dialog.rounding()->click();
        dialog.ok();
        QVERIFY(!document.ZwischenergebnisseRunden());
    }

    void leavingWithoutOkWritesNothing_data()
    {
        QTest::addColumn<int>("way");
        QTest::newRow("Abbruch") << 0;
        QTest::newRow("Escape") << 1;
        QTest::newRow("window closed") << 2;
    }

    void leavingWithoutOkWritesNothing()
    {
        QFETCH(int, way);
        Kalibrierung document(beispiel::german);
        const QByteArray before = document.ContentString();
        Optionendialog dialog(document);
        dialog.enterEverywhere();
        dialog.box(minimumBox)->setText(u"unsinnig"_qs); // no check stands in the way either
        if (way == 0)
            dialog.click(u"cmdCancel"_qs);
        else if (way == 1)
            QTest::keyClick(&*dialog, Qt::Key_Escape);
        else
            dialog->close();
        QTRY_VERIFY(dialog.isGone());
        QCOMPARE(document.ContentString(), before);
        QVERIFY(!document.IsDirty());
        QVERIFY(dialog.messages.shown.empty());
    }

    void okWithoutAnyChangeLeavesTheDocumentAlone_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::newRow("German") << beispiel::german;
        QTest::newRow("English") << beispiel::english;
    }

    // 0,655 is shown as "0,66", and "2.7" places as 3.
    void okWithoutAnyChangeLeavesTheDocumentAlone()
    {
        QFETCH(QLocale, locale);
        Kalibrierung document(locale);
        document.setMinBestimmtheitsmaßIndirektDirekt(0.655);
        document.DataStore().set(u"Nachkommastellen Varianzen"_qs, u"2.7"_qs);
        document.setIsDirty(false);
        const QByteArray before = document.ContentString();
        Optionendialog dialog(document);
        QCOMPARE(dialog.box(u"txtVarianzenStellen"_qs)->text(), u"3"_qs);
        dialog.ok();
        QTRY_VERIFY(dialog.isGone());
        QCOMPARE(document.MinBestimmtheitsmaßIndirektDirekt(), 0.655);
        QCOMPARE(document.ContentString(), before);
        QVERIFY(!document.IsDirty());
    }

    void onlyWhatWasEditedIsWritten()
    {
        Kalibrierung document(beispiel::german);
        document.setMinBestimmtheitsmaßIndirektDirekt(0.655);
        Optionendialog dialog(document);
        dialog.box(u"txtAnstiegStellen"_qs)->setText(u"6"_qs);
        dialog.ok();
        QCOMPARE(document.NachkommastellenAnstieg(), 6);
        QCOMPARE(document.MinBestimmtheitsmaßIndirektDirekt(), 0.655);
    }

    void minimumIsReadInTheLocale()
    {
        Kalibrierung german(beispiel::german);
        Optionendialog first(german);
        first.box(minimumBox)->setText(u"0,725"_qs);
        first.ok();
        QCOMPARE(german.MinBestimmtheitsmaßIndirektDirekt(), 0.725);
        Kalibrierung english(beispiel::english);
        Optionendialog second(english);
        second.box(minimumBox)->setText(u"0.725"_qs);
        second.ok();
        QCOMPARE(english.MinBestimmtheitsmaßIndirektDirekt(), 0.725);
    }

    void whatTheDocumentCantGiveIsEmptyAndAskedFor_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("text");
        QTest::newRow("places") << u"Nachkommastellen Anstieg"_qs << u"txtAnstiegStellen"_qs
                                << u"99999999999"_qs;
        QTest::newRow("minimum")
            << u"minimales Bestimmtheitsmaß Indirektes Prüfmerkmal, Direktes Prüfmerkmal"_qs
            << minimumBox << u"viel"_qs;
    }

    void whatTheDocumentCantGiveIsEmptyAndAskedFor()
    {
        QFETCH(QString, key);
        QFETCH(QString, box);
        QFETCH(QString, text);
        Kalibrierung document(beispiel::german);
        document.DataStore().set(key, text);
        Optionendialog dialog(document);
        QCOMPARE(dialog.box(box)->text(), QString());
        dialog.ok();
        QCOMPARE(dialog.messages.shown.size(), std::size_t{1});
        QVERIFY(dialog->isVisible());
        dialog.box(box)->setText(u"1"_qs);
        dialog.ok();
        QTRY_VERIFY(dialog.isGone());
        QCOMPARE(document.values().number(*document.DataStore().find(key)), 1.0);
    }

    void aRoundingThatTheDocumentCantGiveIsWrittenAsShown()
    {
        Kalibrierung document(beispiel::german);
        document.DataStore().set(u"Zwischenergebnisse runden"_qs, u"vielleicht"_qs);
        Optionendialog dialog(document);
        QVERIFY(!dialog.rounding()->isChecked());
        dialog.ok();
        QCOMPARE(
            document.values().text(*document.DataStore().find(u"Zwischenergebnisse runden"_qs)),
            u"Falsch"_qs);
    }

    void aValueThatCantBeReplacedIsReported()
    {
        Kalibrierung document(beispiel::german);
        document.DataStore().set(u"Nachkommastellen Mittelwerte"_qs, Null{});
        Optionendialog dialog(document);
        dialog.box(u"txtMittelwerteStellen"_qs)->setText(u"2"_qs);
        dialog.ok();
        const std::vector<FakeDialogs::Shown> expected{
            exclamationBox(u"Beim Speichern der Optionen ist ein Fehler aufgetreten:\r\n"
                           u"Unzulässige Verwendung von Null (94)"_qs)};
        QCOMPARE(dialog.messages.shown, expected);
        QVERIFY(dialog->isVisible());
    }
};

REGISTER_TEST(TestFrmCalcOptions)
#include "tst_frmcalcoptions.moc"
