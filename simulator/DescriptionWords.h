#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// A mistake in a device description; the message reads "FILE:LINE:COLUMN: cause".
class DescriptionError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Where something stands: both count from 1, the column in characters. Line 0: the file as a whole.
struct Position {
  std::string file;
  int line = 0;
  int column = 0;
};

/// Throws the DescriptionError for a mistake at `position`.
[[noreturn]] void ThrowMistake(const Position& position, const std::string& cause);

/// One word of a description line; a text in double quotes is one word.
struct Word {
  std::string text;  ///< without the quotes
  Position position;
  bool quoted = false;
};

/// Splits a line into its words. Blanks and tabs separate; a '#' that starts a word starts a comment. Throws
/// DescriptionError for a text without its closing quote or followed directly by something else, and for more
/// than MaxWordsOfALine.
std::vector<Word> SplitLine(std::string_view line, const std::string& file, int lineNumber);

}  // namespace simulator
