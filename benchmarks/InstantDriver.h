#pragma once

#include <cstdint>
#include <vector>

/// A driver that answers at once: what a procedure takes with it is the procedure's own time and its waits.
/// Every reading finds out in constant time whether a net lies on both lines. Linking `instant_driver` gives
/// a program the driver's nine functions; the library in bin/instant is the same for programs that load one,
/// and connects a cable of 48 channels (channel i to i + 24).
namespace instant {

/// Connects a device: channel 1 belongs to net nets[0] and so on; equal numbers (from 0) are one net. All
/// relays open, releases counted from 0.
void Connect(const std::vector<int>& nets);

/// Single channel relays opened since Connect. Each is followed by a wait of 1 ms: their sum is the least
/// time that a procedure can take.
std::int64_t Releases();

/// Whether no channel relay is closed.
bool AllOpen();

}  // namespace instant
