#include "bench/program/station/StationScreen.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "bench/program/output/Table.h"
#include "ui/terminal/Printable.h"

namespace kxbench {

namespace {

constexpr int LetterSize = 5;
constexpr int LetterPitch = LetterSize + 1;

struct Letter {
  char letter;
  std::array<std::string_view, LetterSize> rows;
};

constexpr Letter Letters[] = {
    {'A', {" ### ", "#   #", "#####", "#   #", "#   #"}},
    {'C', {" ####", "#    ", "#    ", "#    ", " ####"}},
    {'D', {"#### ", "#   #", "#   #", "#   #", "#### "}},
    {'E', {"#####", "#    ", "#### ", "#    ", "#####"}},
    {'F', {"#####", "#    ", "#### ", "#    ", "#    "}},
    {'I', {"#####", "  #  ", "  #  ", "  #  ", "#####"}},
    {'L', {"#    ", "#    ", "#    ", "#    ", "#####"}},
    {'N', {"#   #", "##  #", "# # #", "#  ##", "#   #"}},
    {'O', {" ### ", "#   #", "#   #", "#   #", " ### "}},
    {'P', {"#### ", "#   #", "#### ", "#    ", "#    "}},
    {'R', {"#### ", "#   #", "#### ", "#  # ", "#   #"}},
    {'S', {" ####", "#    ", " ### ", "    #", "#### "}},
};

std::string_view RowOf(char letter, std::size_t row) {
  for (const Letter& known : Letters) {
    if (known.letter == letter) return known.rows.at(row);
  }
  return "     ";
}

std::string LargeRow(const std::string& word, std::size_t row, int width, const std::string& pixel) {
  std::string line;
  std::string blanks;
  const auto add = [&](bool set) {
    for (int i = 0; i < width; ++i) {
      if (set) {
        line += blanks + pixel;
        blanks.clear();
      } else {
        blanks += ' ';
      }
    }
  };
  for (const char letter : word) {
    for (const char point : RowOf(letter, row)) add(point == '#');
    add(false);
  }
  return line;
}

/// The first `width` characters.
std::string Cut(const std::string& text, std::size_t width) {
  std::size_t characters = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool begins = (static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U;
    if (begins && characters++ == width) return text.substr(0, i);
  }
  return text;
}

std::string ScreenLine(const std::string& text, std::size_t width) {
  std::string line = Printable(text);
  std::replace(line.begin(), line.end(), '\n', ' ');
  return Cut(line, width);
}

}  // namespace

std::string LargeWord(const std::string& word, int columns, int rows, const std::string& pixel) {
  const int letters = static_cast<int>(word.size());
  if (letters == 0) return "";
  const int units = letters * LetterPitch - 1;
  // A character is about twice as high as it is wide; letters may be half as high or half as wide as usual.
  int height = rows / LetterSize;
  const int width = std::min(columns / units, 3 * height);
  height = std::min(height, width);
  if (height < 1 || width < 1) return "";
  std::string text;
  for (std::size_t row = 0; row < LetterSize; ++row) {
    const std::string line = LargeRow(word, row, width, pixel) + "\n";
    for (int i = 0; i < height; ++i) text += line;
  }
  return text;
}

std::string ScreenOf(const ScreenText& text, TerminalSize size, bool unicode, bool colours) {
  // The last column stays free: some terminals begin a new line there.
  const auto width = static_cast<std::size_t>(std::max(size.columns - 1, 1));
  std::vector<std::string> lines;
  for (const std::string& line : text.lines) {
    for (const std::string& part : Wrapped(ScreenLine(line, line.size()), width)) lines.push_back(part);
  }
  // Head, foot, what was said, field, and a line above and below the lines.
  constexpr int Fixed = 6;
  const int wanted = static_cast<int>(std::min<std::size_t>(lines.size(), 6));
  const std::string large = LargeWord(text.word, static_cast<int>(width), size.rows - Fixed - wanted,
                                      unicode ? "\xE2\x96\x88" : "#");
  const int largeRows = static_cast<int>(std::count(large.begin(), large.end(), '\n'));
  const auto room = static_cast<std::size_t>(std::max(size.rows - Fixed - largeRows, 1));
  if (lines.size() > room) {
    const std::size_t left = lines.size() - (room - 1);
    lines.resize(room - 1);
    lines.push_back("... and " + std::to_string(left) + " lines more");
  }
  const std::string on = colours && !text.colour.empty() ? "\x1b[" + text.colour + "m" : "";
  const std::string off = on.empty() ? "" : "\x1b[0m";
  std::string screen = "\x1b[2J\x1b[H" + (large.empty() ? "" : on + large + off + "\n");
  screen += on + ScreenLine(text.head, width) + off + "\n";
  for (const std::string& line : lines) screen += Cut(line, width) + "\n";
  screen += "\n" + ScreenLine(text.foot, width) + "\n" + ScreenLine(text.said, width) + "\n";
  return screen + ScreenLine(text.field, width);
}

}  // namespace kxbench
