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
/// One thread at a time. Unless stated otherwise, a routine throws TShortTestHWException when the driver
/// holds an error after its call, be it of that call or an older one.

/// A driver error; its message (UTF-8) is the driver's own text.
class TShortTestHWException : public std::runtime_error {
 public:
  explicit TShortTestHWException(const std::string& message) : std::runtime_error(message) {}
};

/// Number of channels that the fitted cards provide: 48 a card, 240 at most. Written by InitHardware only;
/// 0 before it first succeeded.
extern std::int32_t HWChannelCount;

/// Throws TShortTestHWException with the driver's text, converted from the system's 8-bit encoding, if the
/// driver holds an error; a driver that hands out no text yields one that says so. The error stays pending
/// until InitHardware or ResetHardware clears it.
void CheckHWError();

/// Closes the channel's relay on line 0 or 1. Does not wait: only opening needs time to settle.
void ConnectChannel(std::int32_t channel, std::int32_t line);

/// Opens the channel's relay on line 0 or 1 and waits 1 ms.
void ReleaseChannel(std::int32_t channel, std::int32_t line);

/// Clears the driver's error, resets the first card's lines and probes for up to five cards, which sets
/// HWChannelCount. When no card answers, HWChannelCount stays as it is: throws if the driver has an error,
/// else returns false.
bool InitHardware();

/// Clears the driver's error and resets the lines of the first card.
void ResetHardware();

/// Closes the auxiliary relays of the measurement set-up on every card that the range of `data` needs. With
/// `resetFirst` every relay of these cards is opened first; without it the channels' relays stay as they are.
/// Throws std::out_of_range, before any call of the driver, when `data.bis` is past the 3,072 channels that
/// the bus has addresses for.
void PrepareCards(const TShortTestData& data, bool resetFirst);

/// Opens every relay of every card that the range of `data` needs. Never throws: it serves clean-ups, where a
/// second error must not replace the first.
void ReleaseAllLines(const TShortTestData& data) noexcept;

namespace shorttest {

/// Closes the auxiliary relays of the measurement set-up on one card (from 0), like PrepareCards on each.
void PrepareCard(std::int32_t card, bool resetFirst);

/// Throws std::logic_error while a TesterInUse lives.
void RequireTesterFree();

/// One procedure's claim on the tester, for as long as it lives. A procedure lets the user interface work,
/// and that may start another one: the two would switch each other's relays, so the later one is refused.
class TesterInUse {
 public:
  /// Throws std::logic_error, before any call of the driver, when the tester is in use.
  TesterInUse();
  ~TesterInUse();
  TesterInUse(const TesterInUse&) = delete;
  TesterInUse& operator=(const TesterInUse&) = delete;
};

/// Closes the terminating-resistor relay, if `data` names one.
void SwitchTerminationOn(const TShortTestData& data);

/// Opens the terminating-resistor relay, if `data` names one. Never throws, like ReleaseAllLines.
void SwitchTerminationOff(const TShortTestData& data) noexcept;

/// The card (from 0) that a voltage pass over `data` uses and ReleaseAllLines does not reach. There can be
/// one when every channel is suspended or the range is empty: the pass then switches the channel after the
/// last, or channel `von`. Whoever runs the pass asks before it and opens line 1 of that card after it.
std::optional<std::int32_t> CardPastRange(const TShortTestData& data) noexcept;

/// Opens every relay of one line of one card. Never throws: it serves clean-ups.
void ReleaseLine(std::int32_t card, std::int32_t line) noexcept;

}  // namespace shorttest
