#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace kxbench::documents {

/// Lines and columns of a text, each found in a time that does not depend on how long the text or its lines
/// are. A text that is parsed in place may change afterwards, as long as no character of several bytes does.
class TextPlaces {
 public:
  /// Both from 1; the column in characters.
  struct LineAndColumn {
    std::size_t line = 1;
    std::size_t column = 1;
  };

  explicit TextPlaces(std::string_view utf8);

  /// Where the byte at `offset` stands. `utf8` is the text of the constructor; an offset past its end is its
  /// end.
  LineAndColumn At(std::string_view utf8, std::size_t offset) const;

  /// Offset of a line's first byte, line from 0. The text's size for a line that it does not have.
  std::size_t LineStart(std::size_t line) const { return line < starts_.size() ? starts_[line] : size_; }

 private:
  std::size_t CharactersBefore(std::string_view utf8, std::size_t offset) const;

  std::size_t size_;
  std::vector<std::size_t> starts_;
  std::vector<std::size_t> charactersBefore_;  // each block of the text
};

}  // namespace kxbench::documents
