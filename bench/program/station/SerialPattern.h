#pragma once

#include <memory>
#include <optional>
#include <regex>
#include <string>

namespace kxbench {

/// What a serial number must look like.
class SerialPattern {
 public:
  SerialPattern() = default;

  /// `pattern`: a regular expression (ECMAScript) of the whole serial number. Throws Failure for one that is
  /// none.
  explicit SerialPattern(const std::string& pattern);

  /// Why `serial` is no serial number; empty when it is one. One that is longer than 1000 bytes, no UTF-8 or
  /// holds a control character is none, whatever the pattern.
  std::string Refusal(const std::string& serial) const;

 private:
  std::string text_;
  std::optional<std::regex> pattern_;
};

}  // namespace kxbench
