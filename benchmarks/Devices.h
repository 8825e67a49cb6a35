#pragma once

#include <cstdint>
#include <vector>

#include "plugin/data/ShorttestData.h"

/// Devices to measure the procedures with, as the net of each channel, and what a check expects of them.
namespace devices {

using Nets = std::vector<int>;

/// The typical harness: each channel of one half is wired to one of the other.
Nets Cable(std::int32_t channels);

/// All channels are one net.
Nets OneNet(std::int32_t channels);

/// Two nets of half the channels each.
Nets TwoNets(std::int32_t channels);

/// Channels 1 to `channels`: pairs of one net connected, all others not.
TShortTestData Expectation(const Nets& nets);

}  // namespace devices
