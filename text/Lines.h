#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace shorttest {

/// A line of a text and the break that ends it; the break is empty for a last line without one.
struct TextLine {
  std::string_view text;
  std::string_view lineBreak;
};

/// Takes the first line off the front of `rest`. Lines end with CR LF, LF or CR. An
/// empty text gives empty lines.
inline TextLine TakeLine(std::string_view& rest) {
  const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
  const std::size_t breakSize =
      rest.substr(end, 2) == "\r\n" ? 2 : std::min<std::size_t>(1, rest.size() - end);
  const TextLine line{rest.substr(0, end), rest.substr(end, breakSize)};
  rest.remove_prefix(end + breakSize);
  return line;
}

}  // namespace shorttest
