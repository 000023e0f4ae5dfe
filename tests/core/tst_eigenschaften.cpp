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
    void badlyScaledColumnsLoseNothing();
    void longColumnsLoseNothing();
    void extremeValuesAreFiniteOrANumberedError_data();
    void extremeValuesAreFiniteOrANumberedError();
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

void TestEigenschaften::badlyScaledColumnsLoseNothing()
{
    Kalibrierung document(german);
    fill(document,
         {{1, {1e16, 1, -1e16}, {3, 1e16, 1e16}}, {2, {1e16, 1, -1e16}, {-1e16, 3, -1e16}}});
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mDirekt), 2.0 / 6);
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mIndirekt), 1.0);
    // A small scatter on a large offset.
    fill(document, {{1, {1e12 + 1, 1e12 + 2, 1e12 + 3}, {1, 2, 3}},
                    {2, {1e12 + 4, 1e12 + 5, 1e12 + 6}, {2, 4, 5}}});
    QVERIFY_SAME_BITS(document.StatistikVarianz(mDirekt), 3.5);
    QVERIFY_SAME_BITS(document.StatistikKovarianz(mDirekt, mZ), 0.9);
}

void TestEigenschaften::longColumnsLoseNothing()
{
    constexpr std::size_t points = 20'000;
    Kalibrierung document(german);
    std::vector<Field> fields(3);
    double z = 0.0;
    for (Field &field : fields) {
        field.z = ++z;
        field.direct.assign(points, 0.1 * z);
        field.indirect.assign(points, 1e10 + z);
    }
    fill(document, fields);
    QVERIFY_SAME_BITS(document.StatistikMittelwert(mIndirekt), 1e10 + 2);
    QVERIFY_CLOSE(document.StatistikMittelwert(mDirekt), 0.2, 2e-16);
    const double n = 3.0 * points;
    QVERIFY_CLOSE(document.StatistikVarianz(mIndirekt), 2.0 * points / (n - 1), 1e-15);
    QVERIFY_CLOSE(document.StatistikKalibriergeradeAnstieg(mDirekt, mIndirekt), 0.1, 1e-14);
}

void TestEigenschaften::extremeValuesAreFiniteOrANumberedError_data()
{
    QTest::addColumn<bool>("rounding");
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 6; ++seed) {
        QTest::addRow("unrounded %u", seed) << false << seed;
        QTest::addRow("rounded %u", seed) << true << seed;
    }
}

void TestEigenschaften::extremeValuesAreFiniteOrANumberedError()
{
    QFETCH(const bool, rounding);
    QFETCH(const unsigned, seed);
    constexpr double largest = std::numeric_limits<double>::max();
    constexpr double smallest = std::numeric_limits<double>::denorm_min();
    const std::vector<double> pool{0.0,      1.0,      -1.0,      1e308,  -1e308,  largest,
                                   -largest, smallest, -smallest, 1e-200, -1e-200, 1e-308,
                                   1e155,    -1e155,   1e16,      0.1};
    Random random(seed);
    std::uniform_int_distribution<std::size_t> any(0, pool.size() - 1);
    std::uniform_int_distribution<int> places(-400, 400);
    for (int i = 0; i < 150; ++i) {
        // A few values of the pool in each document, so that some results exist.
        const double few[3] = {pool[any(random)], pool[any(random)], pool[any(random)]};
        const auto value = [&] { return few[any(random) % 3]; };
        std::vector<Field> fields(3);
        for (Field &field : fields) {
            field.z = value();
            for (int p = 0; p < 4; ++p) {
                field.direct.push_back(value());
                field.indirect.push_back(value());
            }
        }
        Kalibrierung document(german);
        fill(document, fields);
        document.setZwischenergebnisseRunden(rounding);
        if (i % 2) {
            document.setNachkommastellenMittelwerte(places(random));
            document.setNachkommastellenVarianzen(places(random));
            document.setNachkommastellenAnstieg(places(random));
        }
        for (const Ergebnis &result : alleErgebnisse(document)) {
            QVERIFY(std::isfinite(result.value));
            QVERIFY(result.error == 0 || result.error == 5 || result.error == 6 ||
                    result.error == 11);
            QVERIFY(!(result.value == 0.0 && std::signbit(result.value)));
        }
        for (const MerkmalEnum x : {mDirekt, mIndirekt, mZ}) {
            const QString text = document.StatistikKalibriergeradeAnstiegString(x, mZ);
            QVERIFY(text == u"(Fehler)" || document.values().isNumeric(text));
        }
        document.StatistikBestimmtheitsmaßIndirektDirektOk();
    }
}

REGISTER_TEST(TestEigenschaften)
#include "tst_eigenschaften.moc"
