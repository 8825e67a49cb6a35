#pragma once

#include <string>
#include <vector>

#include "bench/drawing/Drawing.h"
#include "bench/drawing/DrawingMarks.h"
#include "bench/drawing/DrawingSheets.h"

namespace kxbench::drawing {

/// An <svg> element with what is to be known of it for printing.
struct SvgDrawing {
  std::string text;
  double width = 0;
  PrintedSheets printed;
};

/// SvgOf, where the marks are known already. `id` is the element's own; empty: none.
SvgDrawing SvgElement(const HarnessPicture& picture, const std::vector<FaultMark>& faults, const Marks& marks,
                      const DrawingOptions& options, const std::string& id = {});

}  // namespace kxbench::drawing
