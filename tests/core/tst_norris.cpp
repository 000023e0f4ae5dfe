// The reference data set "Norris" of the NIST through a whole file.

#include "tests/core/support.h"
#include "tests/support/testregistry.h"

#include <QFile>
#include <QTemporaryDir>

using namespace coretest;

namespace {

struct Norris
{
    std::vector<double> y;
    std::vector<double> x;
};

Norris norris()
{
    Norris result;
    QFile file(QStringLiteral(TEST_DATA_DIR "/norris.csv"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no reference data");
    const Values values(english);
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QList<QByteArray> parts = line.split(',');
        if (line.startsWith('#') || line == "y,x" || parts.size() != 2)
            continue;
        result.y.push_back(values.number(QString::fromLatin1(parts[0])));
        result.x.push_back(values.number(QString::fromLatin1(parts[1])));
    }
    return result;
}

// Decimal digits that agree, as the source of the data counts them.
double agreeingDigits(double actual, double certified)
{
    if (actual == certified)
        return 15.0;
    return -std::log10(std::abs(actual - certified) / std::abs(certified));
}

constexpr double slope = 1.00211681802045;
constexpr double intercept = -0.262323073774029;
constexpr double determination = 0.999993745883712;
constexpr double residualDeviation = 0.884796396144373;

} // namespace

class TestNorris : public QObject
{
    Q_OBJECT

private slots:
    void throughAFile_data();
    void throughAFile();
    void withTheRegressorAsIndirectCharacteristic();
};

void TestNorris::throughAFile_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::newRow("German") << german;
    QTest::newRow("English") << english;
    QTest::newRow("Swedish") << QLocale(QStringLiteral("sv_SE"));
}

// One field per observation, its covariable the regressor.
void TestNorris::throughAFile()
{
    QFETCH(const QLocale, locale);
    const Norris data = norris();
    QCOMPARE(data.y.size(), std::size_t{36});
    std::vector<Field> fields;
    for (std::size_t i = 0; i < data.y.size(); ++i)
        fields.push_back({data.x[i], {data.y[i]}, {data.x[i]}});
    QTemporaryDir folder;
    const QString path = folder.filePath(u"norris.xml"_qs);
    Kalibrierung written(locale);
    fill(written, fields);
    written.SaveFile(path);

    Kalibrierung document(locale);
    document.LoadFile(path);
    QCOMPARE(document.PrüfpunkteTotal(), 36);
    QVERIFY(agreeingDigits(document.StatistikKalibriergeradeAnstieg(mDirekt, mZ), slope) >= 13);
    QVERIFY(agreeingDigits(document.StatistikKalibriergeradeAchsenabschnitt(mDirekt, mZ),
                           intercept) >= 13);
    QVERIFY(agreeingDigits(document.StatistikBestimmtheitsmaß(mDirekt, mZ), determination) >= 13);
    // With the indirect characteristic equal to the covariable the calibration line is the same.
    QVERIFY(agreeingDigits(document.StatistikKalibriergeradeAnstieg(mDirekt, mIndirekt), slope) >=
            13);
    QVERIFY(agreeingDigits(document.StatistikKalibriergeradeAchsenabschnitt(mDirekt, mIndirekt),
                           intercept) >= 13);
}

// The residual standard deviation follows from variance and determination.
void TestNorris::withTheRegressorAsIndirectCharacteristic()
{
    const Norris data = norris();
    std::vector<Field> fields;
    for (std::size_t i = 0; i < data.y.size(); ++i)
        fields.push_back({data.x[i], {data.y[i]}, {data.x[i]}});
    Kalibrierung document(german);
    fill(document, fields);
    const double residual = document.StatistikVarianz(mDirekt) *
                            (1.0 - document.StatistikBestimmtheitsmaß(mDirekt, mIndirekt)) * 35 /
                            34;
    QVERIFY(agreeingDigits(std::sqrt(residual), residualDeviation) >= 9); // 1 - R2 cancels five
    QVERIFY(document.StatistikBestimmtheitsmaßIndirektDirektOk());
}

REGISTER_TEST(TestNorris)
#include "tst_norris.moc"
