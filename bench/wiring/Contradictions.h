#pragma once

#include <cstdint>
#include <vector>

#include "plugin/data/ShorttestData.h"

namespace kxbench::wiring {

/// Two channels that an expectation says are not connected, although a chain of connected pairs leads from
/// one to the other. No device can be like that.
struct Contradiction {
  std::int32_t lower;  ///< channel numbers
  std::int32_t higher;
  std::vector<std::int32_t> chain;  ///< from lower to higher, both included, as short as possible
};

/// All of them, by their channels.
std::vector<Contradiction> ContradictionsIn(const TShortTestData& expectation);

}  // namespace kxbench::wiring
