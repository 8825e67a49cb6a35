#include "text/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <limits>
#include <system_error>

#include "text/Trim.h"
#include "text/UserLocale.h"

namespace shorttest {
namespace {

constexpr int SignificantDigits = 15;
constexpr int SmallestFixedExponent = -5;  // 0.00001

// A magnitude as decimal digits d.ddd x 10^exponent, without trailing zeros.
struct DecimalDigits {
  std::string digits;
  int exponent;
};

DecimalDigits ToDigits(double magnitude) {
  std::array<char, 40> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                    std::chars_format::scientific, SignificantDigits - 1);
  const std::string_view text(buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data()));
  const std::size_t e = text.find('e');

  DecimalDigits decimal{std::string(1, text[0]), 0};
  decimal.digits += text.substr(2, e - 2);
  decimal.digits.erase(decimal.digits.find_last_not_of('0') + 1);

  const char* exponent = text.data() + e + 1;
  if (*exponent == '+') ++exponent;
  std::from_chars(exponent, result.ptr, decimal.exponent);
  return decimal;
}

std::string FixedText(const DecimalDigits& decimal) {
  std::string digits = decimal.digits;
  std::size_t integerDigits = 1;
  if (decimal.exponent < 0) {
    digits.insert(0, static_cast<std::size_t>(-decimal.exponent), '0');
  } else {
    integerDigits += static_cast<std::size_t>(decimal.exponent);
    if (digits.size() < integerDigits) digits.append(integerDigits - digits.size(), '0');
  }
  if (digits.size() == integerDigits) return digits;
  return digits.substr(0, integerDigits) + DecimalSeparator() + digits.substr(integerDigits);
}

std::string ScientificText(const DecimalDigits& decimal) {
  std::string text(1, decimal.digits[0]);
  if (decimal.digits.size() > 1) text += DecimalSeparator() + decimal.digits.substr(1);
  return text + "E" + std::to_string(decimal.exponent);
}

std::size_t CountDigits(std::string_view text) {
  const std::size_t end = text.find_first_not_of("0123456789");
  return end == std::string_view::npos ? text.size() : end;
}

// Takes a sign off the front of the text; '+' where there is none.
char TakeSign(std::string_view& text) {
  if (text.empty() || (text[0] != '+' && text[0] != '-')) return '+';
  const char sign = text[0];
  text.remove_prefix(1);
  return sign;
}

// An exponent so large that no digits before it make up for it.
constexpr int MostExponent = 1'000'000'000;

// Takes the digits of an exponent and their sign off the front of the text; no value where there are none.
std::optional<int> TakeExponent(std::string_view& text) {
  const char sign = TakeSign(text);
  const std::size_t digits = CountDigits(text);
  if (digits == 0) return std::nullopt;
  int exponent = 0;
  const auto result = std::from_chars(text.data(), text.data() + digits, exponent);
  if (result.ec != std::errc() || exponent > MostExponent) exponent = MostExponent;
  text.remove_prefix(digits);
  return sign == '-' ? -exponent : exponent;
}

// A number without its sign, in the notation of from_chars.
struct Decimal {
  std::string mantissa;
  int exponent = 0;
};

std::optional<double> InRange(const Decimal& decimal) {
  const std::string number = decimal.mantissa + "e" + std::to_string(decimal.exponent);
  double value = 0.0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  return result.ec == std::errc() ? std::optional(value) : std::nullopt;
}

bool IsBelowOne(const Decimal& decimal) {
  const std::size_t point = std::min(decimal.mantissa.find('.'), decimal.mantissa.size());
  const std::size_t first = decimal.mantissa.find_first_not_of("0.");
  if (first == std::string::npos) return true;
  const auto before = static_cast<std::ptrdiff_t>(point) - static_cast<std::ptrdiff_t>(first);
  return before + decimal.exponent <= 0;
}

// What is too small for a double is 0. The largest double is written rounded up, and so much too large a
// number is still read as that; anything larger is none.
std::optional<double> Magnitude(const Decimal& decimal) {
  if (const auto value = InRange(decimal)) return value;
  constexpr double Largest = std::numeric_limits<double>::max();
  constexpr double TenthOfLargestWritten = 1.79769313486232E307;
  const auto tenth = InRange({decimal.mantissa, decimal.exponent - 1});
  if (tenth)
    return *tenth <= TenthOfLargestWritten ? std::optional(*tenth < 1.0 ? 0.0 : Largest) : std::nullopt;
  return IsBelowOne(decimal) ? std::optional(0.0) : std::nullopt;
}

std::optional<std::string>& FixedSeparator() {
  static std::optional<std::string> separator;
  return separator;
}

}  // namespace

std::string DecimalSeparator() {
  if (FixedSeparator()) return *FixedSeparator();
  static const std::string user = UserDecimalSeparator();
  return user;
}

void SetDecimalSeparator(std::optional<std::string> separator) { FixedSeparator() = std::move(separator); }

std::string FloatToText(double value) {
  if (std::isnan(value)) return "NAN";
  const std::string sign = value < 0.0 ? "-" : "";
  if (std::isinf(value)) return sign + "INF";
  if (value == 0.0) return "0";

  const DecimalDigits decimal = ToDigits(std::fabs(value));
  const bool fixed = decimal.exponent >= SmallestFixedExponent && decimal.exponent < SignificantDigits;
  return sign + (fixed ? FixedText(decimal) : ScientificText(decimal));
}

std::string FloatToFixedText(double value, int decimals) {
  std::array<char, 400> buffer{};  // the largest double has 309 digits before the point
  const auto result =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals);
  std::string text(buffer.data(), result.ptr);
  const std::size_t point = text.find('.');
  if (point != std::string::npos) text.replace(point, 1, DecimalSeparator());
  return text;
}

std::optional<double> TextToFloat(std::string_view text) {
  std::string_view rest = Trim(text);
  const bool negative = TakeSign(rest) == '-';
  Decimal decimal;
  const std::size_t integerDigits = CountDigits(rest);
  decimal.mantissa = integerDigits == 0 ? "0" : rest.substr(0, integerDigits);
  rest.remove_prefix(integerDigits);

  std::size_t fractionDigits = 0;
  const std::string separator = DecimalSeparator();
  if (rest.substr(0, separator.size()) == separator) {
    rest.remove_prefix(separator.size());
    fractionDigits = CountDigits(rest);
    decimal.mantissa.append(".").append(rest.substr(0, fractionDigits)).append("0");
    rest.remove_prefix(fractionDigits);
  }
  if (integerDigits + fractionDigits == 0) return std::nullopt;

  if (!rest.empty() && (rest[0] == 'E' || rest[0] == 'e')) {
    rest.remove_prefix(1);
    const auto exponent = TakeExponent(rest);
    if (!exponent) return std::nullopt;
    decimal.exponent = *exponent;
  }
  if (!rest.empty()) return std::nullopt;
  const auto magnitude = Magnitude(decimal);
  if (!magnitude) return std::nullopt;
  return negative ? -*magnitude : *magnitude;
}

std::optional<std::int32_t> TextToInteger(std::string_view text) {
  std::string_view rest = Trim(text);
  if (rest.size() > 1 && rest[0] == '+' && rest[1] != '-') rest.remove_prefix(1);
  std::int32_t value = 0;
  const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), value);
  if (result.ec != std::errc() || result.ptr != rest.data() + rest.size()) return std::nullopt;
  return value;
}

}  // namespace shorttest
