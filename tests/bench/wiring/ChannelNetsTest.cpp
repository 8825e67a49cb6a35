#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/wiring/ChannelNets.h"

namespace kxbench::wiring {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ChannelNets, FollowTheirMembers) {
  TShortTestData data(11, 16);
  data.Put(0, 3, CellState::Connected, 0.1);
  data.Put(3, 5, CellState::Connected, 0.1);
  data.Put(1, 2, CellState::Connected, 0.1);
  const ChannelNets found = NetsOf(data);
  EXPECT_THAT(found.nets, ElementsAre(ElementsAre(11, 14, 16), ElementsAre(12, 13)));
  EXPECT_THAT(found.unconnected, ElementsAre(15));
  EXPECT_THAT(found.suspended, IsEmpty());
}

TEST(ChannelNets, FollowAChainOfPairsThatWasNeverClosed) {
  // As a hand-made file may have it: 1-3 and 3-2, but nothing about 1-2.
  TShortTestData data(1, 3);
  data.SetC(2, 0, CellState::Connected, 0.1);
  data.SetC(2, 1, CellState::Connected, 0.1);
  EXPECT_THAT(NetsOf(data).nets, ElementsAre(ElementsAre(1, 2, 3)));
}

TEST(ChannelNets, SuspendedChannelsAreNotUnconnected) {
  TShortTestData data(1, 2);
  data.SuspendChannel(0, -4.5);
  const ChannelNets found = NetsOf(data);
  EXPECT_THAT(found.suspended, ElementsAre(1));
  EXPECT_THAT(found.unconnected, ElementsAre(2));
}

TEST(ChannelNets, OfAnEmptyRangeAreNone) {
  const ChannelNets found = NetsOf(TShortTestData(5, 4));
  EXPECT_THAT(found.nets, IsEmpty());
  EXPECT_THAT(found.unconnected, IsEmpty());
}

}  // namespace
}  // namespace kxbench::wiring
