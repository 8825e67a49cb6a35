#include "bench/drawing/DrawingSheets.h"

#include <algorithm>
#include <cmath>

namespace kxbench::drawing {

namespace {

// 190 by 277 mm: A4 with margins of 10 mm.
constexpr double ShortSide = 718;
constexpr double LongSide = 1046;
constexpr double LeastScale = LeastPrintedPoints / (FontSize * 0.75);  // of points by a pixel

/// A line that lies in the cut would be half on either sheet.
bool IsClear(const DrawingLayout& layout, double y) {
  constexpr double room = 3;
  return std::none_of(layout.extras.begin(), layout.extras.end(), [&](const DrawnExtra& extra) {
    return std::any_of(extra.points.begin(), extra.points.end(),
                       [&](const Point& point) { return std::abs(point.y - y) < room; });
  });
}

/// The rows of both columns stand in one grid. Everything of a row but extra lines keeps off its edges.
double EdgeNear(const DrawingLayout& layout, double y) {
  constexpr int farthest = 3;
  const double nearest = std::round(y / layout.rowHeight);
  for (int distance = 0; distance <= farthest; ++distance) {
    for (const int rows : {-distance, distance}) {
      const double edge = (nearest + rows) * layout.rowHeight;
      if (IsClear(layout, edge)) return edge;
    }
  }
  return nearest * layout.rowHeight;
}

std::vector<ContinuedBox> ContinuedAt(const DrawingLayout& layout, const DrawingFrame& frame, double y) {
  std::vector<ContinuedBox> continued;
  for (const DrawnBox& box : layout.boxes) {
    if (frame.head + box.top >= y || frame.head + box.top + box.height <= y) continue;
    const double edge = box.left ? layout.left.x : layout.right.x + layout.right.width;
    continued.push_back({box.left, frame.left + edge, box.title});
  }
  return continued;
}

}  // namespace

PrintedSheets SheetsOf(const DrawingLayout& layout, const DrawingFrame& frame) {
  PrintedSheets printed;
  printed.landscape = frame.width * LeastScale > ShortSide;
  const double paperWidth = printed.landscape ? LongSide : ShortSide;
  const double paperHeight = printed.landscape ? ShortSide : LongSide;
  const double scale = std::min(LeastScale, paperWidth / frame.width);
  double top = 0;
  for (double left = std::ceil(frame.height * scale / paperHeight); left > 0; --left) {
    double bottom = frame.height;
    if (left > 1) {
      const double wanted = top + (frame.height - top) / left - frame.head;
      bottom = frame.head + EdgeNear(layout, std::min(wanted, layout.height));
    }
    printed.sheets.push_back({top, bottom, ContinuedAt(layout, frame, top)});
    top = bottom;
  }
  return printed;
}

}  // namespace kxbench::drawing
