#include <gtest/gtest.h>

#include "bench/program/commands/LearnReport.h"
#include "bench/program/output/ChannelText.h"
#include "tests/bench/program/TemporaryFolder.h"

namespace kxbench {
namespace {

TEST(ChannelListText, ShortensRunsOfThree) {
  EXPECT_EQ(ChannelListText({}), "none");
  EXPECT_EQ(ChannelListText({7}), "7");
  EXPECT_EQ(ChannelListText({1, 2, 4, 5, 6, 9, 10, 11, 12}), "1, 2, 4-6, 9-12");
}

TEST(LearnReport, TellsWhatWasLearned) {
  LearnSummary summary;
  summary.end = LearnEnd::Learned;
  summary.firstChannel = 1;
  summary.lastChannel = 13;
  summary.nets = {{1, 2, 3, 4}, {7, 9}};
  summary.suspended = {{12, 5.3124}, {13, -0.70001}, {14, 0.0}};
  summary.unconnected = {5, 6, 8};
  summary.readings = 1234;
  summary.relayOperations = 321;
  summary.seconds = 2.34;
  EXPECT_EQ(LearnReport("trailer.dat", summary),
            "Learned 13 channels into trailer.dat\n"
            "\n"
            "  Channels                1 to 13\n"
            "  Nets                    2\n"
            "                          1-4\n"
            "                          7, 9\n"
            "  Suspended channels      12 (5.31 V), 13 (-0.7 V), 14 (as before)\n"
            "  Connected to nothing    5, 6, 8\n"
            "  Readings                1234\n"
            "  Relay operations        321\n"
            "  Time                    2.3 s\n");
}

TEST(LearnReport, TellsOfChannelsThatWereNearlyConnected) {
  LearnSummary summary;
  summary.firstChannel = 1;
  summary.lastChannel = 2;
  summary.unconnected = {1, 2};
  summary.nearMisses = {{1, 10.52}};
  EXPECT_NE(
      LearnReport("x.dat", summary).find("  Nearly connected        1 (10.5 Ohm): to the others just above"),
      std::string::npos);
}

TEST(ChannelListText, NamedChannelsStandAlone) {
  const TemporaryFolder folder;
  const wiring::ChannelNames names(folder.Write("x.ini", "[Scanner]\nRelais5=B1\n"));
  EXPECT_EQ(ChannelListText({1, 2, 3, 4, 5, 6, 7, 8}, names), "1-4, 5 (B1), 6-8");
}

TEST(DifferenceLines, TellHowManyPairsDifferAndWhich) {
  LearnDifference difference{
      1, 20, 1, 20, 190, 24, {{1, 14, "connected", "open"}, {2, 3, "unknown", "connected"}}};
  EXPECT_EQ(DifferenceLines("x.dat", difference),
            (std::vector<std::string>{
                "x.dat: 24 of 190 pairs of the channels 1 to 20 differ from the expectation that is replaced",
                "  1 - 14: open, was connected", "  2 - 3: connected, was unknown", "  and 22 more"}));
}

TEST(DifferenceLines, TellOfChannelsThatAreGivenUp) {
  EXPECT_EQ(DifferenceLines("x.dat", {1, 20, 3, 20, 153, 1, {}}).front(),
            "x.dat: 1 of 153 pairs of the channels 3 to 20 differs from the expectation that is replaced, "
            "which held "
            "the channels 1 to 20");
}

TEST(DifferenceLines, OfNoDifference) {
  EXPECT_EQ(DifferenceLines("x.dat", {1, 2, 1, 2, 1, 0, {}}),
            (std::vector<std::string>{
                "x.dat: 0 of 1 pair of the channels 1 to 2 differ from the expectation that is replaced"}));
}

TEST(LearnReport, OfNothingConnected) {
  LearnSummary summary;
  summary.firstChannel = 5;
  summary.lastChannel = 5;
  summary.unconnected = {5};
  EXPECT_EQ(LearnReport("x.dat", summary),
            "Learned 1 channel into x.dat\n"
            "\n"
            "  Channels                5 to 5\n"
            "  Nets                    0\n"
            "  Suspended channels      none\n"
            "  Connected to nothing    5\n"
            "  Readings                0\n"
            "  Relay operations        0\n"
            "  Time                    0.0 s\n");
}

}  // namespace
}  // namespace kxbench
