#pragma once

#include <string>
#include <vector>

#include "bench/drawing/Drawing.h"

namespace kxbench::drawing {

/// "20 channels, 7 nets, 6 single, 2 suspended".
std::string SummaryText(const HarnessPicture& picture);

/// "1 (A1-L), 14 (B1-L)".
std::string NetText(const HarnessPicture& picture, const DrawnNet& net);

/// The pairs that a check leaves out, a line for each first pin: "3 (A3) – 4 (A4), 5 (A5)".
std::vector<std::string> ExcludedTexts(const HarnessPicture& picture);

}  // namespace kxbench::drawing
