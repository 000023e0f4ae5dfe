#include "protocol/pages/resultblocks.h"
#include "tests/protocol/composed.h"
#include "tests/protocol/documents.h"
#include "tests/support/testregistry.h"

#include <QTest>

namespace {

constexpr ProtocolType full = ProtocolType::WithCalibrationField;
constexpr ProtocolType results = ProtocolType::ResultsOnly;

QStringList startingWithDigit(const Composed &protocol)
{
    QStringList result;
    for (const auto &page : protocol.pages) {
        for (const FoundText &text : found(page->drawing)) {
            if (text.style == *protocolStyle(true, 1) && text.text.at(0).isDigit())
                result.append(text.text);
        }
    }
    return result;
}

std::vector<QString> valuesBelow(const Composed &protocol, const QString &caption)
{
    std::vector<QString> values;
    const QStringList texts = protocol.texts();
    const auto start = texts.indexOf(caption);
    for (const int i : {2, 4, 6})
        values.push_back(texts.value(start + i));
    return values;
}

} // namespace

class TstComposition : public QObject
{
    Q_OBJECT

private slots:
    void theFullProtocolNumbersItsSectionsFromTheFieldOn()
    {
        const auto document = documents::good();
        QCOMPARE(startingWithDigit(composed(*document, full)),
                 (QStringList{u"1 Protokoll zur Anlage des Kalibrierfeldes"_qs, u"1.1 Unterlage"_qs,
                              u"1.2 Kalibrierfeld"_qs, u"2 Messergebnisse im Kalibrierfeld"_qs,
                              u"3 Statistische Auswertung"_qs}));
    }

    void resultsAloneBeginWithTheMeasuredValues()
    {
        const auto document = documents::good();
        QCOMPARE(startingWithDigit(composed(*document, results)),
                 (QStringList{u"1 Messergebnisse im Kalibrierfeld"_qs,
                              u"2 Statistische Auswertung"_qs}));
    }

    void captionsAndLinesFollowInTheirOrder()
    {
        const auto document = documents::good();
        QStringList seen;
        const QStringList wanted{u"Mittelwerte"_qs,
                                 u"Varianzen"_qs,
                                 u"Standardabweichungen"_qs,
                                 u"Kovarianzen"_qs,
                                 u"Bestimmtheitsmaße"_qs,
                                 u"Kalibriergerade zwischen D und M"_qs,
                                 u"Kalibriergerade zwischen D und Z"_qs,
                                 u"Kalibriergerade zwischen M und Z"_qs};
        for (const QString &text : composed(*document, results).texts()) {
            if (wanted.contains(text))
                seen.append(text);
        }
        QCOMPARE(seen, wanted);
    }

    void theTitlesFirstLineEndsWithABlank()
    {
        const auto document = documents::good();
        const Composed protocol = composed(*document);
        const QStringList texts = protocol.texts();
        QCOMPARE(texts.at(1), u"Kalibrierung eines direkten und eines indirekten Prüfmerkmals "_qs);
        QCOMPARE(texts.at(2), u"nach Wendral (Ausgabe 2003)"_qs);
    }

    void subBaseLabelsEndInColonAndBlankFieldLabelsInABareColon()
    {
        const auto document = documents::good();
        const QStringList texts = composed(*document).texts();
        const auto subBase = texts.indexOf(u"1.1 Unterlage"_qs);
        const auto field = texts.indexOf(u"1.2 Kalibrierfeld"_qs);
        QCOMPARE(texts.mid(subBase + 1, 3),
                 (QStringList{u"Bodenart nach DIN 4022 bzw. DIN EN ISO 14688-1: "_qs,
                              u"Bodenart nach DIN 18196: "_qs,
                              u"Anzahl der Verdichtungsübergänge: "_qs}));
        QVERIFY(texts.indexOf(u"Verformungsmodul EV2: "_qs) < field);
        QVERIFY(texts.indexOf(u"Bemerkungen: "_qs) < field);
        QVERIFY(texts.indexOf(u"Bodenart nach DIN 18196:"_qs) > field);
        QVERIFY(texts.indexOf(u"Bemerkungen:"_qs) > field);
    }

