#include "core/baskalibrierungwendral.h"

#include "core/runtimeerror.h"

#include <algorithm>
#include <cmath>

namespace basKalibrierungWendral {

QString NumberFormatString(const Variant &value, std::int32_t decimals, const Values &values)
{
    if (std::holds_alternative<Null>(value) || std::holds_alternative<Empty>(value))
        return {};
    if (const auto *text = std::get_if<QString>(&value); text && text->isEmpty())
        return {};
    return values.display(values.number(value), decimals);
}

QString NumberFormat(std::int32_t decimals)
{
    if (decimals <= 0)
        return QStringLiteral("#,##0");
    return u"#,##0."_qs + QString(std::min(decimals, maximumDecimals), u'0');
}

double RoundDecimal(double value, double exponent)
{
    const double power = std::pow(10.0, exponent);
    if (power == 0.0)
        throw RunTimeError(ErrorNumber::DivisionByZero);
    const double result = toWhole(value / power) * power;
    if (!std::isfinite(result))
        throw RunTimeError(ErrorNumber::Overflow);
    return result;
}

QString VarToString(const Variant &value, const Values &values)
{
    return std::holds_alternative<Null>(value) ? QString() : values.text(value);
}

double Log10(double value)
{
    if (!(value > 0.0 && std::isfinite(value)))
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    return std::log(value) / std::log(10.0);
}

QString TitleText(int index)
{
    switch (index) {
    case 0:
        return u"Regelwerk Wendral\r\nPrüfung der Verdichtung im Erdbau"_qs;
    case 1:
        return u"Kalibrierung eines indirekten Prüfmerkmals\r\nmit einem direkten Prüfmerkmal"_qs;
    case 2:
        return u"Flächendeckende Prüfung der Verdichtung:\r\n"
               u"Kalibrierung indirekter Prüfmerkmale\r\n"
               u"Wendral\r\n"
               u"Ausgabe 2003"_qs;
    default:
        return {};
    }
}

} // namespace basKalibrierungWendral
