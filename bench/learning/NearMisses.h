#pragma once

#include <vector>

#include "bench/learning/LearnModule.h"
#include "plugin/data/ShorttestData.h"

namespace kxbench {

/// The channels of `unconnected` (channel numbers, ascending) whose resistance to all the others together was
/// measured from the threshold up to a tenth above it, as far as `data`, fresh from learning, shows. Learning
/// measures such a channel once, against all the others, and enters the reading for each of its pairs that is
/// not decided by then: a pair of two such channels has the reading of the lower one. So the reading of a
/// channel is lost when each of its pairs is excluded, or with a lower channel of this kind.
std::vector<NearMiss> NearMissesOf(const TShortTestData& data, const std::vector<std::int32_t>& unconnected);

}  // namespace kxbench
