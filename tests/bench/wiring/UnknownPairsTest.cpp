#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/wiring/UnknownPairs.h"

namespace kxbench::wiring {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// Channels 11 to 14: the first two connected, the last two excluded, all other pairs open.
TShortTestData AllKnown() {
  TShortTestData data(11, 14);
  for (std::int32_t i = 0; i < 4; ++i) {
    for (std::int32_t j = 0; j < i; ++j) data.SetC(i, j, CellState::NotConnected, NoResistance);
  }
  data.SetC(1, 0, CellState::Connected, NoResistance);
  data.SetC(3, 2, CellState::ExcludedPair, NoResistance);
  return data;
}

TEST(UnknownPairsTest, AreNoneWhereEachPairIsConnectedOpenOrExcluded) {
  EXPECT_THAT(UnknownPairsIn(AllKnown()), IsEmpty());
}

TEST(UnknownPairsTest, AreThoseWithoutAStateToo) {
  TShortTestData data = AllKnown();
  data.SetC(2, 0, CellState::Unknown, NoResistance);
  data.SetC(3, 1, static_cast<CellState>(5), NoResistance);
  data.SetC(2, 1, CellState::NotTestable, NoResistance);
  EXPECT_THAT(UnknownPairsIn(data), ElementsAre(Pair(11, 13), Pair(12, 13), Pair(12, 14)));
}

TEST(UnknownPairsTest, AreNotThoseOfSuspendedChannels) {
  TShortTestData data = AllKnown();
  data.SetC(2, 2, CellState::Suspended, NoResistance);
  data.SetC(2, 0, CellState::Unknown, NoResistance);
  data.SetC(3, 2, CellState::Unknown, NoResistance);
  EXPECT_THAT(UnknownPairsIn(data), IsEmpty());
}

}  // namespace
}  // namespace kxbench::wiring
