#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/learning/LearnRun.h"

namespace kxbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(LearnSummary, FindsNetsThroughTheirMembers) {
  TShortTestData data(11, 16);
  data.Put(0, 3, CellState::Connected, 0.1);
  data.Put(3, 5, CellState::Connected, 0.1);
  data.Put(1, 2, CellState::Connected, 0.1);
  LearnSummary summary;
  DescribeLearned(data, summary);
  EXPECT_THAT(summary.nets, ElementsAre(ElementsAre(11, 14, 16), ElementsAre(12, 13)));
  EXPECT_THAT(summary.unconnected, ElementsAre(15));
  EXPECT_EQ(summary.firstChannel, 11);
  EXPECT_EQ(summary.lastChannel, 16);
}

TEST(LearnSummary, FollowsAChainOfPairsThatWasNeverClosed) {
  // As a hand-made file may have it: 1-3 and 3-2, but nothing about 1-2.
  TShortTestData data(1, 3);
  data.SetC(2, 0, CellState::Connected, 0.1);
  data.SetC(2, 1, CellState::Connected, 0.1);
  LearnSummary summary;
  DescribeLearned(data, summary);
  EXPECT_THAT(summary.nets, ElementsAre(ElementsAre(1, 2, 3)));
}

TEST(LearnSummary, SuspendedChannelsAreNotUnconnected) {
  TShortTestData data(1, 2);
  data.SuspendChannel(0, -4.5);
  LearnSummary summary;
  DescribeLearned(data, summary);
  ASSERT_EQ(summary.suspended.size(), 1U);
  EXPECT_EQ(summary.suspended[0].channel, 1);
  EXPECT_EQ(summary.suspended[0].volts, -4.5);
  EXPECT_THAT(summary.unconnected, ElementsAre(2));
}

TEST(LearnSummary, OfAnEmptyRangeIsEmpty) {
  LearnSummary summary;
  DescribeLearned(TShortTestData(5, 4), summary);
  EXPECT_THAT(summary.nets, IsEmpty());
  EXPECT_THAT(summary.unconnected, IsEmpty());
}

}  // namespace
}  // namespace kxbench