    void fieldRowsStandInTheirOrderWithTheirBlanks()
    {
        const auto document = documents::good();
        const QStringList texts = composed(*document).texts();
        const QStringList wanted{u"Bodenart nach DIN 4022 bzw. DIN EN ISO 14688-1:"_qs,
                                 u"Bodenart nach DIN 18196:"_qs,
                                 u"Geometrische Abmessungen:"_qs,
                                 u"Schütthöhe:"_qs,
                                 u"Proctordichte:"_qs,
                                 u"Grenzwassergehalt für einen Verdichtungsgrad von:"_qs,
                                 u"optimaler Wassergehalt:"_qs,
                                 u"verwendeter Walzentyp:"_qs,
                                 u"    Fahrgeschwindigkeit:"_qs,
                                 u"    Amplitude:"_qs,
                                 u"    Frequenz:"_qs,
                                 u"Anzahl der Verdichtungsübergänge dynamisch/statisch im:"_qs,
                                 u"    1. Prüffeld"_qs,
                                 u"    2. Prüffeld"_qs,
                                 u"    3. Prüffeld"_qs,
                                 u"Verdichtung am/bei"_qs,
                                 u"    Datum:"_qs,
                                 u"    Witterung:"_qs,
                                 u"    Temperatur:"_qs,
                                 u"Prüfung am/bei"_qs,
                                 u"    Datum:"_qs,
                                 u"    Witterung:"_qs,
                                 u"    Temperatur:"_qs,
                                 u"Bemerkungen:"_qs};
        QStringList labels;
        for (auto i = texts.indexOf(u"1.2 Kalibrierfeld"_qs) + 1; i < texts.size(); ++i) {
            if (wanted.contains(texts.at(i)))
                labels.append(texts.at(i));
        }
        QCOMPARE(labels, wanted);
    }

    void aVeryLongRemarkOfOneLineIsShownToItsLastWord()
    {
        const auto document = documents::good();
        constexpr int words = 80'000;
        document->DataStoreLet(u"Protokoll Verdichtung Unterlage Bemerkungen"_qs,
                               u"Wort "_qs.repeated(words));
        const Composed protocol = composed(*document, full);
        QVERIFY(!protocol.error);
        QCOMPARE(protocol.texts().join(u' ').count(u"Wort"_qs), words);
        QVERIFY(protocol.pages.size() > 50);
    }

    void rowsShowTheStoredTextOfTheirKey()
    {
        const auto document = documents::good();
        const QString prefix = u"Protokoll Verdichtung "_qs;
        document->DataStoreLet(prefix + u"Unterlage Wassergehalt"_qs, u"5,5 %"_qs);
        document->DataStoreLet(prefix + u"Kalibrierfeld Proctordichte"_qs, u"1,9 g/cm³"_qs);
        document->DataStoreLet(prefix + u"Kalibrierfeld Kovariable (Anzahl der "
                                        u"Verdichtungsübergänge) - Prüffeld 2"_qs,
                               u"4/1"_qs);
        document->DataStoreLet(prefix + u"Kalibrierfeld Datum bei Verdichtung"_qs, u"erst"_qs);
        document->DataStoreLet(prefix + u"Kalibrierfeld Datum bei Prüfung"_qs, u"dann"_qs);
        const Composed protocol = composed(*document);
        QCOMPARE(besides(protocol, u"Wassergehalt: "_qs), u"5,5 %"_qs);
        QCOMPARE(besides(protocol, u"Proctordichte:"_qs), u"1,9 g/cm³"_qs);
        QCOMPARE(besides(protocol, u"    2. Prüffeld"_qs), u"4/1"_qs);
        QCOMPARE(besides(protocol, u"    Datum:"_qs, 1), u"erst"_qs);
        QCOMPARE(besides(protocol, u"    Datum:"_qs, 2), u"dann"_qs);
        QCOMPARE(besides(protocol, u"Schütthöhe:"_qs), u"?? m"_qs);
    }

