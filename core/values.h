#pragma once

#include "core/variant.h"

#include <QLocale>
#include <QString>

#include <cstdint>

/// Turns values into texts and back: the one reader and the one formatter of numbers in this
/// program.
///
/// The locale is handed in; digits are always ASCII. Results are never NaN or infinite.
class Values
{
public:
    explicit Values(const QLocale &locale);

    const QLocale &locale() const { return m_locale; }
    QChar decimalPoint() const { return m_decimalPoint; }

    /// What reading a text as a number found.
    struct Reading
    {
        enum class Status { Number, NotANumber, OutOfRange };
        Status status = Status::NotANumber;
        double value = 0.0;
    };
    /// Reads \a text as a number of the locale: sign, digits with or without grouping in threes,
    /// decimal separator, exponent; blanks, tabs and line breaks around it are dropped. Raises
    /// nothing.
    Reading read(QStringView text) const;
    /// Whether read() finds a number that a double can hold.
    bool isNumeric(QStringView text) const { return read(text).status == Reading::Status::Number; }

    /// The number that \a text is. Raises 13 where it is none, 6 where a double can't hold it.
    double number(QStringView text) const;
    double number(const QString &text) const { return number(QStringView(text)); }
    /// \a value as a double. Empty is 0; raises 94 for Null, 13 and 6 for text as above.
    double number(const Variant &value) const;
    /// \a value as a 32-bit whole number, halves to even. Raises what number() raises, and 6
    /// outside the range.
    std::int32_t whole(const Variant &value) const;
    /// \a value as a truth value: words of German and English in any case, or a number (not 0 is
    /// true). Empty is false. Raises 94 for Null, 13 for other texts.
    bool boolean(const Variant &value) const;

    /// \a value with 15 significant digits, without grouping, as it stands in the store and in
    /// files. Raises 6 for NaN and infinity.
    QString text(double value) const;
    QString text(bool value) const;
    /// The text of any value. Empty is the empty text; raises 94 for Null.
    QString text(const Variant &value) const;

    /// \a value grouped in threes with \a decimals decimal places (0 to 30; fewer count as 0, more
    /// as 30). Rounds the 15 significant decimal digits, halves away from zero; "-0" never appears.
    QString display(double value, std::int32_t decimals) const;

private:
    bool isGroup(QChar c) const;

    QLocale m_locale;
    QChar m_decimalPoint;
    QChar m_group; ///< null where the locale has none
};

/// The most decimal places that display() writes.
inline constexpr std::int32_t maximumDecimals = 30;

/// The number that \a text starts with, read with a point and without any locale. Never fails: 0
/// where there is none, the largest double where it would be larger.
double leadingNumber(QStringView text);

/// \a value as a 32-bit whole number, halves to even. Raises 6 outside the range and for NaN.
std::int32_t toWhole(double value);

/// \a value rounded towards minus infinity.
double roundDown(double value);
/// \a value rounded towards zero.
double truncate(double value);
