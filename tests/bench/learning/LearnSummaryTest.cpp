#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/learning/LearnDifference.h"
#include "bench/learning/LearnRun.h"
#include "bench/learning/NearMisses.h"

namespace kxbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(LearnSummary, TellsNetsAndChannels) {
  TShortTestData data(11, 16);
  data.Put(0, 3, CellState::Connected, 0.1);
  data.SuspendChannel(4, -4.5);
  LearnSummary summary;
  DescribeLearned(data, summary);
  EXPECT_THAT(summary.nets, ElementsAre(ElementsAre(11, 14)));
  EXPECT_THAT(summary.unconnected, ElementsAre(12, 13, 16));
  ASSERT_EQ(summary.suspended.size(), 1U);
  EXPECT_EQ(summary.suspended[0].channel, 15);
  EXPECT_EQ(summary.suspended[0].volts, -4.5);
  EXPECT_EQ(summary.firstChannel, 11);
  EXPECT_EQ(summary.lastChannel, 16);
}

TEST(LearnSummary, OfAnEmptyRangeIsEmpty) {
  LearnSummary summary;
  DescribeLearned(TShortTestData(5, 4), summary);
  EXPECT_THAT(summary.nets, IsEmpty());
  EXPECT_THAT(summary.unconnected, IsEmpty());
}

/// A matrix as the isolation pass leaves it: the reading of each unconnected channel for each pair that is
/// not decided.
class IsolatedChannels : public testing::Test {
 protected:
  IsolatedChannels() { data_.Schwelle = 10; }

  void Reads(std::int32_t channel, double ohm) {
    for (std::int32_t j = 0; j <= data_.Highconnections(); ++j) {
      data_.Put(channel - 1, j, CellState::NotConnected, ohm);
    }
    unconnected_.push_back(channel);
  }

  std::vector<std::pair<std::int32_t, double>> NearMisses() const {
    std::vector<std::pair<std::int32_t, double>> found;
    for (const NearMiss& miss : NearMissesOf(data_, unconnected_)) found.emplace_back(miss.channel, miss.ohm);
    return found;
  }

  TShortTestData data_{1, 5};
  std::vector<std::int32_t> unconnected_;
};

TEST_F(IsolatedChannels, JustAboveTheThresholdAreNearMisses) {
  Reads(1, 1e9);
  Reads(2, 10.5);
  Reads(3, 10.6);
  Reads(4, 1e9);
  Reads(5, 1e9);
  EXPECT_THAT(NearMisses(), ElementsAre(std::pair(2, 10.5), std::pair(3, 10.6)));
}

TEST_F(IsolatedChannels, FromTheThresholdToATenthAboveItAreNearMisses) {
  Reads(1, 10.0);
  Reads(2, 10.999);
  Reads(3, 11.0);
  Reads(4, 11.5);
  EXPECT_THAT(NearMisses(), ElementsAre(std::pair(1, 10.0), std::pair(2, 10.999)));
}

TEST_F(IsolatedChannels, ToANetAreNearMissesToo) {
  Reads(4, 10.5);
  data_.Put(1, 0, CellState::Connected, 0.1);
  EXPECT_THAT(NearMisses(), ElementsAre(std::pair(4, 10.5)));
}

TEST_F(IsolatedChannels, OfWhichNoReadingIsLeftAreNotTold) {
  Reads(1, 1e9);
  Reads(2, 1e9);
  Reads(3, 1e9);
  Reads(4, 10.5);
  Reads(5, 10.5);
  EXPECT_THAT(NearMisses(), ElementsAre(std::pair(4, 10.5)))
      << "all pairs of the last one have another's reading";
}

TEST(LearnDifference, CountsAndListsThePairsThatChanged) {
  TShortTestData before(1, 4);
  before.Put(1, 0, CellState::Connected, 0.1);
  before.SetC(3, 0, CellState::ExcludedPair, -1);
  TShortTestData after = before;
  after.SetC(1, 0, CellState::NotConnected, 1e9);
  after.SetC(3, 2, CellState::Connected, 0.3);
  const LearnDifference difference = DifferenceOf(before, after);
  EXPECT_EQ(difference.pairs, 6);
  EXPECT_EQ(difference.changed, 2);
  ASSERT_EQ(difference.listed.size(), 2U);
  EXPECT_EQ(difference.listed[0].lower, 1);
  EXPECT_EQ(difference.listed[0].higher, 2);
  EXPECT_EQ(difference.listed[0].before, "connected");
  EXPECT_EQ(difference.listed[0].after, "open");
  EXPECT_EQ(difference.listed[1].before, "unknown");
  EXPECT_EQ(difference.listed[1].after, "connected");
}

TEST(LearnDifference, ComparesChannelsByTheirNumbers) {
  TShortTestData before(1, 4);
  before.Put(3, 2, CellState::Connected, 0.1);
  TShortTestData after(3, 8);
  after.Put(1, 0, CellState::Connected, 0.1);
  const LearnDifference difference = DifferenceOf(before, after);
  EXPECT_EQ(difference.firstChannel, 3);
  EXPECT_EQ(difference.lastChannel, 4);
  EXPECT_EQ(difference.pairs, 1);
  EXPECT_EQ(difference.changed, 0);
}

TEST(LearnDifference, ListsSoManyPairsAndNoMore) {
  const TShortTestData before(1, 100);
  TShortTestData after = before;
  for (std::int32_t i = 1; i < 100; ++i) after.SetC(i, 0, CellState::NotConnected, 1e9);
  const LearnDifference difference = DifferenceOf(before, after);
  EXPECT_EQ(difference.changed, 99);
  EXPECT_EQ(difference.listed.size(), MostListedPairs);
}

}  // namespace
}  // namespace kxbench
