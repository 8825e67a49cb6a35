#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace shorttest {

/// Decimal separator of the user's locale (UTF-8), or the one set by SetDecimalSeparator. A point where the
/// system knows no such setting.
std::string DecimalSeparator();

/// Replaces the user's decimal separator for this library, or gives it back (no value). For tests and for
/// programs that fix a notation of their own.
void SetDecimalSeparator(std::optional<std::string> separator);

/// General format with 15 significant digits and the decimal separator in force: fixed-point without trailing
/// zeros from 0.00001 up to 15 digits before the separator ("10", "0,42"), scientific outside ("1E15",
/// "1,5E-6"). Zero of either sign is "0"; what is no number is "NAN", "INF" or "-INF".
std::string FloatToText(double value);

/// Fixed-point with `decimals` digits after the decimal separator in force ("10,50").
std::string FloatToFixedText(double value, int decimals);

/// Reads a floating-point number with the decimal separator in force; blanks around it are skipped, an
/// exponent (E or e) is allowed. A number too small for a double is 0; the largest double is read from the
/// text that FloatToText makes of it, although its 15 digits are rounded up. No value when the text is
/// anything else, or a number larger than that.
std::optional<double> TextToFloat(std::string_view text);

/// Reads a decimal 32-bit integer; blanks around it are skipped. No value when the text is anything else or
/// does not fit.
std::optional<std::int32_t> TextToInteger(std::string_view text);

}  // namespace shorttest
