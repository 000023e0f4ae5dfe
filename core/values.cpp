#include "core/values.h"

#include "core/runtimeerror.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <type_traits>

namespace {

// Significant decimal digits of a double's text; the 16th and 17th are noise to the reader of a
// number.
constexpr int significantDigits = 15;

// A finite number as sign, decimal digits d1 d2 ... without trailing zeros, and the exponent of d1.
struct Decimal
{
    bool negative = false;
    std::string digits; // "0" for zero
    int exponent = 0;
};

Decimal decimalOf(double value)
{
    if (!std::isfinite(value))
        throw RunTimeError(ErrorNumber::Overflow);
    char buffer[64];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, std::abs(value),
                                   std::chars_format::scientific, significantDigits - 1)
                         .ptr;
    const std::string_view text(buffer, static_cast<std::size_t>(end - buffer));
    const std::size_t mark = text.find('e');
    Decimal result;
    result.negative = value < 0.0;
    result.digits = text[0];
    result.digits += text.substr(2, mark - 2);
    result.digits.erase(std::max<std::size_t>(result.digits.find_last_not_of('0') + 1, 1));
    const bool negativeExponent = text[mark + 1] == '-';
    std::from_chars(text.data() + mark + 2, text.data() + text.size(), result.exponent);
    if (negativeExponent)
        result.exponent = -result.exponent;
    return result;
}

// Rounds to the given number of decimals, halves away from zero, on the decimal digits.
void roundDecimals(Decimal &number, int decimals)
{
    const int kept = number.exponent + 1 + decimals; // digits that stay
    if (kept >= static_cast<int>(number.digits.size()))
        return;
    const bool up = kept >= 0 && number.digits[static_cast<std::size_t>(kept)] >= '5';
    number.digits.erase(static_cast<std::size_t>(std::max(kept, 0)));
    if (!up) {
        if (number.digits.empty())
            number = {false, "0", 0};
        return;
    }
    auto digit = number.digits.rbegin();
    while (digit != number.digits.rend() && *digit == '9')
        *digit++ = '0';
    if (digit != number.digits.rend()) {
        ++*digit;
    } else {
        number.digits.insert(number.digits.begin(), '1');
        ++number.exponent;
    }
}

// The digits before and behind the decimal separator, the latter filled up to the given number.
std::string integerDigits(const Decimal &number)
{
    if (number.exponent < 0)
        return "0";
    std::string result = number.digits.substr(0, static_cast<std::size_t>(number.exponent) + 1);
    result.resize(static_cast<std::size_t>(number.exponent) + 1, '0');
    return result;
}

std::string fractionDigits(const Decimal &number, int decimals)
{
    std::string result;
    if (number.exponent < -1)
        result.assign(static_cast<std::size_t>(std::min(-number.exponent - 1, decimals)), '0');
    const std::size_t first = static_cast<std::size_t>(std::max(number.exponent + 1, 0));
    if (first < number.digits.size())
        result += number.digits.substr(first);
    result.resize(static_cast<std::size_t>(decimals), '0');
    return result;
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool isSpace(QChar c)
{
    return c == u' ' || (c >= u'\t' && c <= u'\r') || c == u'\u00a0' || c == u'\u202f' ||
           c == u'\u2007' || c == u'\u2009';
}

bool isApostrophe(QChar c)
{
    return c == u'\'' || c == u'\u2019' || c == u'\u02bc';
}

QStringView trimmed(QStringView text)
{
    while (!text.isEmpty() && isSpace(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isSpace(text.back()))
        text.chop(1);
    return text;
}

// Takes the digits at the front of the text.
std::string takeDigits(QStringView &text)
{
    std::string result;
    while (!text.isEmpty() && isDigit(text.front())) {
        result += static_cast<char>(text.front().unicode());
        text = text.sliced(1);
    }
    return result;
}

// Takes an optional sign; the typographic minus counts.
bool takeSign(QStringView &text)
{
    if (text.isEmpty())
        return false;
    const bool negative = text.front() == u'-' || text.front() == u'\u2212';
    if (negative || text.front() == u'+')
        text = text.sliced(1);
    return negative;
}

// The double nearest to digits "ddd.ddd" and an exponent text such as "-12".
Values::Reading nearestDouble(const std::string &integer, const std::string &fraction,
                              bool negativeExponent, const std::string &exponent)
{
    using Status = Values::Reading::Status;
    std::string text = integer + "." + fraction;
    if (!exponent.empty())
        text += std::string("e") + (negativeExponent ? "-" : "+") + exponent;
    double value = 0.0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc{} && std::isfinite(value))
        return {Status::Number, value};
    // Out of range: too small is 0, too large an error. The power of ten of the first digit
    // decides.
    const std::size_t first = (integer + fraction).find_first_not_of('0');
    if (first == std::string::npos)
        return {Status::Number, 0.0};
    int power = std::numeric_limits<int>::max() / 4;
    std::from_chars(exponent.data(), exponent.data() + exponent.size(), power);
    if (exponent.empty())
        power = 0;
    const auto magnitude = static_cast<std::ptrdiff_t>(integer.size()) -
                           static_cast<std::ptrdiff_t>(first) + (negativeExponent ? -power : power);
    return magnitude > 0 ? Values::Reading{Status::OutOfRange, 0.0}
                         : Values::Reading{Status::Number, 0.0};
}

} // namespace

