#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "bench/drawing/Drawing.h"
#include "bench/drawing/DrawingPinNotes.h"

namespace kxbench::drawing {

/// How a net is drawn where something is wrong with it.
enum class NetMark {
  None,
  Concerned,  ///< red
  Shorted,    ///< red and bold
};

enum class ExtraKind {
  Short,     ///< where two nets are connected, as near as is known
  Move,      ///< from a contact to the one its wire lies on
  Excluded,  ///< a pair that a check leaves out
};

/// A line between two pins that is no net.
struct ExtraLine {
  ExtraKind kind;
  std::size_t from;  ///< index of HarnessPicture::pins
  std::size_t to;
  bool bothWays = false;  ///< Move: the other wire lies here
};

/// What faults change in a picture.
struct Marks {
  std::vector<std::vector<PinNote>> notes;      ///< of each pin
  std::vector<bool> cameOff;                    ///< of each pin: its line is drawn as open
  std::vector<NetMark> nets;                    ///< of each net of the picture
  std::vector<ExtraLine> extras;                ///< at most one at each pin
  std::set<std::string> connectors;             ///< with a wrong plug on
  std::vector<std::vector<std::size_t>> shown;  ///< of each fault: the nets concerned
};

/// Pairs left out of a check are drawn as lines up to this many.
inline constexpr std::size_t MostExcludedLines = 24;

Marks MarksIn(const HarnessPicture& picture, const std::vector<FaultMark>& faults);

/// How a pin is called: "A1-L", "X1.3", or "14" when it has a channel alone.
std::string PinLabel(const DrawnPin& pin);

/// "14 (A1-L)" as far as both are known.
std::string LongPinLabel(const DrawnPin& pin);

}  // namespace kxbench::drawing