    void aMissingKeyLeavesTheValueEmptyAndTheDocumentUntouched()
    {
        const auto document = documents::good();
        document->DataStore().remove(u"Protokoll Verdichtung Unterlage Wassergehalt");
        const QByteArray before = document->ContentString();
        const Composed protocol = composed(*document);
        QVERIFY(!protocol.error);
        QCOMPARE(besides(protocol, u"Wassergehalt: "_qs), QString());
        QCOMPARE(besides(protocol, u"Verformungsmodul EV2: "_qs), QString());
        QCOMPARE(document->ContentString(), before);
        QVERIFY(!document->IsDirty());
    }

    void withoutFieldsTheRowAboveThemStays()
    {
        const auto document = documents::fresh();
        document->DataStore().set(u"Anzahl Prüffelder"_qs, u"0"_qs);
        const QStringList texts = composed(*document).texts();
        QVERIFY(texts.contains(u"Anzahl der Verdichtungsübergänge dynamisch/statisch im:"_qs));
        QVERIFY(!texts.contains(u"    1. Prüffeld"_qs));
    }

    void fieldsThatWereRemovedAreNoLongerPrinted()
    {
        const auto document = documents::grid(5, 3);
        const QString key = u"Protokoll Verdichtung Kalibrierfeld Kovariable (Anzahl der "
                            u"Verdichtungsübergänge) - Prüffeld 5"_qs;
        document->DataStoreLet(key, u"fünf"_qs);
        QVERIFY(composed(*document).texts().contains(u"fünf"_qs));
        document->setPrüffelderAnzahl(4);
        const QStringList texts = composed(*document).texts();
        QVERIFY(!texts.contains(u"    5. Prüffeld"_qs));
        QVERIFY(!texts.contains(u"fünf"_qs));
        QVERIFY(document->DataStore().exists(key));
    }

    void theValuesTableHasTwoLineHeadersAndPutsTheIndirectValueFirst()
    {
        const auto document = documents::good();
        const QStringList texts = composed(*document, results).texts();
        const auto head = texts.indexOf(u"1 Messergebnisse im Kalibrierfeld"_qs);
        QCOMPARE(texts.mid(head + 1, 16),
                 (QStringList{u"Prüffeld"_qs, u"Nr."_qs, u"Prüfpunkt"_qs, u"Nr."_qs,
                              u"Indirektes Prüfmerkmal"_qs, u"Messwert M"_qs, u"[MN/m²]"_qs,
                              u"Direktes Prüfmerkmal"_qs, u"Verdichtungsgrad D"_qs, u"[%]"_qs,
                              u"Prüffeld 1"_qs, u"Kovariable Z = 2"_qs, u"Prüfpunkt 1"_qs,
                              u"28,40"_qs, u"94,80"_qs, u"Prüfpunkt 2"_qs}));
    }

    void everyPointHasARowWithItsValues_data()
    {
        QTest::addColumn<int>("fields");
        QTest::addColumn<int>("points");
        QTest::newRow("9") << 3 << 3;
        QTest::newRow("12 x 20") << 12 << 20;
        QTest::newRow("2000") << 100 << 20;
        QTest::newRow("2000 in three fields") << 4 << 500;
    }
    void everyPointHasARowWithItsValues()
    {
        QFETCH(int, fields);
        QFETCH(int, points);
        const auto document = documents::grid(fields, points);
        const Composed protocol = composed(*document, results);
        int field = 0;
        int point = points;
        for (const auto &page : protocol.pages) {
            const std::vector<FoundText> texts = found(page->drawing);
            for (std::size_t i = 0; i + 2 < texts.size(); ++i) {
                if (!texts[i].text.startsWith(u"Prüfpunkt "_qs))
                    continue;
                if (++point > points) {
                    ++field;
                    point = 1;
                }
                QCOMPARE(texts[i].text, document->PrüfpunktKey(point));
                QCOMPARE(texts[i + 1].text, document->MesswertString(pmIndirekt, field, point));
                QCOMPARE(texts[i + 2].text, document->MesswertString(pmDirekt, field, point));
                QCOMPARE(texts[i + 2].at.y(), texts[i].at.y());
            }
        }
        QCOMPARE(field, fields);
        QCOMPARE(point, points);
    }

