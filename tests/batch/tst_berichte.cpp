#include "batch/ergebnisse.h"
#include "batch/jsonbericht.h"
#include "batch/textbericht.h"
#include "core/kalibrierung.h"
#include "tests/support/testregistry.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>

namespace {

const QLocale german(QLocale::German, QLocale::Germany);

QString exampleFile(const QString &name)
{
    return QStringLiteral(PROJECT_DIR) + u"/examples/"_qs + name;
}

QJsonObject parsed(const QByteArray &line)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(line, &error);
    if (error.error != QJsonParseError::NoError)
        qWarning() << error.errorString() << line;
    return document.object();
}

// Every key in the order in which it stands in the text, values left out.
QStringList keysInOrder(const QByteArray &json)
{
    QStringList keys;
    static const QRegularExpression key(u"\"([^\"]*)\":"_qs);
    auto match = key.globalMatch(QString::fromUtf8(json));
    while (match.hasNext())
        keys += match.next().captured(1);
    return keys;
}

} // namespace

class TestBerichte : public QObject
{
    Q_OBJECT

private slots:
    void textReportEqualsTheGoldenFile_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("good") << u"verdichtungsgrad"_qs;
        QTest::newRow("critical, rounded") << u"verformungsmodul"_qs;
    }

    void textReportEqualsTheGoldenFile()
    {
        QFETCH(QString, name);
        Kalibrierung document(german);
        document.LoadFile(exampleFile(name + u".xml"_qs));
        QFile golden(QStringLiteral(TEST_DATA_DIR) + u"/batch/"_qs + name + u".txt"_qs);
        QVERIFY(golden.open(QIODevice::ReadOnly));
        QCOMPARE(textBericht(name + u".xml"_qs, document), QString::fromUtf8(golden.readAll()));
    }

    void textReportOfAnEmptyDocumentShowsDashes()
    {
        Kalibrierung document(german);
        const QString text = textBericht(u"leer.xml"_qs, document);
        QVERIFY(text.contains(u"Prüffelder: 3, Prüfpunkte: 12"_qs));
        QVERIFY(text.contains(QRegularExpression(u"\n    direktes Prüfmerkmal +-\n"_qs)));
        QVERIFY(text.contains(u"Urteil: kritisch"_qs));
    }

    void textReportSurvivesCountsThatAreNone()
    {
        Kalibrierung document(german);
        document.DataStore().set(u"Anzahl Prüffelder"_qs, u"viele"_qs);
        QVERIFY(textBericht(u"x"_qs, document)
                    .contains(u"Prüffelder und Prüfpunkte: Typen unverträglich (13)"_qs));
        document.DataStore().set(u"Anzahl Prüffelder"_qs, u"1e9"_qs);
        QVERIFY(
            textBericht(u"x"_qs, document).contains(u"Prüffelder und Prüfpunkte: Überlauf (6)"_qs));
        document.DataStore().set(u"Anzahl Prüffelder"_qs, u"3"_qs);
        document.DataStore().set(
            u"minimales Bestimmtheitsmaß Indirektes Prüfmerkmal, Direktes Prüfmerkmal"_qs, u"?"_qs);
        QVERIFY(
            textBericht(u"x"_qs, document)
                .contains(
                    u"Das minimale Bestimmtheitsmaß ist nicht lesbar: Typen unverträglich (13)"_qs));
    }

    void countsThatOutweighEachOtherDoNotHangTheReport()
    {
        Kalibrierung document(german);
        document.DataStore().set(u"Prüffeld Prüfpunktanzahl 1"_qs, u"2000000000"_qs);
        document.DataStore().set(u"Prüffeld Prüfpunktanzahl 2"_qs, u"-2000000000"_qs);
        QCOMPARE(document.PrüfpunkteTotal(), 4);
        QVERIFY(
            textBericht(u"x"_qs, document).contains(u"Prüffelder und Prüfpunkte: Überlauf (6)"_qs));
    }

    void aVeryLongNameIsCutInTheTable()
    {
        Kalibrierung document(german);
        document.setPrüffeldName(1, QString(100000, u'x'));
        const QString text = textBericht(u"x"_qs, document);
        QVERIFY(text.contains(QString(80, u'x') + u"…"_qs));
        document.IndirektesPrüfmerkmal().setName(QString(79, u'y') + u"\U0001F600"_qs);
        QVERIFY(textBericht(u"a.xml"_qs, document).contains(QString(79, u'y') + u"…"_qs));
        QVERIFY(text.size() < 10000);
    }

    void lineBreaksInNamesDoNotBreakTheTable()
    {
        Kalibrierung document(german);
        document.setPrüffeldName(1, u"oben\nlinks"_qs);
        QVERIFY(textBericht(u"x"_qs, document).contains(u"oben links"_qs));
    }

    void jsonHasItsKeysInTheirOrder()
    {
        Kalibrierung document(german);
        document.LoadFile(exampleFile(u"verdichtungsgrad.xml"_qs));
        const QByteArray json = jsonBericht(u"a.xml"_qs, document);
        QCOMPARE(json.count('\n'), 1);
        const QStringList merkmal{u"name"_qs, u"formelzeichen"_qs, u"einheit"_qs,
                                  u"nachkommastellen"_qs};
        const QStringList three{u"direkt"_qs, u"indirekt"_qs, u"kovariable"_qs};
        const QStringList pairs{u"direkt_indirekt"_qs, u"direkt_kovariable"_qs,
                                u"indirekt_kovariable"_qs};
        const QStringList lines{u"direkt_indirekt"_qs,     u"indirekt_direkt"_qs,
                                u"direkt_kovariable"_qs,   u"kovariable_direkt"_qs,
                                u"indirekt_kovariable"_qs, u"kovariable_indirekt"_qs};
        const QStringList groups =
            QStringList{u"mittelwert"_qs} + three + QStringList{u"varianz"_qs} + three +
            QStringList{u"standardabweichung"_qs} + three + QStringList{u"kovarianz"_qs} + pairs +
            QStringList{u"bestimmtheitsmass"_qs} + pairs + QStringList{u"anstieg"_qs} + lines +
            QStringList{u"achsenabschnitt"_qs} + lines;
        QStringList expected{u"datei"_qs, u"prueffelder"_qs, u"pruefpunkte"_qs, u"merkmale"_qs};
        for (const QString &one : three)
            expected += QStringList{one} + merkmal;
        expected += groups;
        expected += {u"minimum"_qs, u"ok"_qs, u"urteil"_qs, u"anzeige"_qs};
        expected += groups;
        expected += u"fehler"_qs;
        QCOMPARE(keysInOrder(json), expected);
    }

    void jsonNumbersGiveTheSameDoublesBack()
    {
        Kalibrierung document(german);
        document.LoadFile(exampleFile(u"verdichtungsgrad.xml"_qs));
        const QJsonObject json = parsed(jsonBericht(u"a.xml"_qs, document));
        int compared = 0;
        for (const Ergebnisgruppe &group : ergebnisse(document)) {
            for (const Ergebnis &result : group.ergebnisse) {
                QVERIFY(result.wert.has_value());
                const QJsonValue value = json[group.schluessel][result.schluessel];
                QVERIFY(value.isDouble());
                QVERIFY(value.toDouble() == *result.wert);
                QCOMPARE(json[u"anzeige"_qs][group.schluessel][result.schluessel].toString(),
                         result.anzeige);
                ++compared;
            }
        }
        QCOMPARE(compared, 27);
        QCOMPARE(json[u"ok"_qs].toBool(), true);
        QCOMPARE(json[u"urteil"_qs].toString(), u"gut"_qs);
        QVERIFY(json[u"fehler"_qs].toObject().isEmpty());
        QVERIFY(jsonBericht(u"a.xml"_qs, document).contains("\"minimum\":0.65000000000000002,"));
    }

    void resultsThatCannotBeComputedAreNullAndNamed()
    {
        Kalibrierung document(german);
        document.LoadFile(exampleFile(u"verdichtungsgrad.xml"_qs));
        document.removeMesswert(pmDirekt, 2, 3);
        const QJsonObject json = parsed(jsonBericht(u"a.xml"_qs, document));
        QVERIFY(json[u"varianz"_qs][u"direkt"_qs].isNull());
        QVERIFY(json[u"varianz"_qs][u"indirekt"_qs].isDouble());
        QCOMPARE(json[u"fehler"_qs][u"varianz.direkt"_qs][u"nummer"_qs].toInt(), 94);
        QCOMPARE(json[u"fehler"_qs][u"varianz.direkt"_qs][u"text"_qs].toString(),
                 u"Unzulässige Verwendung von Null"_qs);
        QCOMPARE(json[u"anzeige"_qs][u"varianz"_qs][u"direkt"_qs].toString(), u"-"_qs);
        QCOMPARE(json[u"anzeige"_qs][u"anstieg"_qs][u"direkt_indirekt"_qs].toString(), u"-"_qs);
        QCOMPARE(json[u"urteil"_qs].toString(), u"kritisch"_qs);
        QCOMPARE(json[u"ok"_qs].toBool(), false);
    }

    void countsAndPlacesThatAreNoneAreNullAndNamed()
    {
        Kalibrierung document(german);
        document.DataStore().set(u"Anzahl Prüffelder"_qs, u"99999999999"_qs);
        document.DataStore().set(u"Kovariable Nachkommastellen"_qs, u"zwei"_qs);
        const QJsonObject json = parsed(jsonBericht(u"a.xml"_qs, document));
        QVERIFY(json[u"prueffelder"_qs].isNull());
        QCOMPARE(json[u"fehler"_qs][u"prueffelder"_qs][u"nummer"_qs].toInt(), 6);
        QCOMPARE(json[u"fehler"_qs][u"mittelwert.direkt"_qs][u"nummer"_qs].toInt(), 6);
        QCOMPARE(
            json[u"fehler"_qs][u"merkmale.kovariable.nachkommastellen"_qs][u"nummer"_qs].toInt(),
            13);
    }

    void jsonEscapesWhatNamesMayHold()
    {
        Kalibrierung document(german);
        const QString name = u"\"Walze\" \\ \u0001\u0010\u001f\t\n ²°€ \U0001F600"_qs;
        document.DirektesPrüfmerkmal().setName(name);
        const QJsonObject json = parsed(jsonBericht(u"a\"b.xml"_qs, document));
        QCOMPARE(json[u"datei"_qs].toString(), u"a\"b.xml"_qs);
        QCOMPARE(json[u"merkmale"_qs][u"direkt"_qs][u"name"_qs].toString(), name);
    }

    void errorObjectHoldsOnlyFileAndReason()
    {
        const QByteArray json = jsonFehler(u"weg.xml"_qs, RunTimeError(ErrorNumber::FileNotFound));
        QCOMPARE(json, QByteArray("{\"datei\":\"weg.xml\",\"fehler\":{\"datei\":{\"nummer\":53,"
                                  "\"text\":\"Datei nicht gefunden\"}}}\n"));
    }

    void englishNumbersOnAnEnglishSystem()
    {
        Kalibrierung document(QLocale(QLocale::English, QLocale::UnitedStates));
        document.setMinBestimmtheitsmaßIndirektDirekt(0.655);
        QVERIFY(textBericht(u"x"_qs, document).contains(u"Wert von 0.655."_qs));
    }
};

REGISTER_TEST(TestBerichte)
#include "tst_berichte.moc"
