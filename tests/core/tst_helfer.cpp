// The helper functions that the document, the windows and the protocol share.

#include "tests/core/support.h"
#include "tests/support/testregistry.h"

#include "core/baskalibrierungwendral.h"

#include <charconv>

using namespace coretest;
using namespace basKalibrierungWendral;

namespace {

// 10^exponent as the nearest double, read from its text.
double powerOfTen(int exponent)
{
    const std::string text = "1e" + std::to_string(exponent);
    double result = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), result);
    return result;
}

} // namespace

class TestHelfer : public QObject
{
    Q_OBJECT

private slots:
    void displayOfEveryKindOfValue();
    void displayPatternHasAZeroForEachDecimalPlace();
    void roundingDividesByThePowerAndMultipliesAgain();
    void roundingTakesHalvesToEven();
    void roundingToTensAndHundreds();
    void roundingOverflowsOutside32Bits();
    void roundingWithPowersThatADoubleCannotHold();
    void textOfNullIsEmpty();
    void logarithmIsTheQuotientOfNaturalOnes();
    void titleTexts();
};

void TestHelfer::displayOfEveryKindOfValue()
{
    const Values values(german);
    QCOMPARE(NumberFormatString(Null{}, 2, values), QString());
    QCOMPARE(NumberFormatString(Empty{}, 2, values), QString());
    QCOMPARE(NumberFormatString(QString(), 2, values), QString());
    QCOMPARE(NumberFormatString(1234.565, 2, values), u"1.234,57"_qs);
    QCOMPARE(NumberFormatString(std::int32_t{1234}, 2, values), u"1.234,00"_qs);
    QCOMPARE(NumberFormatString(u"1234,565"_qs, 2, values), u"1.234,57"_qs);
    QCOMPARE(NumberFormatString(1234.5, 0, values), u"1.235"_qs);
    QCOMPARE(NumberFormatString(1234.5, -1, values), u"1.235"_qs);
    QCOMPARE(NumberFormatString(1234.5, 2, Values(english)), u"1,234.50"_qs);
    QCOMPARE(errorOf([&] { NumberFormatString(u"abc"_qs, 2, values); }), 13);
    QCOMPARE(errorOf([&] { NumberFormatString(u" "_qs, 2, values); }), 13);
    QCOMPARE(errorOf([&] { NumberFormatString(u"1e400"_qs, 2, values); }), 6);
}

void TestHelfer::displayPatternHasAZeroForEachDecimalPlace()
{
    QCOMPARE(NumberFormat(2), u"#,##0.00"_qs);
    QCOMPARE(NumberFormat(1), u"#,##0.0"_qs);
    QCOMPARE(NumberFormat(0), u"#,##0"_qs);
    QCOMPARE(NumberFormat(-1), u"#,##0"_qs);
    QCOMPARE(NumberFormat(std::numeric_limits<std::int32_t>::min()), u"#,##0"_qs);
    QCOMPARE(NumberFormat(30), u"#,##0."_qs + QString(30, u'0'));
    QCOMPARE(NumberFormat(31), NumberFormat(30)); // no more places than can be shown
    QCOMPARE(NumberFormat(std::numeric_limits<std::int32_t>::max()), NumberFormat(30));
}

void TestHelfer::roundingDividesByThePowerAndMultipliesAgain()
{
    QVERIFY_SAME_BITS(RoundDecimal(2.45, -1), 2.4000000000000004);
    std::mt19937 random(1);
    std::uniform_real_distribution<double> any(-2000.0, 2000.0);
    for (int i = 0; i < 50'000; ++i) {
        const int decimals = i % 6;
        const double value = i % 2 ? any(random) : std::round(any(random) * 100.0) / 100.0;
        const double power = powerOfTen(-decimals);
        const double scaled = value / power;
        double whole = std::floor(scaled);
        const double above = scaled - whole;
        if (above > 0.5 || (above == 0.5 && std::fmod(whole, 2.0) != 0.0))
            whole += 1.0;
        QVERIFY_SAME_BITS(RoundDecimal(value, -decimals), whole * power + 0.0);
    }
}

void TestHelfer::roundingTakesHalvesToEven()
{
    QVERIFY_SAME_BITS(RoundDecimal(2.35, -1), 2.4000000000000004);
    QVERIFY_SAME_BITS(RoundDecimal(0.125, -2), 0.12);
    QVERIFY_SAME_BITS(RoundDecimal(0.375, -2), 0.38);
    QVERIFY_SAME_BITS(RoundDecimal(2.5, 0), 2.0);
    QVERIFY_SAME_BITS(RoundDecimal(3.5, 0), 4.0);
    QVERIFY_SAME_BITS(RoundDecimal(-2.5, 0), -2.0);
    QVERIFY_SAME_BITS(RoundDecimal(-0.4, 0), 0.0); // never -0
}

