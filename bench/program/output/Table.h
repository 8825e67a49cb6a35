#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace kxbench {

/// Blanks before a line that belongs to the one above it.
inline constexpr std::size_t Indent = 2;

/// Characters in a UTF-8 text.
std::size_t CharactersIn(const std::string& text);

/// Breaks `text` at blanks into lines of at most `width` characters; a longer word keeps its line.
std::vector<std::string> Wrapped(const std::string& text, std::size_t width);

/// "  Label   text" and a line break, the text wrapped and indented after the label, which has at most 22
/// characters.
std::string Entry(const std::string& label, const std::string& text);

/// A number with a decimal point: up to three significant digits, all of them, or so many digits after the
/// point.
std::string ShortNumber(double value);
std::string PlainNumber(double value);
std::string FixedNumber(double value, int decimals);

/// A table of texts in aligned columns, for a fixed-width font.
class Table {
 public:
  enum class Align { Left, Right };

  /// The first column is wrapped at `firstWidth` characters; the others stand beside its last line.
  Table(std::vector<Align> columns, std::size_t firstWidth);

  void AddRow(std::vector<std::string> cells);

  /// All rows, each line indented by `indent` blanks and without blanks at its end.
  std::string Text(std::size_t indent) const;

 private:
  std::vector<Align> columns_;
  std::size_t firstWidth_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace kxbench
