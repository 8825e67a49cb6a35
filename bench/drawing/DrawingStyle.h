#pragma once

#include <array>
#include <string>

#include "bench/drawing/DrawingMarks.h"

namespace kxbench::drawing {

// Pixels
inline constexpr double DrawingMargin = 16;
inline constexpr double TextLineHeight = 16;  ///< of the texts above and below the drawing

inline constexpr const char* Red = "#c8102e";
inline constexpr const char* Black = "#1a1a1a";
inline constexpr const char* Grey = "#5c5c5c";
inline constexpr const char* OtherNets = "#808080";  ///< beside faults

/// Dark enough for black-and-white paper, and none of them near red.
inline constexpr std::array<const char*, 7> NetColours = {"#1b4f9c", "#7a4a00", "#0b6b3a", "#6a2c91",
                                                          "#00666e", "#333333", "#5b6b00"};

/// How a line is drawn.
struct LineStyle {
  const char* colour;
  double width;
  const char* dashes;  ///< empty: none
};

inline constexpr LineStyle OpenStyle{Red, 2.2, "7 5"};
inline constexpr LineStyle ShortedStyle{Red, 3.4, ""};
inline constexpr LineStyle ConcernedStyle{Red, 2.2, ""};

LineStyle StyleOf(ExtraKind kind);

/// ' name="value"'. The value is XML already.
std::string Attribute(const std::string& name, const std::string& value);
std::string Attribute(const std::string& name, double value);

/// The attributes of a line.
std::string Attributes(const LineStyle& style);

enum class Anchor { Start, Middle, End };

/// A text element whose middle is at `middle`; nothing for an empty text. `attributes` as Attribute gives
/// them.
std::string TextElement(double x, double middle, Anchor anchor, const std::string& text,
                        const std::string& attributes = "");

enum class Direction { Left, Right };

/// An arrow's head whose point is at (x, y).
std::string ArrowHead(double x, double y, Direction direction);

}  // namespace kxbench::drawing
