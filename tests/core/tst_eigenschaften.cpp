// What must hold for the results of every document, whatever its numbers are.

#include "tests/core/ergebnisse.h"
#include "tests/support/testregistry.h"

#include <algorithm>

using namespace coretest;

namespace {

using Random = std::mt19937_64;

// Fields whose two characteristics follow the covariable, with scatter.
std::vector<Field> randomFields(Random &random)
{
    std::uniform_int_distribution<int> fieldCount(2, 8);
    std::uniform_int_distribution<int> pointCount(1, 9);
    std::uniform_real_distribution<double> slope(0.5, 20.0);
    std::uniform_real_distribution<double> level(-100.0, 200.0);
    std::normal_distribution<double> scatter(0.0, 1.0);
    const double b[2] = {slope(random), -slope(random)};
    const double a[2] = {level(random), level(random)};
    std::vector<Field> fields(static_cast<std::size_t>(fieldCount(random)));
    double z = 0.0;
    for (Field &field : fields) {
        z += 1.0 + static_cast<double>(pointCount(random)) / 4.0;
        field.z = z;
        for (int points = pointCount(random); points > 0; --points) {
            field.direct.push_back(a[0] + b[0] * z + scatter(random));
            field.indirect.push_back(a[1] + b[1] * z + scatter(random));
        }
    }
    return fields;
}

struct Gerade
{
    double slope;
    double intercept;
};

Gerade gerade(const std::vector<Field> &fields, MerkmalEnum x, MerkmalEnum y)
{
    Kalibrierung document(german);
    fill(document, fields);
    return {document.StatistikKalibriergeradeAnstieg(x, y),
            document.StatistikKalibriergeradeAchsenabschnitt(x, y)};
}

// Equal slopes, and intercepts that differ by no more than the slope's error at the far end.
void verifySameLine(const Gerade &actual, const Gerade &expected, double extent)
{
    QVERIFY_CLOSE(actual.slope, expected.slope, 1e-11);
    QVERIFY2(std::abs(actual.intercept - expected.intercept) <=
                 1e-11 *
                     (std::abs(expected.slope) * extent + std::abs(expected.intercept) + extent),
             digits(actual.intercept, expected.intercept));
}

constexpr int rounds = 150;
constexpr double extent = 1000.0; // no value of these documents is larger

} // namespace

class TestEigenschaften : public QObject
{
    Q_OBJECT

private slots:
    void orderOfFieldsAndPointsIsIrrelevant();
    void shiftingTheCovariableLeavesTheLine();
    void scalingTheCovariableLeavesTheLine();
    void exchangingTheCharacteristicsGivesTheSameLine();
    void everyLineRunsThroughTheMeans();
    void covariableEqualToTheIndirectGivesLeastSquares();
    void slopeIsTheRatioOfTheSlopesOnTheCovariable();
    void pointsOnALineGiveThatLine();
    void determinationLiesBetweenZeroAndOne();
};

void TestEigenschaften::orderOfFieldsAndPointsIsIrrelevant()
{
    Random random(1);
    for (int i = 0; i < rounds; ++i) {
        std::vector<Field> fields = randomFields(random);
        Kalibrierung document(german);
        fill(document, fields);
        std::shuffle(fields.begin(), fields.end(), random);
        for (Field &field : fields) {
            std::vector<std::size_t> order(field.direct.size());
            for (std::size_t p = 0; p < order.size(); ++p)
                order[p] = p;
            std::shuffle(order.begin(), order.end(), random);
            const Field old = field;
            for (std::size_t p = 0; p < order.size(); ++p) {
                field.direct[p] = old.direct[order[p]];
                field.indirect[p] = old.indirect[order[p]];
            }
        }
        Kalibrierung shuffled(german);
        fill(shuffled, fields);
        const std::vector<Ergebnis> expected = alleErgebnisse(document);
        const std::vector<Ergebnis> actual = alleErgebnisse(shuffled);
        for (std::size_t at = 0; at < actual.size(); ++at) {
            QCOMPARE(actual[at].error, expected[at].error);
            QVERIFY_CLOSE(actual[at].value, expected[at].value, 1e-14);
        }
    }
}

void TestEigenschaften::shiftingTheCovariableLeavesTheLine()
{
    Random random(2);
    for (int i = 0; i < rounds; ++i) {
        std::vector<Field> fields = randomFields(random);
        const Gerade before = gerade(fields, mDirekt, mIndirekt);
        for (Field &field : fields)
            field.z += 37.25;
        verifySameLine(gerade(fields, mDirekt, mIndirekt), before, extent);
    }
}

void TestEigenschaften::scalingTheCovariableLeavesTheLine()
{
    Random random(3);
    for (int i = 0; i < rounds; ++i) {
        std::vector<Field> fields = randomFields(random);
        const Gerade before = gerade(fields, mIndirekt, mDirekt);
        const double factor = i % 2 ? -0.37 : 1e5;
        for (Field &field : fields)
            field.z *= factor;
        verifySameLine(gerade(fields, mIndirekt, mDirekt), before, extent);
    }
}

