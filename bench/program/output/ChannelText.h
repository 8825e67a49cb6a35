#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bench/wiring/ChannelNames.h"

namespace kxbench {

/// "1, 3-7, 12": ascending channel numbers, runs of three or more shortened; "none" for none. A channel with
/// a name stands alone, with its name: "1 (A1-L), 3-7".
std::string ChannelListText(const std::vector<std::int32_t>& channels,
                            const wiring::ChannelNames& names = wiring::ChannelNames());

/// "1 (A1-L) - 14": a pair of channels.
std::string PairText(std::int32_t a, std::int32_t b, const wiring::ChannelNames& names);

}  // namespace kxbench
