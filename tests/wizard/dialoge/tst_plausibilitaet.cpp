#include "tests/support/testregistry.h"
#include "tests/wizard/dialoge/beispiel.h"
#include "wizard/plausibilitaet.h"

#include <QTest>

using plausibilitaet::Zeile;

namespace {

QStringList captions(const std::vector<Zeile> &rows)
{
    QStringList result;
    for (const Zeile &row : rows)
        result += row.groesse;
    return result;
}

QStringList values(const std::vector<Zeile> &rows)
{
    QStringList result;
    for (const Zeile &row : rows) {
        if (row.art == Zeile::Art::Ergebnis)
            result += row.wert;
    }
    return result;
}

const QString rated = u"   Bestimmtheitsmaß direktes und indirektes Prüfmerkmal"_qs;

QString ratingOf(const std::vector<Zeile> &rows)
{
    for (const Zeile &row : rows) {
        if (row.groesse == rated)
            return row.wertung;
    }
    return u"(keine Zeile)"_qs;
}

} // namespace

class TestPlausibilitaet : public QObject
{
    Q_OBJECT

private slots:
    void rowsHaveTheirCaptionsInOrder()
    {
        Kalibrierung document(beispiel::german);
        beispiel::enterValues(document);
        const QStringList expected{
            u"Mittelwerte"_qs,
            u"   Mittelwert direktes Prüfmerkmal: Verdichtungsgrad DPr"_qs,
            u"   Mittelwert indirektes Prüfmerkmal: Messwert F"_qs,
            u"   Mittelwert Anzahl der Übergänge Z"_qs,
            u" "_qs,
            u"Varianzen"_qs,
            u"   Varianz direktes Prüfmerkmal: Verdichtungsgrad DPr"_qs,
            u"   Varianz indirektes Prüfmerkmal: Messwert F"_qs,
            u"   Varianz Anzahl der Übergänge Z"_qs,
            u" "_qs,
            u"Standardabweichung"_qs,
            u"   Standardabweichung direktes Prüfmerkmal: Verdichtungsgrad DPr"_qs,
            u"   Standardabweichung indirektes Prüfmerkmal: Messwert F"_qs,
            u"   Standardabweichung Anzahl der Übergänge Z"_qs,
            u" "_qs,
            u"Kovarianzen"_qs,
            u"   Kovarianz direktes und indirektes Prüfmerkmal"_qs,
            u"   Kovarianz direktes Prüfmerkmal und Anzahl der Übergänge Z"_qs,
            u"   Kovarianz indirektes Prüfmerkmal und Anzahl der Übergänge Z"_qs,
            u" "_qs,
            u"Bestimmtheitsmaße"_qs,
            u"   Bestimmtheitsmaß direktes und indirektes Prüfmerkmal"_qs,
            u"   Bestimmtheitsmaß direktes Prüfmerkmal und Anzahl der Übergänge Z"_qs,
            u"   Bestimmtheitsmaß indirektes Prüfmerkmal und Anzahl der Übergänge Z"_qs,
            u" "_qs,
            u"Kalibriergeraden"_qs,
            u"   direktes und indirektes Prüfmerkmal: Anstieg"_qs,
            u"   direktes und indirektes Prüfmerkmal: Achsenabschnitt"_qs,
            u"   direktes Prüfmerkmal und Anzahl der Übergänge Z: Anstieg"_qs,
            u"   direktes Prüfmerkmal und Anzahl der Übergänge Z: Achsenabschnitt"_qs,
            u"   indirektes Prüfmerkmal und Anzahl der Übergänge Z: Anstieg"_qs,
            u"   indirektes Prüfmerkmal und Anzahl der Übergänge Z: Achsenabschnitt"_qs,
        };
        QCOMPARE(captions(plausibilitaet::zeilen(document)), expected);
    }