Values::Values(const QLocale &locale)
    : m_locale(locale)
    , m_decimalPoint(locale.decimalPoint().at(0))
    , m_group(locale.groupSeparator().isEmpty() ? QChar() : locale.groupSeparator().at(0))
{
}

bool Values::isGroup(QChar c) const
{
    if (m_group.isNull())
        return false;
    if (c == m_group)
        return true;
    return (isSpace(m_group) && isSpace(c) && !(c >= u'\t' && c <= u'\r')) ||
           (isApostrophe(m_group) && isApostrophe(c));
}

Values::Reading Values::read(QStringView text) const
{
    text = trimmed(text);
    const bool negative = takeSign(text);

    std::string integer = takeDigits(text);
    if (!text.isEmpty() && isGroup(text.front())) {
        if (integer.empty() || integer.size() > 3 || integer.front() == '0')
            return {};
        while (!text.isEmpty() && isGroup(text.front())) {
            text = text.sliced(1);
            const std::string group = takeDigits(text);
            if (group.size() != 3)
                return {};
            integer += group;
        }
    }
    std::string fraction;
    if (!text.isEmpty() && text.front() == m_decimalPoint) {
        text = text.sliced(1);
        fraction = takeDigits(text);
    }
    if (integer.empty() && fraction.empty())
        return {};

    std::string exponent;
    bool negativeExponent = false;
    if (!text.isEmpty() && (text.front() == u'e' || text.front() == u'E')) {
        text = text.sliced(1);
        negativeExponent = takeSign(text);
        exponent = takeDigits(text);
        if (exponent.empty())
            return {};
    }
    if (!text.isEmpty())
        return {};

    Reading result = nearestDouble(integer, fraction, negativeExponent, exponent);
    // Adding 0 turns -0 into 0.
    result.value = (negative ? -result.value : result.value) + 0.0;
    return result;
}

double Values::number(QStringView text) const
{
    const Reading reading = read(text);
    if (reading.status == Reading::Status::NotANumber)
        throw RunTimeError(ErrorNumber::TypeMismatch);
    if (reading.status == Reading::Status::OutOfRange)
        throw RunTimeError(ErrorNumber::Overflow);
    return reading.value;
}

double Values::number(const Variant &value) const
{
    return std::visit(
        [this](const auto &held) -> double {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, Empty>)
                return 0.0;
            else if constexpr (std::is_same_v<Held, Null>)
                throw RunTimeError(ErrorNumber::InvalidUseOfNull);
            else if constexpr (std::is_same_v<Held, bool>)
                return held ? -1.0 : 0.0; // the number of "true" where the file format comes from
            else if constexpr (std::is_same_v<Held, QString>)
                return number(QStringView(held));
            else
                return static_cast<double>(held);
        },
        value);
}

std::int32_t Values::whole(const Variant &value) const
{
    if (const auto *held = std::get_if<std::int32_t>(&value))
        return *held;
    return toWhole(number(value));
}

bool Values::boolean(const Variant &value) const
{
    if (const auto *held = std::get_if<bool>(&value))
        return *held;
    if (const auto *held = std::get_if<QString>(&value)) {
        const QStringView word = trimmed(*held);
        for (const QStringView yes : {u"Wahr", u"True"}) {
            if (word.compare(yes, Qt::CaseInsensitive) == 0)
                return true;
        }
        for (const QStringView no : {u"Falsch", u"False"}) {
            if (word.compare(no, Qt::CaseInsensitive) == 0)
                return false;
        }
    }
    return number(value) != 0.0;
}

