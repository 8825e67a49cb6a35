#pragma once

#include <string>
#include <vector>

#include "bench/drawing/DrawingLayout.h"

namespace kxbench::drawing {

/// A whole drawing, in pixels.
struct DrawingFrame {
  double width = 0;
  double height = 0;
  double head = 0;  ///< where the layout begins, below the title
  double left = 0;  ///< and right of the margin
};

/// The least size of texts on paper, in points, unless a drawing is wider than that allows.
inline constexpr double LeastPrintedPoints = 6;

/// The name of a connector that began on another sheet.
struct ContinuedBox {
  bool left;  ///< its column
  double x;   ///< the box's outer edge
  std::string title;
};

/// What a sheet of paper shows: the drawing from `top` to `bottom`.
struct PrintedSheet {
  double top = 0;
  double bottom = 0;
  std::vector<ContinuedBox> continued;
};

struct PrintedSheets {
  bool landscape = false;  ///< the paper
  std::vector<PrintedSheet> sheets;
};

/// How a drawing goes on A4: across the paper where it is too wide for texts of LeastPrintedPoints otherwise;
/// on as few sheets as such texts need, about equally high, and cut between two rows.
PrintedSheets SheetsOf(const DrawingLayout& layout, const DrawingFrame& frame);

}  // namespace kxbench::drawing