void TestHelfer::roundingToTensAndHundreds()
{
    QVERIFY_SAME_BITS(RoundDecimal(1234.5, 1), 1230.0);
    QVERIFY_SAME_BITS(RoundDecimal(1250.0, 2), 1200.0);
    QVERIFY_SAME_BITS(RoundDecimal(1350.0, 2), 1400.0);
    QVERIFY_SAME_BITS(RoundDecimal(-1250.0, 2), -1200.0);
    QVERIFY_SAME_BITS(RoundDecimal(4.9e12, 4), 4.9e12);
}

void TestHelfer::roundingOverflowsOutside32Bits()
{
    QVERIFY_SAME_BITS(RoundDecimal(2147483647.0, 0), 2147483647.0);
    QCOMPARE(errorOf([] { RoundDecimal(2147483647.5, 0); }), 6);
    QVERIFY_SAME_BITS(RoundDecimal(-2147483648.0, 0), -2147483648.0);
    QCOMPARE(errorOf([] { RoundDecimal(-2147483649.0, 0); }), 6);
    QCOMPARE(errorOf([] { RoundDecimal(300000.0, -4); }), 6);
    QCOMPARE(errorOf([] { RoundDecimal(1e300, -300); }), 6);
    QCOMPARE(errorOf([] { RoundDecimal(std::numeric_limits<double>::max(), -2); }), 6);
}

// No count of decimal places that a file can hold gives a result that is no number.
void TestHelfer::roundingWithPowersThatADoubleCannotHold()
{
    for (const double value : {0.0, 1.5, -1.5, 1e300, 1e-300}) {
        for (const double exponent :
             {-2147483647.0, -400.0, -324.0, -323.0, 308.0, 309.0, 400.0, 2147483648.0}) {
            double result = 0.0;
            const std::int32_t error = errorOf([&] { result = RoundDecimal(value, exponent); });
            QVERIFY(error == 0 || error == 6 || error == 11);
            QVERIFY(std::isfinite(result));
        }
    }
    QCOMPARE(errorOf([] { RoundDecimal(1.5, -400); }), 11);
    QVERIFY_SAME_BITS(RoundDecimal(1.5, 300), 0.0);
}

void TestHelfer::textOfNullIsEmpty()
{
    const Values values(german);
    QCOMPARE(VarToString(Null{}, values), QString());
    QCOMPARE(VarToString(Empty{}, values), QString());
    QCOMPARE(VarToString(1.5, values), u"1,5"_qs);
    QCOMPARE(VarToString(true, values), u"Wahr"_qs);
    QCOMPARE(VarToString(std::int32_t{3}, values), u"3"_qs);
    QCOMPARE(VarToString(u"x"_qs, values), u"x"_qs);
}

void TestHelfer::logarithmIsTheQuotientOfNaturalOnes()
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> any(1e-6, 1e6);
    int different = 0;
    for (int i = 0; i < 10'000; ++i) {
        const double value = any(random);
        QVERIFY_SAME_BITS(Log10(value), std::log(value) / std::log(10.0));
        different += sameBits(Log10(value), std::log10(value)) ? 0 : 1;
    }
    QVERIFY(different > 0); // else this test could not tell the two apart
    QVERIFY_SAME_BITS(Log10(1000.0), 2.9999999999999996);
    for (const double value : {0.0, -0.0, -1.0, std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()})
        QCOMPARE(errorOf([&] { Log10(value); }), 5);
    QVERIFY(std::isfinite(Log10(std::numeric_limits<double>::denorm_min())));
}

void TestHelfer::titleTexts()
{
    QCOMPARE(TitleText(1),
             u"Kalibrierung eines indirekten Prüfmerkmals\r\nmit einem direkten Prüfmerkmal"_qs);
    QCOMPARE(TitleText(0).split(u"\r\n"_qs).size(), 2);
    QCOMPARE(TitleText(2).split(u"\r\n"_qs).size(), 4);
    QCOMPARE(TitleText(2).split(u"\r\n"_qs)[2], u"Wendral"_qs);
    for (const int index : {0, 1, 2}) {
        for (const QString &line : TitleText(index).split(u"\r\n"_qs)) {
            QVERIFY(!line.trimmed().isEmpty());
            QVERIFY(!line.contains(u'\n') && !line.contains(u'\r'));
        }
    }
    for (const int index : {-1, 3, 1000})
        QVERIFY(TitleText(index).isEmpty());
}

REGISTER_TEST(TestHelfer)
#include "tst_helfer.moc"
