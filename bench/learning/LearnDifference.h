#pragma once

#include "bench/learning/LearnModule.h"
#include "plugin/data/ShorttestData.h"

namespace kxbench {

/// What `after` says of the pairs of channels that are in `before`, too, and `before` does not. The pairs
/// come in the order of their channels.
LearnDifference DifferenceOf(const TShortTestData& before, const TShortTestData& after);

}  // namespace kxbench
