#pragma once

#include "core/values.h"
#include "core/variant.h"

#include <QString>

#include <cstdint>

/// Helper functions that the document, the windows and the protocol share.
namespace basKalibrierungWendral {

/// \a value grouped and with \a decimals decimal places; empty for Null, Empty and the empty text.
/// Text is read as a number of the locale first: raises 13 or 6 where it is none.
QString NumberFormatString(const Variant &value, std::int32_t decimals, const Values &values);

/// The pattern of that format: "#,##0", or "#,##0." and as many "0" as there are decimal places.
QString NumberFormat(std::int32_t decimals);

/// \a value rounded to the power of ten 10^\a exponent, halves to even.
///
/// Divides by the power and multiplies with it again, so that 2.45 at -1 gives 2.4000000000000004.
/// Raises 6 where the quotient lies outside the 32-bit range.
double RoundDecimal(double value, double exponent);

/// The text of \a value; Null is the empty text.
QString VarToString(const Variant &value, const Values &values);

/// The logarithm to base ten as ln(x) / ln(10), whose last bit can differ from the library's log10.
/// Raises 5 for 0 and less, and for what is not finite.
double Log10(double value);

/// Title texts of several lines, joined with CR LF: 0 the issuing body and its working group,
/// 1 the subject, 2 the regulation's title; empty for any other index.
QString TitleText(int index);

} // namespace basKalibrierungWendral
