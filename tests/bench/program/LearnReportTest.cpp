#include <gtest/gtest.h>

#include "bench/program/Learn.h"

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
