#include "bench/program/station/SerialPattern.h"

#include <algorithm>

#include "bench/program/system/Failure.h"
#include "text/Utf8.h"

namespace kxbench {

namespace {

/// The library matches by recursion, which a longer text may take to the end of the stack.
constexpr std::size_t MostSerialBytes = 1000;

}  // namespace

SerialPattern::SerialPattern(const std::string& pattern) : text_(pattern) {
  try {
    pattern_.emplace(pattern, std::regex::ECMAScript);
  } catch (const std::regex_error& error) {
    throw Failure("--serial-pattern " + pattern + " is no regular expression: " + error.what());
  }
}

std::string SerialPattern::Refusal(const std::string& serial) const {
  if (serial.empty()) return "is empty";
  if (serial.size() > MostSerialBytes) return "is longer than " + std::to_string(MostSerialBytes) + " bytes";
  const bool control = std::any_of(serial.begin(), serial.end(),
                                   [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; });
  if (control) return "holds a control character";
  if (!shorttest::IsUtf8(serial)) return "is no text in UTF-8";
  if (pattern_ && !std::regex_match(serial, *pattern_)) return "does not match " + text_;
  return "";
}

}  // namespace kxbench
