// Spreadsheet programs add in plain doubles, one after the other. The formulas must come to the
// values of the program even so.

#include "export/tabellenausgabe.h"
#include "tests/export/beispiele.h"
#include "tests/export/ergebniszellen.h"
#include "tests/export/mappenleser.h"
#include "tests/support/testregistry.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <random>

namespace {

constexpr int fields = 3;
constexpr int pointsOfField = 4;

struct Datensatz
{
    std::vector<std::vector<double>> direct;
    std::vector<std::vector<double>> indirect;
};

void setze(Kalibrierung &document, const Datensatz &data)
{
    setzeWerte(document, data.direct, data.indirect);
}

// What the sheet of measured values holds, and what must come out.
QJsonObject eintrag(Kalibrierung &document, const Datensatz &data)
{
    QJsonObject cells;
    int row = 1;
    for (std::size_t field = 0; field < data.direct.size(); ++field) {
        for (std::size_t point = 0; point < data.direct[field].size(); ++point) {
            ++row;
            cells[u"Messwerte!E%1"_qs.arg(row)] = data.direct[field][point];
            cells[u"Messwerte!F%1"_qs.arg(row)] = data.indirect[field][point];
        }
    }
    QJsonObject results;
    for (const auto &[sheet, values] : ergebniszellen(document)) {
        for (const Ergebniswert &value : values) {
            const std::optional<double> expected = wertOderNichts(value.wert);
            results[sheet + u'!' + value.zelle] = expected ? QJsonValue(*expected) : QJsonValue();
        }
    }
    results[u"Auswertung!C23"_qs] =
        document.StatistikBestimmtheitsmaßIndirektDirektOk() ? u"gut"_qs : u"kritisch"_qs;
    return {{u"zellen"_qs, cells}, {u"ergebnisse"_qs, results}};
}

QJsonObject rechne(const QString &book, const QJsonArray &entries)
{
    QFile file(book + u".json"_qs);
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write(QJsonDocument(entries).toJson(QJsonDocument::Compact));
    file.close();
    bool good = false;
    const QByteArray output =
        starteProgramm(u"/usr/bin/python3"_qs,
                       {QStringLiteral(SCRIPTS "/rechne_mappe.py"), book, file.fileName()}, &good);
    return good ? QJsonDocument::fromJson(output).object() : QJsonObject();
}

// Values around a centre with some decimals, times a power of ten.
Datensatz zufaellig(std::mt19937 &random, double centre, double scale, int decimals)
{
    std::normal_distribution<double> direct(centre, 4);
    std::normal_distribution<double> indirect(centre / 2, 6);
    const double unit = std::pow(10.0, decimals);
    const auto value = [&](std::normal_distribution<double> &distribution) {
        return std::round(distribution(random) * unit) / unit * scale;
    };
    Datensatz data{{fields, std::vector<double>(pointsOfField)},
                   {fields, std::vector<double>(pointsOfField)}};
    for (std::size_t field = 0; field < fields; ++field) {
        for (std::size_t point = 0; point < pointsOfField; ++point) {
            data.direct[field][point] = value(direct);
            data.indirect[field][point] = value(indirect);
        }
    }
    return data;
}

void setzeStellen(Kalibrierung &document, int more)
{
    document.setNachkommastellenMittelwerte(1 + more);
    document.setNachkommastellenVarianzen(2 + 2 * more);
    document.setNachkommastellenKovarianzen(2 + 2 * more);
    document.setNachkommastellenAchsenabschnitt(2 + more);
}

} // namespace

