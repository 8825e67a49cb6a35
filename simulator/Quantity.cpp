#include "simulator/Quantity.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace simulator {
namespace {

std::string_view Name(Unit unit) {
  switch (unit) {
    case Unit::Ohm:
      return "Ohm";
    case Unit::Volt:
      return "V";
    case Unit::Second:
      return "s";
  }
  return {};
}

/// Power of ten of a prefix; no value when the character is none.
std::optional<int> PowerOf(char prefix) {
  switch (prefix) {
    case 'u':
      return -6;
    case 'm':
      return -3;
    case 'k':
      return 3;
    case 'M':
      return 6;
    case 'G':
      return 9;
    case 'T':
      return 12;
    default:
      return std::nullopt;
  }
}

/// Reads a number at the start of `text` and takes it off. The exponent's letter is e or E.
std::optional<double> TakeNumber(std::string_view& text) {
  const bool startsLikeNumber =
      !text.empty() && text.find_first_of("0123456789") <= text.find_first_not_of("-.");
  if (!startsLikeNumber) return std::nullopt;  // keeps "inf" and "nan" out
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc()) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return value;
}

}  // namespace

std::optional<double> ReadQuantity(std::string_view word, Unit unit) {
  const std::optional<double> number = TakeNumber(word);
  if (!number) return std::nullopt;
  if (word.ends_with(Name(unit))) word.remove_suffix(Name(unit).size());
  if (word.empty()) return number;
  const std::optional<int> power = PowerOf(word.front());
  if (word.size() != 1 || !power) return std::nullopt;
  // Dividing by a power of ten is exact where multiplying with its inverse is not.
  const double factor = std::pow(10.0, std::abs(*power));
  return *power < 0 ? *number / factor : *number * factor;
}

std::optional<double> ReadNumber(std::string_view word) {
  const std::optional<double> number = TakeNumber(word);
  return word.empty() ? number : std::nullopt;
}

std::optional<std::int64_t> ReadInteger(std::string_view word) {
  const bool digitsOnly = std::all_of(word.begin(), word.end(), [](char c) { return c >= '0' && c <= '9'; });
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  return digitsOnly && error == std::errc() ? std::optional(value) : std::nullopt;
}

}  // namespace simulator
