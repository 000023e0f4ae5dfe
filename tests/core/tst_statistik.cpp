// The sums that every result stands on.

#include "tests/core/exaktesumme.h"
#include "tests/core/support.h"
#include "tests/support/testregistry.h"

#include "core/statistik.h"

#include <algorithm>

using namespace coretest;

namespace {

// What the compensation promises: the last bit of the result, and the square of it of the terms.
bool asGoodAsPromised(double actual, const std::vector<double> &terms)
{
    constexpr double epsilon = std::numeric_limits<double>::epsilon();
    const double expected = exactSum(terms);
    std::vector<double> sizes;
    for (const double term : terms)
        sizes.push_back(std::fabs(term));
    const double count = static_cast<double>(terms.size());
    return std::fabs(actual - expected) <=
           epsilon * std::fabs(expected) + count * count * epsilon * epsilon * exactSum(sizes);
}

} // namespace

class TestStatistik : public QObject
{
    Q_OBJECT

private slots:
    void emptySamplesSumToZero();
    void cancellingTermsLoseNothing_data();
    void cancellingTermsLoseNothing();
    void randomColumnsOfEveryLength();
    void aMillionTimesOneTenth();
    void squaresAndProductsAreSumsOfTheirTerms();
    void sumsBeyondADoubleAreNotFinite();
};

void TestStatistik::emptySamplesSumToZero()
{
    QVERIFY_SAME_BITS(statistik::sum({}), 0.0);
    QVERIFY_SAME_BITS(statistik::sumOfSquares({}, 1.0), 0.0);
    QVERIFY_SAME_BITS(statistik::sumOfProducts({}, 1.0, {}, 2.0), 0.0);
}

void TestStatistik::cancellingTermsLoseNothing_data()
{
    QTest::addColumn<int>("copies");
    // Below, at and above the number of partial sums.
    for (const int copies : {1, 5, 6, 16, 100, 3333})
        QTest::addRow("%d times", copies) << copies;
}

void TestStatistik::cancellingTermsLoseNothing()
{
    QFETCH(const int, copies);
    std::vector<double> column;
    for (int i = 0; i < copies; ++i)
        column.insert(column.end(), {1e16, 1.0, -1e16});
    QVERIFY_SAME_BITS(statistik::sum(column), static_cast<double>(copies));
    std::sort(column.begin(), column.end());
    QVERIFY_SAME_BITS(statistik::sum(column), static_cast<double>(copies));
    std::mt19937 random(2);
    std::shuffle(column.begin(), column.end(), random);
    QVERIFY_SAME_BITS(statistik::sum(column), static_cast<double>(copies));
    column.push_back(1e-16);
    QVERIFY(asGoodAsPromised(statistik::sum(column), column));
}

void TestStatistik::randomColumnsOfEveryLength()
{
    std::mt19937_64 random(99);
    std::uniform_real_distribution<double> mantissa(-1.0, 1.0);
    std::uniform_int_distribution<int> power(-20, 20);
    for (int length = 0; length < 200; ++length) {
        for (int kind = 0; kind < 10; ++kind) {
            std::vector<double> column;
            for (int i = 0; i < length; ++i)
                column.push_back(mantissa(random) *
                                 (kind % 2 ? std::pow(10.0, power(random)) : 1.0));
            if (kind % 3 == 0 && length > 1)
                column.back() = -exactSum({column.begin(), column.end() - 1});
            QVERIFY(asGoodAsPromised(statistik::sum(column), column));
        }
    }
}

void TestStatistik::aMillionTimesOneTenth()
{
    const std::vector<double> column(1'000'000, 0.1);
    QVERIFY_SAME_BITS(statistik::sum(column), 100000.0);
    QVERIFY_SAME_BITS(statistik::sumOfSquares(column, 0.1), 0.0);
}

void TestStatistik::squaresAndProductsAreSumsOfTheirTerms()
{
    std::mt19937_64 random(5);
    std::uniform_real_distribution<double> any(-100.0, 100.0);
    for (int length = 0; length < 120; ++length) {
        std::vector<double> x;
        std::vector<double> y;
        std::vector<double> squares;
        std::vector<double> products;
        const double meanX = any(random);
        const double meanY = any(random);
        for (int i = 0; i < length; ++i) {
            x.push_back(any(random));
            y.push_back(any(random));
            squares.push_back((x.back() - meanX) * (x.back() - meanX));
            products.push_back((x.back() - meanX) * (y.back() - meanY));
        }
        QVERIFY(asGoodAsPromised(statistik::sumOfSquares(x, meanX), squares));
        QVERIFY(asGoodAsPromised(statistik::sumOfProducts(x, meanX, y, meanY), products));
        QVERIFY_SAME_BITS(statistik::sumOfProducts(x, meanX, y, meanY),
                          statistik::sumOfProducts(y, meanY, x, meanX));
        QVERIFY_SAME_BITS(statistik::sumOfSquares(x, meanX),
                          statistik::sumOfProducts(x, meanX, x, meanX));
    }
}

void TestStatistik::sumsBeyondADoubleAreNotFinite()
{
    for (const std::size_t length : {2U, 16U, 40U}) {
        const std::vector<double> column(length, 1e308);
        QVERIFY(!std::isfinite(statistik::sum(column)));
        QVERIFY(!std::isfinite(statistik::sumOfSquares(column, 0.0)));
    }
}

REGISTER_TEST(TestStatistik)
#include "tst_statistik.moc"
