#pragma once

#include <string_view>

namespace shorttest {

/// The text without blanks (spaces, tabs, form feeds, line breaks) at its ends. One notion of a blank for the
/// lines of a file and for the numbers in them.
inline std::string_view Trim(std::string_view text) {
  constexpr std::string_view Blanks = " \t\v\f\r\n";
  const std::size_t first = text.find_first_not_of(Blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

}  // namespace shorttest