    void everyPageOfTheValuesNamesTheFieldAtItsTop()
    {
        const auto document = documents::grid(3, 200);
        const Composed protocol = composed(*document, results);
        int pagesOfValues = 0;
        for (const auto &page : protocol.pages) {
            const QStringList texts = Composed::textsOf(page->drawing);
            const auto first = texts.indexOf(QRegularExpression(u"^Prüfpunkt \\d+$"_qs));
            if (first < 0)
                continue;
            ++pagesOfValues;
            QVERIFY(texts.at(first - 2).startsWith(u"Prüffeld "_qs));
            QVERIFY(texts.at(first - 1).startsWith(u"Kovariable Z = "_qs));
            QVERIFY(texts.contains(u"[MN/m²]"_qs));
        }
        QVERIFY(pagesOfValues > 10);
    }

    void renamedPointsShowTheirNamesAndFieldsTheirNumbers()
    {
        const auto document = documents::good();
        document->setPrüfpunktName(2, u"Mitte"_qs);
        document->setPrüffeldName(3, u"Nord"_qs);
        const QStringList texts = composed(*document, results).texts();
        QCOMPARE(texts.count(u"Mitte"_qs), 3);
        QVERIFY(!texts.contains(u"Prüfpunkt 2"_qs));
        QVERIFY(texts.contains(u"Prüffeld 3"_qs));
    }

    void valuesThatAreMissingLeaveTheirCellsEmptyAndThoseThatAreNoneSaySo()
    {
        const auto document = documents::good();
        document->removeMesswert(pmIndirekt, 1, 1);
        document->DataStore().set(document->MesswertKey(pmDirekt, 1, 1), u"unlesbar"_qs);
        const QStringList texts = composed(*document, results).texts();
        const auto row = texts.indexOf(u"Prüfpunkt 1"_qs);
        QCOMPARE(texts.at(row + 1), u"(Fehler)"_qs);
        QCOMPARE(texts.at(row + 2), u"Prüfpunkt 2"_qs);
    }

    void unitsFollowTheRulesOfEachStatistic_data()
    {
        QTest::addColumn<QString>("indirectUnit");
        QTest::addColumn<QString>("covariableUnit");
        QTest::addColumn<QStringList>("behind"); // mean, variance, deviation of both
        QTest::newRow("with units")
            << u"MN/m²"_qs << u"Stk"_qs << QStringList{u" MN/m²"_qs, u" (MN/m²)²"_qs, u" MN/m²"_qs,
                                                       u" Stk"_qs,   QString(),       QString()};
        QTest::newRow("dash") << u" - "_qs << u"-"_qs
                              << QStringList{QString(), QString(), QString(),
                                             QString(), QString(), QString()};
        QTest::newRow("empty") << QString() << QString()
                               << QStringList{QString(), QString(), QString(),
                                              QString(), QString(), QString()};
    }
    void unitsFollowTheRulesOfEachStatistic()
    {
        QFETCH(QString, indirectUnit);
        QFETCH(QString, covariableUnit);
        QFETCH(QStringList, behind);
        const auto document = documents::good();
        document->IndirektesPrüfmerkmal().setEinheit(indirectUnit);
        document->Kovariable().setEinheit(covariableUnit);
        const Composed protocol = composed(*document, results);
        const QString indirect = u"indirektes Prüfmerkmal (Messwert M)"_qs;
        const QString z = u"Kovariable (Anzahl der Übergänge Z)"_qs;
        QCOMPARE(besides(protocol, indirect, 1),
                 document->StatistikMittelwertString(mIndirekt) + behind.at(0));
        QCOMPARE(besides(protocol, indirect, 2),
                 document->StatistikVarianzString(mIndirekt) + behind.at(1));
        QCOMPARE(besides(protocol, indirect, 3),
                 document->StatistikStandardabweichungString(mIndirekt) + behind.at(2));
        QCOMPARE(besides(protocol, z, 1), document->StatistikMittelwertString(mZ) + behind.at(3));
        QCOMPARE(besides(protocol, z, 2), document->StatistikVarianzString(mZ) + behind.at(4));
        QCOMPARE(besides(protocol, z, 3),
                 document->StatistikStandardabweichungString(mZ) + behind.at(5));
    }

