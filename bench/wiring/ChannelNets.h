#pragma once

#include <cstdint>
#include <vector>

#include "plugin/data/ShorttestData.h"

namespace kxbench::wiring {

/// A connection matrix as nets of channels. All numbers are channel numbers, ascending.
struct ChannelNets {
  std::vector<std::vector<std::int32_t>> nets;  ///< of two channels and more, by their first channel
  std::vector<std::int32_t> unconnected;        ///< channels in use that are connected to nothing
  std::vector<std::int32_t> suspended;          ///< channels that take no part
};

/// The nets of `data`. A chain of connected pairs is one net, also where the pair of its ends is not marked
/// as connected. Takes time in proportion to the number of cells.
ChannelNets NetsOf(const TShortTestData& data);

}  // namespace kxbench::wiring
