#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace shorttest {

/// What ends a line.
enum class LineEnds {
  Any,       ///< CR LF, LF or CR
  LineFeed,  ///< LF; a CR before it, or at the end of the text, does not belong to the line either
};

/// A line of a text and the break that ends it; the break is empty for a last line without one.
struct TextLine {
  std::string_view text;
  std::string_view lineBreak;
};

/// Takes the first line off the front of `rest`. An empty text gives an empty line.
inline TextLine TakeLine(std::string_view& rest, LineEnds ends = LineEnds::Any) {
  const bool any = ends == LineEnds::Any;
  std::size_t end = std::min(any ? rest.find_first_of("\r\n") : rest.find('\n'), rest.size());
  std::size_t next = std::min(end + 1, rest.size());
  if (any && rest.substr(end, 2) == "\r\n") ++next;
  if (!any && end > 0 && rest[end - 1] == '\r') --end;
  const TextLine line{rest.substr(0, end), rest.substr(end, next - end)};
  rest.remove_prefix(next);
  return line;
}

}  // namespace shorttest
