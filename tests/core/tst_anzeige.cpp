// The display format, against a slow formatter that knows nothing of the fast one.

#include "tests/core/support.h"
#include "tests/support/testregistry.h"

#include "core/values.h"

#include <charconv>

using namespace coretest;

namespace {

// Schoolbook decimals: the 15 significant digits in an array of places from 10^-400 to 10^399.
QString slowDisplay(double value, int decimals, const QLocale &locale)
{
    const int places = std::min(std::max(decimals, 0), 30);
    char buffer[64];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value),
                                   std::chars_format::scientific, 14)
                         .ptr;
    const QStringList parts = QString::fromLatin1(buffer, end - buffer).split(u'e');
    QString digits = parts[0];
    digits.remove(u'.');
    const int exponent = parts[1].toInt();

    constexpr int zero = 400; // index of the place 10^0
    std::vector<int> place(800, 0);
    for (int i = 0; i < digits.size(); ++i)
        place[static_cast<std::size_t>(zero + exponent - i)] = digits[i].digitValue();
    // Add 5 behind the last place, carry upwards, cut there.
    std::size_t at = static_cast<std::size_t>(zero - places - 1);
    place[at] += 5;
    for (; place[at] > 9; ++at) {
        place[at] -= 10;
        ++place[at + 1];
    }
    QString result;
    bool isZero = true;
    int top = 0;
    for (int power = -places; power < 400; ++power) {
        if (place[static_cast<std::size_t>(zero + power)] != 0) {
            isZero = false;
            top = std::max(top, power);
        }
    }
    for (int power = top; power >= -places; --power) {
        result += QString::number(place[static_cast<std::size_t>(zero + power)]);
        if (power > 0 && power % 3 == 0)
            result += locale.groupSeparator();
        if (power == 0 && places > 0)
            result += locale.decimalPoint();
    }
    return value < 0 && !isZero ? u'-' + result : result;
}

} // namespace

class TestAnzeige : public QObject
{
    Q_OBJECT

private slots:
    void equalsTheSlowFormatter_data();
    void equalsTheSlowFormatter();
    void halvesOfWrittenNumbersRoundAwayFromZero();
    void moreThanThirtyPlacesShowAsThirty();
};

void TestAnzeige::equalsTheSlowFormatter_data()
{
    QTest::addColumn<int>("decimals");
    for (int decimals = -3; decimals <= 35; ++decimals)
        QTest::addRow("%d decimals", decimals) << decimals;
}

void TestAnzeige::equalsTheSlowFormatter()
{
    QFETCH(const int, decimals);
    std::mt19937_64 random(static_cast<std::uint64_t>(decimals + 100));
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
    std::uniform_int_distribution<int> power(-36, 20);
    std::uniform_int_distribution<int> digits(1, 6);
    for (const char *name : {"de_DE", "en_US", "de_CH", "fr_FR", "sv_SE"}) {
        const QLocale locale{QLatin1String(name)};
        const Values values(locale);
        for (int i = 0; i < 1500; ++i) {
            double value = mantissa(random) * std::pow(10.0, power(random));
            if (i % 3 == 0) { // few digits: ties are frequent
                const double scale = std::pow(10.0, digits(random));
                value = std::round(mantissa(random) * scale) / scale / (i % 2 ? 10.0 : 1.0);
            }
            QCOMPARE(values.display(value, decimals), slowDisplay(value, decimals, locale));
        }
        for (const double value :
             {0.0, -0.0, 9.5, 99.5, 999.5, 999999.5, -999999.5, 1e300, -1e-300,
              std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min()})
            QCOMPARE(values.display(value, decimals), slowDisplay(value, decimals, locale));
    }
}

// A user who types d,d5 expects the larger digit, whatever bits the number has.
void TestAnzeige::halvesOfWrittenNumbersRoundAwayFromZero()
{
    const Values values(german);
    for (int hundredths = 0; hundredths < 20'000; ++hundredths) {
        const QString typed = QStringLiteral("%1,%2%3")
                                  .arg(hundredths / 100)
                                  .arg(hundredths % 100 / 10)
                                  .arg(hundredths % 10);
        const QString rounded =
            u"%1,%2"_qs.arg((hundredths + 5) / 10 / 10).arg((hundredths + 5) / 10 % 10);
        QCOMPARE(values.display(values.number(typed), 1), rounded);
        if (hundredths >= 5)
            QCOMPARE(values.display(values.number(u'-' + typed), 1), u'-' + rounded);
    }
}

void TestAnzeige::moreThanThirtyPlacesShowAsThirty()
{
    const Values values(german);
    QCOMPARE(values.display(1.5, 30), u"1,5"_qs + QString(29, u'0'));
    QCOMPARE(values.display(1.5, 31), values.display(1.5, 30));
    QCOMPARE(values.display(1.5, std::numeric_limits<std::int32_t>::max()),
             values.display(1.5, 30));
    QCOMPARE(values.display(1.5, std::numeric_limits<std::int32_t>::min()), u"2"_qs);
}

REGISTER_TEST(TestAnzeige)
#include "tst_anzeige.moc"
