#pragma once

#include <cstdint>
#include <string>

namespace kxbench {

struct ChannelRange {
  std::int32_t first;  ///< channel numbers, from 1
  std::int32_t last;   ///< inclusive
};

/// "FIRST-LAST". Throws Failure.
ChannelRange ReadChannels(const std::string& text);

/// A resistance above 0 Ohm, with a decimal point or comma. Throws Failure.
double ReadThreshold(const std::string& text);

}  // namespace kxbench