    void statisticsOfPairsAreTheDocumentsTexts()
    {
        const auto document = documents::good();
        const Composed protocol = composed(*document, results);
        QCOMPARE(valuesBelow(protocol, u"Kovarianzen"_qs),
                 (std::vector<QString>{document->StatistikKovarianzString(mDirekt, mIndirekt),
                                       document->StatistikKovarianzString(mDirekt, mZ),
                                       document->StatistikKovarianzString(mIndirekt, mZ)}));
        QCOMPARE(
            valuesBelow(protocol, u"Bestimmtheitsmaße"_qs),
            (std::vector<QString>{document->StatistikBestimmtheitsmaßString(mDirekt, mIndirekt),
                                  document->StatistikBestimmtheitsmaßString(mDirekt, mZ),
                                  document->StatistikBestimmtheitsmaßString(mIndirekt, mZ)}));
    }

    void aLineBlockShowsBothDirectionsTheSecondAsFunctionOfTheFirstAtTheLeft()
    {
        const auto document = documents::good();
        const QStringList texts = composed(*document, results).texts();
        const auto head = texts.indexOf(u"Kalibriergerade zwischen D und M"_qs);
        const QString a1 =
            document->StatistikKalibriergeradeAchsenabschnittString(mIndirekt, mDirekt);
        const QString b1 = document->StatistikKalibriergeradeAnstiegString(mIndirekt, mDirekt);
        const QString a2 =
            document->StatistikKalibriergeradeAchsenabschnittString(mDirekt, mIndirekt);
        const QString b2 = document->StatistikKalibriergeradeAnstiegString(mDirekt, mIndirekt);
        QCOMPARE(texts.mid(head + 1, 11),
                 (QStringList{u"M = f(D)"_qs, u"D = f(M)"_qs, u"Achsenabschnitt a"_qs,
                              a1 + u" [MN/m²]"_qs, a2 + u" [%]"_qs, u"Anstieg b"_qs, b1, b2,
                              u"Gleichung"_qs, u"M = "_qs + a1 + u" + "_qs + b1 + u" * D"_qs,
                              u"D = "_qs + a2 + u" + "_qs + b2 + u" * M"_qs}));
    }

    void anInterceptWithoutDimensionHasNoBrackets()
    {
        const auto document = documents::good();
        const Composed protocol = composed(*document, results);
        const QStringList texts = protocol.texts();
        const auto head = texts.indexOf(u"Kalibriergerade zwischen D und Z"_qs);
        QCOMPARE(texts.at(head + 4),
                 document->StatistikKalibriergeradeAchsenabschnittString(mZ, mDirekt));
    }

    void aLongUnitTakesLinesOfItsOwnAndLeavesTheNumberReadable()
    {
        const auto document = documents::good();
        const QString unit = QString(90, u'm');
        document->IndirektesPrüfmerkmal().setEinheit(unit);
        const Composed protocol = composed(*document, results);
        const QString mean = document->StatistikMittelwertString(mIndirekt);
        const QString intercept =
            document->StatistikKalibriergeradeAchsenabschnittString(mIndirekt, mDirekt);
        int numbers = 0;
        qsizetype letters = 0;
        bool isStatistic = false; // behind the table of the values
        for (const auto &page : protocol.pages) {
            for (const FoundText &text : found(page->drawing)) {
                isStatistic = isStatistic || text.text == u"Mittelwerte"_qs;
                if (!isStatistic || text.upward)
                    continue;
                if (text.text == mean || text.text == intercept) {
                    ++numbers;
                    QCOMPARE(text.style, *protocolStyle(false, 0));
                }
                if (text.text.contains(u"mmmm"_qs)) {
                    letters += text.text.count(u'm');
                    QVERIFY(text.style.pixelSize >= styleOfPoints(7).pixelSize);
                }
            }
        }
        QVERIFY(numbers >= 2);
        QVERIFY(letters >= 3 * unit.size());
    }

