#include "simulator/DescriptionWords.h"

#include <algorithm>

namespace simulator {
namespace {

constexpr std::string_view Blanks = " \t";

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

/// Column of the byte at `offset`: its character, counted from 1.
int ColumnOf(std::string_view line, std::size_t offset) {
  const auto end = line.begin() + static_cast<std::ptrdiff_t>(offset);
  return 1 + static_cast<int>(std::count_if(line.begin(), end, [](char c) { return !IsContinuation(c); }));
}

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
  std::size_t at = line.find_first_not_of(Blanks);
  while (at != std::string_view::npos && line[at] != '#') {
    Word word{{}, {file, lineNumber, ColumnOf(line, at)}, line[at] == '"'};
    std::size_t end = 0;
    if (word.quoted) {
      const std::size_t closing = line.find('"', at + 1);
      if (closing == std::string_view::npos) ThrowMistake(word.position, "the text has no closing quote");
      word.text = line.substr(at + 1, closing - at - 1);
      end = closing + 1;
      if (end < line.size() && Blanks.find(line[end]) == std::string_view::npos) {
        ThrowMistake({file, lineNumber, ColumnOf(line, end)}, "a blank must follow the closing quote");
      }
    } else {
      end = std::min(line.find_first_of(Blanks, at), line.size());
      word.text = line.substr(at, end - at);
    }
    words.push_back(std::move(word));
    at = line.find_first_not_of(Blanks, end);
  }
  return words;
}

}  // namespace simulator
