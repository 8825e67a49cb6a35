#include "simulator/DescriptionWords.h"

#include <algorithm>

#include "simulator/DescriptionLimits.h"

namespace simulator {
namespace {

constexpr std::string_view Blanks = " \t";

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

/// Columns of the bytes of a line: their characters, counted from 1.
class Columns {
 public:
  explicit Columns(std::string_view line) : line_(line) {}

  /// REQUIRES: ascending offsets, so that no byte is looked at twice.
  int At(std::size_t offset) {
    for (; counted_ < offset; ++counted_) column_ += IsContinuation(line_[counted_]) ? 0 : 1;
    return column_;
  }

 private:
  std::string_view line_;
  std::size_t counted_ = 0;
  int column_ = 1;
};

}  // namespace

void ThrowMistake(const Position& position, const std::string& cause) {
  std::string where = position.file;
  if (position.line > 0) {
    where += ":" + std::to_string(position.line) + ":" + std::to_string(position.column);
  }
  throw DescriptionError(where + ": " + cause);
}

std::vector<Word> SplitLine(std::string_view line, const std::string& file, int lineNumber) {
  std::vector<Word> words;
  Columns columns(line);
  std::size_t at = line.find_first_not_of(Blanks);
  while (at != std::string_view::npos && line[at] != '#') {
    Word word{{}, {file, lineNumber, columns.At(at)}, line[at] == '"'};
    std::size_t end = 0;
    if (word.quoted) {
      const std::size_t closing = line.find('"', at + 1);
      if (closing == std::string_view::npos) ThrowMistake(word.position, "the text has no closing quote");
      word.text = line.substr(at + 1, closing - at - 1);
      end = closing + 1;
      if (end < line.size() && Blanks.find(line[end]) == std::string_view::npos) {
        ThrowMistake({file, lineNumber, columns.At(end)}, "a blank must follow the closing quote");
      }
    } else {
      end = std::min(line.find_first_of(Blanks, at), line.size());
      word.text = line.substr(at, end - at);
    }
    if (words.size() == MaxWordsOfALine) {
      ThrowMistake(word.position, "more than " + std::to_string(MaxWordsOfALine) + " words in one line");
    }
    words.push_back(std::move(word));
    at = line.find_first_not_of(Blanks, end);
  }
  return words;
}

}  // namespace simulator