void TestEigenschaften::exchangingTheCharacteristicsGivesTheSameLine()
{
    Random random(4);
    for (int i = 0; i < rounds; ++i) {
        std::vector<Field> fields = randomFields(random);
        const Gerade line = gerade(fields, mDirekt, mIndirekt);
        const Gerade inverse{1.0 / line.slope, -line.intercept / line.slope};
        verifySameLine(gerade(fields, mIndirekt, mDirekt), inverse, extent);
        for (Field &field : fields)
            std::swap(field.direct, field.indirect);
        verifySameLine(gerade(fields, mDirekt, mIndirekt), inverse, extent);
        verifySameLine(gerade(fields, mIndirekt, mDirekt), line, extent);
    }
}

void TestEigenschaften::everyLineRunsThroughTheMeans()
{
    Random random(5);
    for (int i = 0; i < rounds; ++i) {
        Kalibrierung document(german);
        fill(document, randomFields(random));
        for (const auto &[x, y] :
             {std::pair(mDirekt, mIndirekt), std::pair(mIndirekt, mDirekt), std::pair(mDirekt, mZ),
              std::pair(mZ, mDirekt), std::pair(mIndirekt, mZ), std::pair(mZ, mIndirekt)}) {
            const double product =
                document.StatistikKalibriergeradeAnstieg(x, y) * document.StatistikMittelwert(y);
            const double there = product + document.StatistikKalibriergeradeAchsenabschnitt(x, y);
            const double mean = document.StatistikMittelwert(x);
            QVERIFY2(std::abs(there - mean) <= 1e-14 * (std::abs(product) + std::abs(mean)),
                     digits(there, mean));
        }
    }
}

void TestEigenschaften::covariableEqualToTheIndirectGivesLeastSquares()
{
    Random random(6);
    for (int i = 0; i < rounds; ++i) {
        std::vector<Field> fields = randomFields(random);
        // Normal equations in the wider type.
        long double n = 0, sx = 0, sy = 0, sxx = 0, sxy = 0;
        for (Field &field : fields) {
            field.indirect.assign(field.direct.size(), field.z);
            for (const double value : field.direct) {
                const long double z = field.z;
                n += 1;
                sx += z;
                sy += static_cast<long double>(value);
                sxx += z * z;
                sxy += z * static_cast<long double>(value);
            }
        }
        const long double slope = (n * sxy - sx * sy) / (n * sxx - sx * sx);
        const Gerade expected{static_cast<double>(slope),
                              static_cast<double>((sy - slope * sx) / n)};
        verifySameLine(gerade(fields, mDirekt, mIndirekt), expected, extent);
        verifySameLine(gerade(fields, mDirekt, mZ), expected, extent);
    }
}

void TestEigenschaften::slopeIsTheRatioOfTheSlopesOnTheCovariable()
{
    Random random(7);
    for (int i = 0; i < rounds; ++i) {
        Kalibrierung document(german);
        fill(document, randomFields(random));
        QVERIFY_CLOSE(document.StatistikKalibriergeradeAnstieg(mDirekt, mIndirekt),
                      document.StatistikKalibriergeradeAnstieg(mDirekt, mZ) /
                          document.StatistikKalibriergeradeAnstieg(mIndirekt, mZ),
                      1e-15);
        QVERIFY_CLOSE(document.StatistikKalibriergeradeAnstieg(mDirekt, mZ),
                      document.StatistikKovarianz(mDirekt, mZ) / document.StatistikVarianz(mZ),
                      1e-15);
        QVERIFY_CLOSE(document.StatistikKalibriergeradeAnstieg(mZ, mDirekt),
                      document.StatistikVarianz(mZ) / document.StatistikKovarianz(mDirekt, mZ),
                      1e-15);
    }
}

void TestEigenschaften::pointsOnALineGiveThatLine()
{
    Random random(8);
    std::uniform_int_distribution<int> any(-50, 50);
    for (int i = 0; i < rounds; ++i) {
        std::vector<Field> fields = randomFields(random);
        const double b = any(random) + 0.25;
        const double a = any(random);
        for (Field &field : fields) {
            for (std::size_t p = 0; p < field.direct.size(); ++p)
                field.direct[p] = a + b * field.indirect[p];
        }
        verifySameLine(gerade(fields, mDirekt, mIndirekt), {b, a}, 10 * extent);
        Kalibrierung document(german);
        fill(document, fields);
        QVERIFY_CLOSE(document.StatistikBestimmtheitsmaß(mDirekt, mIndirekt), 1.0, 1e-12);
    }
}

void TestEigenschaften::determinationLiesBetweenZeroAndOne()
{
    Random random(9);
    for (int i = 0; i < rounds; ++i) {
        Kalibrierung document(german);
        fill(document, randomFields(random));
        for (const auto &[x, y] : {std::pair(mDirekt, mIndirekt), std::pair(mIndirekt, mZ)}) {
            const double determination = document.StatistikBestimmtheitsmaß(x, y);
            QVERIFY(determination >= 0.0 && determination <= 1.0 + 1e-14);
        }
    }
}

REGISTER_TEST(TestEigenschaften)
#include "tst_eigenschaften.moc"