class TestSchlichteSummen : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!GeleseneMappe::moeglich())
            QSKIP("python3-openpyxl is not installed");
    }

    void plainSumsGiveTheValuesOfTheProgram_data()
    {
        QTest::addColumn<double>("centre");
        QTest::addColumn<double>("scale");
        QTest::addColumn<int>("decimals");
        QTest::addColumn<int>("places");
        QTest::addColumn<bool>("rounds");
        QTest::newRow("as typed, rounded") << 96.0 << 1.0 << 2 << 0 << true;
        QTest::newRow("as typed") << 96.0 << 1.0 << 2 << 0 << false;
        QTest::newRow("without decimals, rounded") << 96.0 << 1.0 << 0 << 0 << true;
        QTest::newRow("all digits") << 96.0 << 1.0 << 14 << 0 << false;
        QTest::newRow("large, rounded") << 96.0 << 1e5 << 2 << -3 << true;
        QTest::newRow("tiny, rounded") << 96.0 << 1e-6 << 2 << 6 << true;
        QTest::newRow("around zero, rounded") << 0.0 << 1.0 << 2 << 0 << true;
        QTest::newRow("around zero") << 0.0 << 1.0 << 14 << 0 << false;
        QTest::newRow("very tiny") << 96.0 << 1e-200 << 2 << 0 << false;
    }

    void plainSumsGiveTheValuesOfTheProgram()
    {
        QFETCH(double, centre);
        QFETCH(double, scale);
        QFETCH(int, decimals);
        QFETCH(int, places);
        QFETCH(bool, rounds);
        std::mt19937 random(2003);
        Kalibrierung document(QLocale(QLocale::German));
        document.setZwischenergebnisseRunden(rounds);
        setzeStellen(document, places);
        setze(document, zufaellig(random, centre, scale, decimals));
        QTemporaryDir folder;
        const QString book = folder.filePath(u"a.xlsx"_qs);
        QVERIFY(schreibeTabelle(document, book, QDateTime::fromSecsSinceEpoch(0)));
        QJsonArray entries;
        constexpr int sets = 400;
        for (int i = 0; i < sets; ++i) {
            const Datensatz data = zufaellig(random, centre, scale, decimals);
            setze(document, data);
            entries += eintrag(document, data);
        }
        const QJsonObject result = rechne(book, entries);
        QCOMPARE(result[u"verglichen"_qs].toInt(), sets * 34);
        const QJsonArray wrong = result[u"falsch"_qs].toArray();
        QVERIFY2(wrong.isEmpty(),
                 QByteArray::number(wrong.size()) + ' ' +
                     QJsonDocument(wrong).toJson(QJsonDocument::Compact).left(2000));
    }

    void everyExampleIsComputedAsStored_data()
    {
        QTest::addColumn<QByteArray>("example");
        for (const Beispiel &example : beispiele())
            QTest::newRow(example.name) << QByteArray(example.name);
    }

    void everyExampleIsComputedAsStored()
    {
        QFETCH(QByteArray, example);
        const auto document = dokument(example.constData());
        QTemporaryDir folder;
        const QString book = folder.filePath(u"a.xlsx"_qs);
        QVERIFY(schreibeTabelle(*document, book, QDateTime::fromSecsSinceEpoch(0)));
        const QJsonObject result = rechne(book, {eintrag(*document, {})});
        QCOMPARE(result[u"verglichen"_qs].toInt(), 34);
        const QJsonArray wrong = result[u"falsch"_qs].toArray();
        QVERIFY2(wrong.isEmpty(), QJsonDocument(wrong).toJson(QJsonDocument::Compact));
    }

    // A point whose row has been emptied, its number included, is no point any more.
    void anEmptiedRowIsNoPoint()
    {
        const auto document = dokument("ordinary");
        QTemporaryDir folder;
        const QString book = folder.filePath(u"a.xlsx"_qs);
        QVERIFY(schreibeTabelle(*document, book, QDateTime::fromSecsSinceEpoch(0)));
        document->setPrüffeldPrüfpunkte(2, 3); // of 4, the last of which stands in row 8
        QJsonObject entry = eintrag(*document, {});
        QJsonObject cells;
        for (const char *column : {"A", "D", "E", "F"})
            cells[u"Messwerte!"_qs + QLatin1String(column) + u'8'] = QJsonValue();
        entry[u"zellen"_qs] = cells;
        const QJsonArray wrong = rechne(book, {entry})[u"falsch"_qs].toArray();
        QVERIFY2(wrong.isEmpty(), QJsonDocument(wrong).toJson(QJsonDocument::Compact));
    }
};

REGISTER_TEST(TestSchlichteSummen)
#include "tst_schlichtesummen.moc"
