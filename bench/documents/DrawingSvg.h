#pragma once

#include <string>
#include <vector>

#include "bench/documents/Drawing.h"
#include "bench/documents/DrawingMarks.h"

namespace kxbench::documents {

/// SvgOf, where the marks are known already.
std::string SvgElement(const HarnessPicture& picture, const std::vector<FaultMark>& faults,
                       const Marks& marks, const DrawingOptions& options);

}  // namespace kxbench::documents
