#pragma once

#include <chrono>
#include <string>

#include "bench/wiring/ChannelNames.h"
#include "bench/wiring/ExpectationFacts.h"

namespace kxbench {

using SavedAt = std::chrono::system_clock::time_point;

/// What an expectation file holds, to read. Channels that have a name carry it; the time is the user's.
std::string ExpectationReport(const std::string& file, const wiring::ExpectationFacts& facts,
                              const wiring::ChannelNames& names, SavedAt saved);

/// The same as one JSON object, described in docs/user-guide.md; the time is UTC.
std::string ExpectationJson(const std::string& file, const wiring::ExpectationFacts& facts,
                            const wiring::ChannelNames& names, SavedAt saved);

}  // namespace kxbench
