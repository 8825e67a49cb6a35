#include <gtest/gtest.h>

#include "bench/proof/FaultPlan.h"
#include "tests/bench/proof/ProofFixture.h"

namespace kxbench::proof {
namespace {

using testkit::Harness;

std::vector<std::vector<Channel>> ChannelsOf(const FaultPlan& plan, FaultClass kind) {
  std::vector<std::vector<Channel>> channels;
  for (const ProofFault& fault : plan.faults) {
    if (fault.kind == kind) channels.push_back(fault.channels);
  }
  return channels;
}

using Lists = std::vector<std::vector<Channel>>;

TEST(FaultPlan, HasEveryFaultOfASmallHarness) {
  TShortTestData harness = Harness(5, {{1, 3}, {2, 4}});
  const FaultPlan plan = PlanFaults(harness, {});
  EXPECT_EQ(ChannelsOf(plan, FaultClass::Open), (Lists{{1}, {3}, {2}, {4}}));
  EXPECT_EQ(ChannelsOf(plan, FaultClass::Short), (Lists{{3, 4}, {3, 5}, {4, 5}}));
  EXPECT_EQ(ChannelsOf(plan, FaultClass::ResistiveShort), (Lists{{3, 4}, {3, 5}, {4, 5}}));
  EXPECT_EQ(ChannelsOf(plan, FaultClass::Swapped), (Lists{{1, 2}, {1, 4}, {3, 2}, {3, 4}}));
  EXPECT_EQ(ChannelsOf(plan, FaultClass::Misplaced), (Lists{{1, 5}, {3, 5}, {2, 5}, {4, 5}}));
  EXPECT_EQ(ChannelsOf(plan, FaultClass::HighResistance), (Lists{{1}, {3}, {2}, {4}}));
  EXPECT_EQ(ChannelsOf(plan, FaultClass::Voltage), (Lists{{1}, {1}, {2}, {2}, {5}, {5}}));
  EXPECT_TRUE(ChannelsOf(plan, FaultClass::Tester).empty());
  EXPECT_EQ(plan.mustPass.size(), 3U);
}

TEST(FaultPlan, TakesResistancesFromTheThresholds) {
  TShortTestData harness = Harness(4, {{1, 3}});
  harness.Schwelle = 20;
  harness.Schwelle2 = 100;
  for (const ProofFault& fault : PlanFaults(harness, {}).faults) {
    if (fault.kind == FaultClass::ResistiveShort) {
      EXPECT_DOUBLE_EQ(fault.ohm, 90);
    }
    if (fault.kind == FaultClass::HighResistance) {
      EXPECT_DOUBLE_EQ(fault.ohm, 30);
    }
  }
  harness.Schwelle2 = 5;  // a check works with the lower one then
  for (const ProofFault& fault : PlanFaults(harness, {}).faults) {
    if (fault.kind == FaultClass::ResistiveShort) {
      EXPECT_DOUBLE_EQ(fault.ohm, 18);
    }
  }
}

TEST(FaultPlan, CountsSuspendedChannelsAmongTheSingleOnes) {
  TShortTestData harness = Harness(4, {{1, 2}});
  harness.SuspendChannel(3, 5.0);
  EXPECT_EQ(ChannelsOf(PlanFaults(harness, {}), FaultClass::Short), (Lists{{2, 3}, {2, 4}, {3, 4}}));
}

TEST(FaultPlan, HasEachRelayOfTheRangeTwiceALine) {
  PlanOptions options;
  options.testerFaults = true;
  const FaultPlan plan = PlanFaults(Harness(3, {{1, 2}}), options);
  EXPECT_EQ(plan.totals.at(FaultClass::Tester), 12U);
}

TEST(FaultPlan, SamplesWhatWouldBeTooMuch) {
  const TShortTestData harness = Harness(12, {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
  PlanOptions options;
  options.largestSample = 10;
  const FaultPlan plan = PlanFaults(harness, options);
  EXPECT_EQ(plan.totals.at(FaultClass::Swapped), 27U);
  const Lists sample = ChannelsOf(plan, FaultClass::Swapped);
  EXPECT_EQ(sample.size(), 10U);
  EXPECT_EQ(ChannelsOf(PlanFaults(harness, options), FaultClass::Swapped), sample) << "same seed";
  options.seed = 2;
  EXPECT_NE(ChannelsOf(PlanFaults(harness, options), FaultClass::Swapped), sample) << "another seed";
  EXPECT_EQ(ChannelsOf(plan, FaultClass::Short).size(), 15U) << "never sampled";
}

}  // namespace
}  // namespace kxbench::proof