QString Values::text(double value) const
{
    const Decimal number = decimalOf(value);
    if (number.digits == "0")
        return QStringLiteral("0");
    const int count = static_cast<int>(number.digits.size());
    const int decimals = std::max(0, count - 1 - number.exponent);
    const bool fixed = number.exponent < significantDigits && decimals <= significantDigits;
    const QString point(m_decimalPoint);
    QString result = number.negative ? QStringLiteral("-") : QString();
    if (fixed) {
        result += QString::fromStdString(integerDigits(number));
        if (decimals > 0)
            result += point + QString::fromStdString(fractionDigits(number, decimals));
        return result;
    }
    result += QString::fromStdString(number.digits.substr(0, 1));
    if (count > 1)
        result += point + QString::fromStdString(number.digits.substr(1));
    result += number.exponent < 0 ? u"E-"_qs : u"E+"_qs;
    return result + QString::fromStdString(std::to_string(std::abs(number.exponent)))
                        .rightJustified(2, u'0');
}

QString Values::text(bool value) const
{
    if (m_locale.language() == QLocale::German)
        return value ? QStringLiteral("Wahr") : QStringLiteral("Falsch");
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

QString Values::text(const Variant &value) const
{
    return std::visit(
        [this](const auto &held) -> QString {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, Empty>)
                return QString();
            else if constexpr (std::is_same_v<Held, Null>)
                throw RunTimeError(ErrorNumber::InvalidUseOfNull);
            else if constexpr (std::is_same_v<Held, QString>)
                return held;
            else if constexpr (std::is_same_v<Held, std::int32_t>)
                return QString::number(held);
            else
                return text(held);
        },
        value);
}

QString Values::display(double value, std::int32_t decimals) const
{
    const int places = std::clamp<std::int32_t>(decimals, 0, maximumDecimals);
    Decimal number = decimalOf(value);
    roundDecimals(number, places);
    const std::string integer = integerDigits(number);
    QString result;
    for (std::size_t i = 0; i < integer.size(); ++i) {
        if (i > 0 && (integer.size() - i) % 3 == 0 && !m_group.isNull())
            result += m_group;
        result += QLatin1Char(integer[i]);
    }
    if (places > 0)
        result += m_decimalPoint + QString::fromStdString(fractionDigits(number, places));
    if (number.negative && number.digits.find_first_not_of('0') != std::string::npos)
        result.prepend(u'-');
    return result;
}

double leadingNumber(QStringView text)
{
    while (!text.isEmpty() && isSpace(text.front()))
        text = text.sliced(1);
    if (!text.isEmpty() && text.front() == u'\u2212')
        return 0.0; // only the ASCII signs are read without a locale
    const bool negative = takeSign(text);
    const std::string integer = takeDigits(text);
    std::string fraction;
    if (!text.isEmpty() && text.front() == u'.') {
        text = text.sliced(1);
        fraction = takeDigits(text);
    }
    if (integer.empty() && fraction.empty())
        return 0.0;
    std::string exponent;
    bool negativeExponent = false;
    if (!text.isEmpty() && (text.front() == u'e' || text.front() == u'E')) {
        text = text.sliced(1);
        negativeExponent = !text.isEmpty() && text.front() == u'-';
        if (!text.isEmpty() && (text.front() == u'-' || text.front() == u'+'))
            text = text.sliced(1);
        exponent = takeDigits(text);
    }
    const Values::Reading reading = nearestDouble(integer, fraction, negativeExponent, exponent);
    const double size = reading.status == Values::Reading::Status::OutOfRange
                            ? std::numeric_limits<double>::max()
                            : reading.value;
    return (negative ? -size : size) + 0.0;
}

std::int32_t toWhole(double value)
{
    const double whole = std::nearbyint(value); // halves to even in the default rounding mode
    if (!(whole >= std::numeric_limits<std::int32_t>::min() &&
          whole <= std::numeric_limits<std::int32_t>::max()))
        throw RunTimeError(ErrorNumber::Overflow);
    return static_cast<std::int32_t>(whole);
}

double roundDown(double value)
{
    return std::floor(value) + 0.0;
}

double truncate(double value)
{
    return std::trunc(value) + 0.0;
}
