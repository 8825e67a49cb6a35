#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

#include "plugin/data/ShorttestData.h"

/// Relays and lines of the relay cards, through the driver library. Every card has 48 channels and two lines;
/// the instrument measures between line 0 and line 1. Channel numbers count from 1 and are not validated:
/// callers pass channels between `von` and `bis`.
///
/// One thread at a time. Unless stated otherwise, a routine raises TShortTestHWException when the driver
/// holds an error after its call, be it of that call or an older one.

/// A driver error; its message (UTF-8) is the driver's own text.
class TShortTestHWException : public std::runtime_error {
 public:
  explicit TShortTestHWException(const std::string& message) : std::runtime_error(message) {}
};

/// Number of channels that the fitted cards provide: 48 a card, 240 at most. Written by InitHardware only;
/// 0 before it first succeeded.
extern std::int32_t HWChannelCount;

/// Raises TShortTestHWException with the driver's text if the driver holds an error. The error stays pending
/// until InitHardware or ResetHardware clears it.
void CheckHWError();

/// Closes the channel's relay on line 0 or 1. Does not wait: only opening needs time to settle.
void ConnectChannel(std::int32_t channel, std::int32_t line);

/// Opens the channel's relay on line 0 or 1 and waits 1 ms.
void ReleaseChannel(std::int32_t channel, std::int32_t line);

/// Clears the driver's error, resets the first card's lines and probes for up to five cards, which sets
/// HWChannelCount. False, with HWChannelCount unchanged, when no card answers and the driver has no error to
/// tell; raises when it has one.
bool InitHardware();

/// Clears the driver's error and resets the lines of the first card.
void ResetHardware();

/// Closes the measurement set-up's auxiliary relays on every card that the range of `data` needs.
/// `resetFirst` opens everything before; without it channel relays that are closed stay closed. Throws
/// std::out_of_range, before any call, for a range beyond the 64 cards that the bus can address: it comes
/// from a damaged file and would take minutes.
void PrepareCards(const TShortTestData& data, bool resetFirst);

/// Opens every relay of every card that the range of `data` needs. Never raises: it serves clean-ups, where a
/// second error must not replace the first.
void ReleaseAllLines(const TShortTestData& data) noexcept;

namespace shorttest {

/// Closes the terminating-resistor relay, if `data` names one.
void SwitchTerminationOn(const TShortTestData& data);

/// Opens the terminating-resistor relay, if `data` names one. Never raises, like ReleaseAllLines.
void SwitchTerminationOff(const TShortTestData& data) noexcept;

/// The card (from 0) of the channel behind the range, when a voltage pass over `data` switches that channel
/// and ReleaseAllLines does not reach it: every channel is suspended, and the range ends with its last card.
/// Whoever runs the pass asks before and opens line 1 of that card afterwards.
std::optional<std::int32_t> CardBehindRange(const TShortTestData& data) noexcept;

/// Opens every relay of one line of one card. Never raises: it serves clean-ups.
void ReleaseLine(std::int32_t card, std::int32_t line) noexcept;

/// What was asked of the hardware since the library was loaded.
struct HardwareUsage {
  std::int64_t readings = 0;         ///< readings of the instrument
  std::int64_t relayOperations = 0;  ///< relays opened or closed, and line resets
};

/// The running count; for reports. Differences of two values tell what a procedure took.
HardwareUsage& Usage();

}  // namespace shorttest