    void anInterceptThatCannotBeComputedHasNoUnit()
    {
        const auto document = documents::good();
        for (std::int32_t field = 1; field <= 3; ++field) {
            for (std::int32_t point = 1; point <= 4; ++point)
                document->setMesswert(pmDirekt, field, point, 90.0 + point); // in every field
        }
        const QStringList texts = composed(*document, results).texts();
        const auto head = texts.indexOf(u"Kalibriergerade zwischen D und M"_qs);
        QVERIFY(head > 0);
        QCOMPARE(texts.at(head + 4), u"(Fehler)"_qs);
        QCOMPARE(texts.at(head + 5),
                 document->StatistikKalibriergeradeAchsenabschnittString(mDirekt, mIndirekt) +
                     u" [%]"_qs);
    }

    void theEquationsSignIsTheShownSlopes_data()
    {
        QTest::addColumn<QString>("intercept");
        QTest::addColumn<QString>("slope");
        QTest::addColumn<QString>("equation");
        QTest::newRow("positive") << u"1,50"_qs << u"0,2500"_qs << u"D = 1,50 + 0,2500 * M"_qs;
        QTest::newRow("negative") << u"1,50"_qs << u"-0,2500"_qs << u"D = 1,50 - 0,2500 * M"_qs;
        QTest::newRow("zero") << u"1,50"_qs << u"0,0000"_qs << u"D = 1,50 + 0,0000 * M"_qs;
        QTest::newRow("negative intercept")
            << u"-1,50"_qs << u"-0,2500"_qs << u"D = -1,50 - 0,2500 * M"_qs;
        QTest::newRow("failed slope") << u"1,50"_qs << u"(Fehler)"_qs << u"(Fehler)"_qs;
        QTest::newRow("failed intercept") << u"(Fehler)"_qs << u"0,2500"_qs << u"(Fehler)"_qs;
    }
    void theEquationsSignIsTheShownSlopes()
    {
        QFETCH(QString, intercept);
        QFETCH(QString, slope);
        QTEST(equationText(u"D"_qs, intercept, slope, u"M"_qs), "equation");
    }

    void aNegativeSlopeIsWrittenWithAMinusAndItsAbsoluteValue()
    {
        const auto document = documents::negativeSlope();
        const QString slope = document->StatistikKalibriergeradeAnstiegString(mDirekt, mIndirekt);
        QVERIFY(slope.startsWith(u'-'));
        const QStringList texts = composed(*document, results).texts();
        QVERIFY(texts.contains(
            u"D = "_qs +
            document->StatistikKalibriergeradeAchsenabschnittString(mDirekt, mIndirekt) +
            u" - "_qs + slope.mid(1) + u" * M"_qs));
        for (const QString &text : texts)
            QVERIFY(!text.contains(u"+ -"_qs) && !text.contains(u"- -"_qs));
    }

