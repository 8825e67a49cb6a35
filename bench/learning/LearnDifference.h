#pragma once

#include "bench/learning/LearnModule.h"
#include "plugin/data/ShorttestData.h"

namespace kxbench {

/// How `after` differs from `before` over the channels of both. The pairs come in the order of their
/// channels.
LearnDifference DifferenceOf(const TShortTestData& before, const TShortTestData& after);

}  // namespace kxbench
