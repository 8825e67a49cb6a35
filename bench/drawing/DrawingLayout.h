#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "bench/drawing/Drawing.h"
#include "bench/drawing/DrawingMarks.h"

namespace kxbench::drawing {

struct Point {
  double x = 0;
  double y = 0;
};

/// A pin's row in its box. Texts are as they are written, shortened where they are long.
struct DrawnRow {
  std::size_t pin;
  double y;    ///< of its middle
  Point port;  ///< where its net's line begins, on the box's edge
  std::string name;
  std::string channel;
  std::string note;
};

/// All boxes of a column are equally wide.
struct DrawnBox {
  bool left;
  double top;
  double height;
  std::string title;
  std::string fullTitle;
  bool wrongPlug = false;
  std::vector<DrawnRow> rows;
};

/// Where a column's texts stand.
struct DrawnColumn {
  double x = 0;
  double width = 0;
  double nameX = 0;     ///< left column: of their ends; right column: of their beginnings
  double noteX = 0;     ///< the same
  double channelX = 0;  ///< of their ends, in both columns
};

/// A part of a net's line: horizontal from a pin to the trunk, or a whole wire of two pins.
struct DrawnBranch {
  std::vector<std::size_t> pins;  ///< at its first point, and where it has two at its last
  std::vector<Point> points;
  bool open = false;
};

struct DrawnLine {
  std::size_t net;
  NetMark mark;
  std::size_t colour;  ///< neighbours have different numbers
  std::vector<DrawnBranch> branches;
  std::vector<Point> trunk;  ///< two points, or none
  std::vector<Point> dots;
};

struct DrawnExtra {
  ExtraLine line;
  std::vector<Point> points;  ///< from the pin `line.from` to the pin `line.to`
};

/// Where everything of a drawing is, from its upper left corner: boxes and lines, without titles and lists.
struct DrawingLayout {
  double width = 0;
  double height = 0;
  double rowHeight = 0;
  DrawnColumn left;
  DrawnColumn right;  ///< of width 0, where there is none
  std::vector<DrawnBox> boxes;
  std::vector<DrawnLine> lines;
  std::vector<DrawnExtra> extras;
};

/// Height of the drawing's texts, and of connectors' names.
inline constexpr double FontSize = 11;
inline constexpr double TitleSize = 12;

/// Whether lines of different nets, or extra lines, cross.
bool LinesCross(const DrawingLayout& layout);

DrawingLayout LaidOut(const HarnessPicture& picture, const Marks& marks);

}  // namespace kxbench::drawing
