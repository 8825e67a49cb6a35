#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace shorttest {

/// Splits a text into items. Items are separated by blanks (and control characters) or by `delimiter` with
/// any blanks around it. An item that begins with a double quote ends at the closing one and may hold blanks
/// and delimiters; a doubled quote inside stands for one, and a missing closing quote ends the item with the
/// text. An empty item between two delimiters, before the first one or after a delimiter that ends the text
/// is kept. With a blank as delimiter there are no empty items but quoted ones.
std::vector<std::string> SplitDelimited(std::string_view text, char delimiter);

/// An item and the bytes of the text where it stands: from `begin` up to `end`, quotes included.
struct DelimitedItem {
  std::string text;
  std::size_t begin;
  std::size_t end;
};

/// As SplitDelimited, with the places.
std::vector<DelimitedItem> FindDelimited(std::string_view text, char delimiter);

/// Joins items with `delimiter`. Items that SplitDelimited would not read back as they are (those with a
/// blank, a control character, a quote or the delimiter in them) are put in double quotes.
std::string JoinDelimited(const std::vector<std::string>& items, char delimiter);

/// Splits a text into its lines; they end with LF, CRLF or CR. A line end at the end of the text opens no
/// further line.
std::vector<std::string> SplitLines(std::string_view text);

/// Joins lines with LF between them.
std::string JoinLines(const std::vector<std::string>& lines);

}  // namespace shorttest