    // A failure ends the composition; the pages so far stay, the last one with its number.
    void whatCannotBeEvaluatedEndsTheProtocol_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("last"); // among the texts that are there
        QTest::addColumn<QString>("missing");
        const QString statistics = u"2 Statistische Auswertung"_qs;
        const QString line = u"Kalibriergerade zwischen D und M"_qs;
        QTest::newRow("no values") << 0 << 94 << statistics << u"Mittelwerte"_qs;
        QTest::newRow("one missing value") << 1 << 94 << statistics << u"Mittelwerte"_qs;
        QTest::newRow("all direct values equal") << 2 << 5 << u"Bestimmtheitsmaße"_qs << line;
        QTest::newRow("all indirect values equal") << 3 << 5 << u"Bestimmtheitsmaße"_qs << line;
        QTest::newRow("no covariance with the covariable")
            << 4 << 13 << u"Bestimmtheitsmaße"_qs << line;
        QTest::newRow("equal values of the covariable")
            << 5 << 13 << u"Bestimmtheitsmaße"_qs << line;
    }
    void whatCannotBeEvaluatedEndsTheProtocol()
    {
        QFETCH(int, kind);
        QFETCH(int, number);
        QFETCH(QString, last);
        QFETCH(QString, missing);
        auto document = kind == 0 ? documents::fresh() : documents::good();
        if (kind == 1)
            document->removeMesswert(pmDirekt, 2, 2);
        if (kind == 2 || kind == 3) {
            const PrüfmerkmalEnum equal = kind == 2 ? pmDirekt : pmIndirekt;
            for (std::int32_t field = 1; field <= 3; ++field) {
                for (std::int32_t point = 1; point <= 4; ++point)
                    document->setMesswert(equal, field, point, 7.0);
            }
        }
        if (kind == 4) {
            // Every field has the same indirect values: they do not vary with the covariable.
            for (std::int32_t field = 1; field <= 3; ++field) {
                for (std::int32_t point = 1; point <= 4; ++point)
                    document->setMesswert(pmIndirekt, field, point, 7.0 + point);
            }
        }
        if (kind == 5) {
            for (std::int32_t field = 1; field <= 3; ++field)
                document->setPrüffeldWert(field, 4.0);
        }
        const Composed protocol = composed(*document, results);
        QVERIFY(protocol.error);
        QCOMPARE(protocol.error->number(), number);
        const QStringList texts = protocol.texts();
        QVERIFY(texts.contains(last));
        QVERIFY(!texts.contains(missing));
        QVERIFY(texts.contains(u"- %1 -"_qs.arg(protocol.pages.size())));
    }

    void resultsThatCannotBeComputedSaySoWhereTheyAreShown()
    {
        const auto document = documents::good();
        for (std::int32_t field = 1; field <= 3; ++field) {
            for (std::int32_t point = 1; point <= 4; ++point)
                document->setMesswert(pmDirekt, field, point, 7.0);
        }
        const std::vector<QString> values =
            valuesBelow(composed(*document, results), u"Bestimmtheitsmaße"_qs);
        QCOMPARE(values.at(0), u"(Fehler)"_qs);
        QCOMPARE(values.at(1), u"(Fehler)"_qs);
    }

    void countsThatNobodyCanEvaluateAreRefusedAtOnce_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("number");
        QTest::newRow("fields") << u"Anzahl Prüffelder"_qs << u"2000000000"_qs << 6;
        QTest::newRow("points") << u"Prüffeld Prüfpunktanzahl 1"_qs << u"2000000000"_qs << 6;
        QTest::newRow("no number") << u"Anzahl Prüffelder"_qs << u"viele"_qs << 13;
    }
    void countsThatNobodyCanEvaluateAreRefusedAtOnce()
    {
        QFETCH(QString, key);
        QFETCH(QString, text);
        QFETCH(int, number);
        const auto document = documents::good();
        document->DataStore().set(key, text);
        for (const ProtocolType type : {full, results}) {
            const Composed protocol = composed(*document, type);
            QVERIFY(protocol.error);
            QCOMPARE(protocol.error->number(), number);
            QVERIFY(protocol.texts().contains(u"nach Wendral (Ausgabe 2003)"_qs));
            QVERIFY(protocol.pages.size() <= 2);
        }
    }

    void fieldsWithFewOrNoPointsKeepTheirOwnCells()
    {
        const auto document = documents::good();
        document->DataStore().set(u"Prüffeld Prüfpunktanzahl 1"_qs, u"1"_qs);
        document->DataStore().set(u"Prüffeld Prüfpunktanzahl 2"_qs, u"-3"_qs);
        const Composed protocol = composed(*document, results);
        const QStringList texts = protocol.texts();
        QCOMPARE(texts.filter(QRegularExpression(u"^Prüfpunkt \\d$"_qs)).size(), 5);
        QVERIFY(texts.contains(u"Prüffeld 1"_qs));
        const auto second = texts.indexOf(u"Prüffeld 2"_qs); // its header cell alone
        QVERIFY(second > 0);
        QVERIFY(texts.at(second + 1).startsWith(u"Kovariable Z = "_qs));
        QCOMPARE(texts.at(second + 2), u"Prüffeld 3"_qs);
        QVERIFY(texts.contains(u"Prüffeld 3"_qs));
    }
};

REGISTER_TEST(TstComposition)
#include "tst_composition.moc"
