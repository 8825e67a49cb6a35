#pragma once

#include <string>
#include <vector>

#include "bench/drawing/Drawing.h"
#include "bench/drawing/DrawingLayout.h"

namespace kxbench::drawing {

/// A drawing whose signs are explained.
struct NotedDrawing {
  const HarnessPicture& picture;
  const std::vector<FaultMark>& faults;
  const DrawingLayout& layout;
  double width;  ///< of all, margins among it
};

struct Notes {
  std::string svg;
  double bottom;
};

/// What stands below the drawing, from `y` on: what its lines mean, as far as they occur; the faults, where
/// they are wanted; the pairs that a check leaves out.
Notes NotesBelow(const NotedDrawing& drawing, double y, bool faultList);

}  // namespace kxbench::drawing
