#pragma once

#include <QString>

class QLocale;

/// \a text in \a format, or as it is where it does not fit.
///
/// A number format has 0 and # for digits, "." for the decimal separator, "," among the digits for
/// grouping, % for hundredths, and up to three sections parted by ";": positive, negative, zero.
/// A date format has d, m, y, h, n (minutes) and s. Text in quotes, behind a backslash or of other
/// characters is copied. Numbers and dates are read and written as \a locale has them. Digits are
/// rounded as they were typed, halves away from zero, without a detour over binary numbers.
QString formattedText(const QString &text, const QString &format, const QLocale &locale);
