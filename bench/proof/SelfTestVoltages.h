#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "bench/proof/SelfTestReadings.h"

namespace kxbench {

/// The channels that carry half a volt or more, with what was read, volts: against the tester's ground, or
/// against another channel, which is then listed too. `channels` are ascending, all on cards that answer.
std::map<std::int32_t, double> LiveChannels(const TestedCards& cards,
                                            const std::vector<std::int32_t>& channels,
                                            const SelfTestProgress& progress);

}  // namespace kxbench
