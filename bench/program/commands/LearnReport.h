#pragma once

#include <string>
#include <vector>

#include "bench/learning/LearnModule.h"
#include "bench/wiring/ChannelNames.h"

namespace kxbench {

/// What is printed after learning. Channels that have a name carry it.
std::string LearnReport(const std::string& file, const LearnSummary& summary,
                        const wiring::ChannelNames& names = wiring::ChannelNames());

/// What is printed before an expectation is replaced: how many pairs differ, and which, a line each.
std::vector<std::string> DifferenceLines(const std::string& file, const LearnDifference& difference,
                                         const wiring::ChannelNames& names = wiring::ChannelNames());

}  // namespace kxbench