    // Worked out with exact fractions outside of this program.
    void valuesAreTheFormattedResults_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("point");
        QTest::newRow("German") << beispiel::german << u","_qs;
        QTest::newRow("English") << beispiel::english << u"."_qs;
    }

    void valuesAreTheFormattedResults()
    {
        QFETCH(QLocale, locale);
        QFETCH(QString, point);
        Kalibrierung document(locale);
        beispiel::enterValues(document);
        QStringList expected{u"5,0"_qs,    u"6,0"_qs,   u"2,0"_qs,    u"7,50"_qs,  u"9,75"_qs,
                             u"0,75"_qs,   u"2,74"_qs,  u"3,12"_qs,   u"0,87"_qs,  u"8,00"_qs,
                             u"2,25"_qs,   u"2,50"_qs,  u"0,88"_qs,   u"0,90"_qs,  u"0,85"_qs,
                             u"0,9000"_qs, u"-0,40"_qs, u"3,0000"_qs, u"-1,00"_qs, u"3,3333"_qs,
                             u"-0,67"_qs};
        QCOMPARE(values(plausibilitaet::zeilen(document)),
                 expected.replaceInStrings(u","_qs, point));
    }

    void eachValueFollowsItsOwnDecimalPlaces()
    {
        Kalibrierung document(beispiel::german);
        beispiel::enterValues(document);
        document.setNachkommastellenMittelwerte(0);
        document.setNachkommastellenVarianzen(1);
        document.setNachkommastellenStandardabweichung(3);
        document.setNachkommastellenKovarianzen(4);
        document.setNachkommastellenBestimmtheitsmaße(5);
        document.setNachkommastellenAnstieg(6);
        document.setNachkommastellenAchsenabschnitt(7);
        const QStringList shown = values(plausibilitaet::zeilen(document));
        QCOMPARE(shown.at(0), u"5"_qs);
        QCOMPARE(shown.at(3), u"7,5"_qs);
        QCOMPARE(shown.at(6), u"2,739"_qs);
        QCOMPARE(shown.at(9), u"8,0000"_qs);
        QCOMPARE(shown.at(12), u"0,87521"_qs);
        QCOMPARE(shown.at(15), u"0,900000"_qs);
        QCOMPARE(shown.at(16), u"-0,4000000"_qs);
    }

    void onlyOneRowIsRated()
    {
        Kalibrierung document(beispiel::german);
        beispiel::enterValues(document);
        for (const double minimum : {0.65, 0.9}) {
            document.setMinBestimmtheitsmaßIndirektDirekt(minimum);
            for (const Zeile &row : plausibilitaet::zeilen(document))
                QCOMPARE(!row.wertung.isEmpty(), row.groesse == rated);
        }
    }

    void ratingFollowsTheMinimum_data()
    {
        QTest::addColumn<double>("minimum");
        QTest::addColumn<QString>("rating");
        QTest::newRow("reached") << 0.65 << u"gut"_qs;
        QTest::newRow("missed") << 0.9 << u"kritisch"_qs;
        QTest::newRow("equal") << 64.0 * 64.0 / (60.0 * 78.0) << u"gut"_qs;
        QTest::newRow("just missed") << 0.8753 << u"kritisch"_qs;
    }

    void ratingFollowsTheMinimum()
    {
        QFETCH(double, minimum);
        QFETCH(QString, rating);
        Kalibrierung document(beispiel::german);
        beispiel::enterValues(document);
        document.setMinBestimmtheitsmaßIndirektDirekt(minimum);
        QCOMPARE(ratingOf(plausibilitaet::zeilen(document)), rating);
        QCOMPARE(plausibilitaet::urteil(document).gut, rating == u"gut");
    }

    void groupsAndBlankRowsCarryNothingElse()
    {
        Kalibrierung document(beispiel::german);
        int blank = 0;
        int groups = 0;
        for (const Zeile &row : plausibilitaet::zeilen(document)) {
            if (row.art == Zeile::Art::Ergebnis)
                continue;
            QVERIFY(row.wert.isEmpty() && row.wertung.isEmpty());
            QCOMPARE(row.groesse == u" ", row.art == Zeile::Art::Leer);
            ++(row.art == Zeile::Art::Leer ? blank : groups);
        }
        QCOMPARE(groups, 6);
        QCOMPARE(blank, 5);
    }

    void withoutMeasuredValuesOnlyTheCovariableIsComputed()
    {
        Kalibrierung document(beispiel::german);
        const std::vector<Zeile> rows = plausibilitaet::zeilen(document);
        QCOMPARE(rows.size(), std::size_t{32});
        for (const Zeile &row : rows) {
            if (row.art != Zeile::Art::Ergebnis)
                continue;
            const bool covariable = row.groesse == u"   Mittelwert Anzahl der Übergänge Z" ||
                                    row.groesse == u"   Varianz Anzahl der Übergänge Z" ||
                                    row.groesse == u"   Standardabweichung Anzahl der Übergänge Z";
            QCOMPARE(row.wert == u"-", !covariable);
        }
        QCOMPARE(ratingOf(rows), u"kritisch"_qs);
    }

    void oneMissingValueLeavesTheOtherCharacteristic()
    {
        Kalibrierung document(beispiel::german);
        beispiel::enterValues(document);
        document.removeMesswert(pmIndirekt, 2, 2);
        const QStringList shown = values(plausibilitaet::zeilen(document));
        QCOMPARE(shown.at(0), u"5,0"_qs); // direct
        QCOMPARE(shown.at(1), u"-"_qs);   // indirect
        QCOMPARE(shown.at(10), u"2,25"_qs);
        QCOMPARE(shown.at(12), u"-"_qs);
        QCOMPARE(shown.at(17), u"3,0000"_qs);
    }

    // All indirect values alike: their variance is 0 and the division fails.
    void aConstantCharacteristicShowsADashWhereItDivides()
    {
        Kalibrierung document(beispiel::german);
        beispiel::enterValues(document);
        for (std::int32_t field = 1; field <= 3; ++field) {
            for (std::int32_t point = 1; point <= 3; ++point)
                document.setMesswert(pmIndirekt, field, point, 7.0);
        }
        const QStringList shown = values(plausibilitaet::zeilen(document));
        QCOMPARE(shown.at(4), u"0,00"_qs);
        QCOMPARE(shown.at(12), u"-"_qs);
        QCOMPARE(shown.at(15), u"-"_qs);
        QCOMPARE(shown.at(16), u"-"_qs);
        QCOMPARE(shown.at(19), u"0,0000"_qs);
    }

    void verdictNamesTheMinimumUnrounded()
    {
        Kalibrierung document(beispiel::german);
        beispiel::enterValues(document);
        document.setMinBestimmtheitsmaßIndirektDirekt(0.655);
        QCOMPARE(plausibilitaet::urteil(document).satz,
                 u"Das Bestimmtheitsmaß zwischen dem direkten und indirekten Prüfmerkmal liegt "
                 u"über dem minimal erforderlichen Wert von 0,655.\r\nSomit kann die ermittelte "
                 u"Kalibriergerade für die Umrechnung zwischen den Prüfmerkmalen genutzt "
                 u"werden."_qs);
        document.setMinBestimmtheitsmaßIndirektDirekt(0.9);
        QCOMPARE(plausibilitaet::urteil(document).satz,
                 u"Das Bestimmtheitsmaß zwischen dem direkten und indirekten Prüfmerkmal liegt "
                 u"nicht über dem minimal erforderlichen Wert von 0,9.\r\nDie ermittelte "
                 u"Kalibriergerade darf somit nicht für die Umrechnung zwischen den Prüfmerkmalen "
                 u"genutzt werden!"_qs);
    }

    void aMinimumThatIsNoNumberIsReportedNotRaised()
    {
        Kalibrierung document(beispiel::german);
        beispiel::enterValues(document);
        document.DataStore().set(
            u"minimales Bestimmtheitsmaß Indirektes Prüfmerkmal, Direktes Prüfmerkmal"_qs,
            u"viel"_qs);
        const Urteil verdict = plausibilitaet::urteil(document);
        QVERIFY(!verdict.gut);
        QVERIFY(verdict.satz.endsWith(u"Typen unverträglich (13)"_qs));
        QCOMPARE(ratingOf(plausibilitaet::zeilen(document)), u"kritisch"_qs);
        QCOMPARE(values(plausibilitaet::zeilen(document)).at(12), u"0,88"_qs);
    }
};

REGISTER_TEST(TestPlausibilitaet)
#include "tst_plausibilitaet.moc"
