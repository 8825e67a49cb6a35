#pragma once

#include <string>

namespace kxbench {

/// What a progress line shows.
struct ProgressState {
  std::string caption;  ///< UTF-8
  std::string hint;     ///< how to cancel; left out where there is no room
  double fraction = 0;  ///< 0.0 to 1.0
  double seconds = 0;   ///< since the start
};

/// "0:07", "12:34", "1:02:03".
std::string DurationText(double seconds);

/// "42 %", rounded down, so that 100 % means the end.
std::string PercentText(double fraction);

/// One line without its end, at most `columns` characters: caption, bar, percent, time, hint. In a narrow
/// terminal the hint goes first, then the bar, then the end of the line.
std::string ProgressBarText(const ProgressState& state, int columns, bool unicode);

/// The same for output that is not a terminal: "Caption: 42 %, 0:07".
std::string ProgressLineText(const ProgressState& state);

}  // namespace kxbench
