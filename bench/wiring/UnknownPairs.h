#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "plugin/data/ShorttestData.h"

namespace kxbench::wiring {

/// The pairs of channel numbers, the lower first and ascending, of which the expectation says neither that
/// they are connected nor that they are not, nor excludes them: unknown ones, and those whose cell holds no
/// state. No check tests them. Pairs of suspended channels are left out.
std::vector<std::pair<std::int32_t, std::int32_t>> UnknownPairsIn(const TShortTestData& expectation);

}  // namespace kxbench::wiring
