#pragma once

#include <string>

#include "bench/program/station/StationFace.h"
#include "ui/terminal/Keyboard.h"

namespace kxbench {

/// A word in letters of several lines, as large as `columns` and `rows` allow: lines, each ended, of the
/// character `pixel` and blanks. Empty when not even the smallest letters fit.
std::string LargeWord(const std::string& word, int columns, int rows, const std::string& pixel);

/// What a station's screen shows below the large word; the last line is the field.
struct ScreenText {
  std::string word;    ///< "PASS"; empty: no large word
  std::string colour;  ///< SGR parameters of the word, "1;32"
  std::string head;    ///< what it is about: "PASS  SN-1"
  std::vector<std::string> lines;
  std::string foot;   ///< counters
  std::string said;   ///< a line on what was not accepted
  std::string field;  ///< "Serial number: SN-"
};

/// The whole screen, for a terminal of this size; harmless whatever the texts.
std::string ScreenOf(const ScreenText& text, TerminalSize size, bool unicode, bool colours);

}  // namespace kxbench
