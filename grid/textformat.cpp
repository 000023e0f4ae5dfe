#include "grid/textformat.h"

#include <QDateTime>
#include <QLocale>
#include <QRegularExpression>

#include <optional>

namespace {

/// A number as its digits.
struct Digits
{
    bool negative = false;
    QString whole;    ///< without leading zeros
    QString decimals; ///< as many as typed

    bool isZero() const { return whole.isEmpty() && decimals.count(u'0') == decimals.size(); }
};

struct NumberPattern
{
    QString before;
    QString after;
    qsizetype wholeZeros = 0;
    qsizetype leastDecimals = 0;
    qsizetype mostDecimals = 0;
    int hundreds = 0; ///< per cent signs
    bool grouped = false;
    bool hasDigits = false;
};

std::optional<Digits> readDigits(const QString &text, const QLocale &locale)
{
    const QString group = QRegularExpression::escape(locale.groupSeparator());
    const QString point = QRegularExpression::escape(locale.decimalPoint());
    const QRegularExpression number(
        QStringLiteral("^\\s*([+\u2212-]?)([1-9]\\d{0,2}(?:%1\\d{3})+|\\d*)(?:%2(\\d*))?\\s*$")
            .arg(group, point));
    const QRegularExpressionMatch match = number.match(text);
    if (!match.hasMatch() || (match.captured(2) + match.captured(3)).isEmpty())
        return std::nullopt;
    Digits digits;
    digits.negative = match.captured(1) == u'-' || match.captured(1) == QChar(0x2212);
    digits.whole = match.captured(2).remove(locale.groupSeparator());
    while (digits.whole.startsWith(u'0'))
        digits.whole.remove(0, 1);
    digits.decimals = match.captured(3);
    return digits;
}

void shiftLeft(Digits &digits, int places)
{
    digits.decimals = digits.decimals.leftJustified(places, u'0');
    digits.whole += digits.decimals.first(places);
    digits.decimals.remove(0, places);
    while (digits.whole.startsWith(u'0'))
        digits.whole.remove(0, 1);
}

void roundTo(Digits &digits, qsizetype places)
{
    if (digits.decimals.size() <= places)
        return;
    const bool up = digits.decimals.at(places) >= u'5';
    digits.decimals.truncate(places);
    if (!up)
        return;
    QString all = u'0' + digits.whole + digits.decimals;
    qsizetype at = all.size() - 1;
    for (; all.at(at) == u'9'; --at)
        all[at] = u'0';
    all[at] = QChar(all.at(at).unicode() + 1);
    digits.whole = all.first(all.size() - places);
    digits.decimals = all.last(places);
    while (digits.whole.startsWith(u'0'))
        digits.whole.remove(0, 1);
}

/// Splits at the semicolons outside of quotes.
QStringList sections(const QString &format)
{
    QStringList all{QString()};
    bool quoted = false;
    for (qsizetype i = 0; i < format.size(); ++i) {
        const QChar c = format.at(i);
        quoted = quoted != (c == u'"');
        if (c == u';' && !quoted)
            all.append(QString());
        else
            all.last() += c;
    }
    return all;
}

NumberPattern readPattern(const QString &format)
{
    NumberPattern pattern;
    bool quoted = false;
    bool decimals = false;
    for (qsizetype i = 0; i < format.size(); ++i) {
        const QChar c = format.at(i);
        QString &literal = pattern.hasDigits ? pattern.after : pattern.before;
        if (c == u'"') {
            quoted = !quoted;
        } else if (quoted) {
            literal += c;
        } else if (c == u'\\' && i + 1 < format.size()) {
            literal += format.at(++i);
        } else if (c == u'0' || c == u'#') {
            pattern.hasDigits = true;
            pattern.mostDecimals += decimals ? 1 : 0;
            if (c == u'0' && decimals)
                pattern.leastDecimals = pattern.mostDecimals;
            else if (c == u'0' || pattern.wholeZeros > 0)
                pattern.wholeZeros += decimals ? 0 : 1;
        } else if (c == u'.' && !decimals) {
            decimals = true;
        } else if (c == u',' && pattern.hasDigits && !decimals) {
            pattern.grouped = true;
        } else {
            pattern.hundreds += c == u'%' ? 1 : 0;
            literal += c;
        }
    }
    return pattern;
}

QString written(Digits digits, const NumberPattern &pattern, bool showSign, const QLocale &locale)
{
    shiftLeft(digits, 2 * pattern.hundreds);
    roundTo(digits, pattern.mostDecimals);
    while (digits.decimals.size() > pattern.leastDecimals && digits.decimals.endsWith(u'0'))
        digits.decimals.chop(1);
    digits.decimals = digits.decimals.leftJustified(pattern.leastDecimals, u'0');
    const bool minus = showSign && digits.negative && !digits.isZero();
    QString whole = digits.whole.rightJustified(pattern.wholeZeros, u'0');
    for (qsizetype at = whole.size() - 3; pattern.grouped && at > 0; at -= 3)
        whole.insert(at, locale.groupSeparator());
    const QString number =
        digits.decimals.isEmpty() ? whole : whole + locale.decimalPoint() + digits.decimals;
    return (minus ? locale.negativeSign() : QString()) + pattern.before + number + pattern.after;
}

QString numberText(const QString &text, const Digits &digits, const QString &format,
                   const QLocale &locale)
{
    const QStringList all = sections(format);
    const bool own = digits.negative && !digits.isZero() && all.size() > 1 && !all.at(1).isEmpty();
    const bool zero = digits.isZero() && all.size() > 2;
    const NumberPattern pattern = readPattern(zero ? all.at(2) : own ? all.at(1) : all.at(0));
    return pattern.hasDigits ? written(digits, pattern, !own, locale) : text;
}

std::optional<QDateTime> readDate(const QString &text, const QLocale &locale)
{
    QString date = locale.dateFormat(QLocale::ShortFormat);
    // One letter reads one digit and two, two letters insist on two.
    date.replace(QStringLiteral("dd"), QStringLiteral("d"))
        .replace(QStringLiteral("MM"), QStringLiteral("M"));
    QString longYear = date;
    if (!longYear.contains(u"yyyy"))
        longYear.replace(QStringLiteral("yy"), QStringLiteral("yyyy"));
    for (const QString &pattern : {longYear, date}) {
        const QDate day = locale.toDate(text.trimmed(), pattern);
        // Two digits of a year mean this century here, not the one of the locale's rule.
        if (day.isValid())
            return QDateTime(pattern == longYear ? day : day.addYears(day.year() < 2000 ? 100 : 0),
                             QTime(0, 0));
    }
    const QTime time = locale.toTime(text.trimmed(), QLocale::ShortFormat);
    return time.isValid() ? std::optional(QDateTime(QDate(1899, 12, 30), time)) : std::nullopt;
}

} // namespace

QString formattedText(const QString &text, const QString &format, const QLocale &locale)
{
    static const QRegularExpression numberSign(QStringLiteral("[0#]"));
    static const QRegularExpression dateSign(QStringLiteral("[dmyhns]"));
    if (format.contains(numberSign)) {
        const std::optional<Digits> digits = readDigits(text, locale);
        return digits ? numberText(text, *digits, format, locale) : text;
    }
    const std::optional<QDateTime> date =
        format.contains(dateSign) ? readDate(text, locale) : std::nullopt;
    if (!date)
        return text;
    QString pattern = format;
    pattern.replace(u'm', u'M').replace(u'n', u'm').replace(u'"', u'\'').remove(u'\\');
    return locale.toString(*date, pattern);
}
