#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <vector>

#include "bench/proof/SelfTestRelays.h"

/// What is measured on an empty fixture, before anything is concluded from it.
///
/// "Reaches" means: there is a way from line 0 to line 1, through relays and the fixture. Closing one more
/// relay can only make a way, so a few readings with many relays closed settle much.

namespace kxbench {

/// What was read of one channel. With the pieces of its own card alone on the lines: `path`, `from0`,
/// `from1`; with those of all cards: the rest.
struct ChannelReadings {
  std::int32_t channel = 0;  ///< from 1
  bool path = false;   ///< with both of its relays closed line 0 reaches line 1 through less than 10 Ohm
  bool from0 = false;  ///< with its relay on line 0 alone
  bool from1 = false;  ///< with its relay on line 1 alone
  bool from0Anywhere = false;
  bool from1Anywhere = false;
  bool toOthers = false;    ///< on line 0, it reaches another channel's relay on line 1
  bool fromOthers = false;  ///< on line 1, it is reached from another channel's relay on line 0
};

/// With one piece of each of two cards connected, and these two channels' relays closed, line 0 reaches
/// line 1; without either it does not, or that one never opens.
struct WayBetweenCards {
  std::int32_t from = 0;  ///< channel
  std::int32_t fromLine = 0;
  bool fromStuck = false;  ///< its relay never opens
  std::int32_t to = 0;     ///< channel of another card
  std::int32_t toLine = 0;
  bool toStuck = false;
};

/// A channel that reaches what connects the lines of another card, with all relays of that card open.
struct WayToShorted {
  std::int32_t card = 0;
  std::int32_t channel = 0;
};

struct TesterReadings {
  std::vector<ChannelReadings> channels;
  std::set<std::int32_t> shortedCards;  ///< on which line 0 reaches line 1 with every channel's relay open
  bool shortedAcross = false;           ///< the same with all other cards together
  std::vector<WayBetweenCards>
      ways;  ///< only between channels whose relays have defects, and of shorted cards
  std::vector<WayToShorted> wiredToShorted;
};

/// Whether there is a way from line 0 to line 1 through less than 100 kOhm.
bool LinesReachEachOther();

/// Called before each channel of each step with the position, 0.0 to 1.0; throws to end the test.
using SelfTestProgress = std::function<void(double position)>;

/// Measures `channels`, ascending, all on cards that answer. The fixture carries no voltage.
TesterReadings MeasureChannels(const TestedCards& cards, const std::vector<std::int32_t>& channels,
                               const SelfTestProgress& progress);

}  // namespace kxbench
