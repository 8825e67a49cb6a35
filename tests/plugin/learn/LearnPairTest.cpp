// The pair pass and its question about readings near the threshold.
#include "tests/plugin/learn/LearnBench.h"

namespace shorttest::testkit {
namespace {

class LearnPairs : public LearnBench {
 protected:
  // Candidates by matrix index, as the isolation pass would hand them over.
  static TConnFound Candidates(const std::vector<int>& indices) {
    TConnFound candidates;
    for (const int index : indices) candidates.push_back({index, 0.0});
    return candidates;
  }
};

TEST_F(LearnPairs, ANetThatIsNotConnectedIsSettledByOnePair) {
  Channels(1, 4);
  driver.Wire(1, 2);
  driver.Wire(3, 4);
  LearnPairPass(data, Candidates({0, 1, 2, 3}), Progressed);
  EXPECT_EQ(MatrixText(data), "8 28 118 1128");
  std::string calls = PrepareAfterReset(1);
  calls += Progress(0.0 / 6.0 + 0.5) + Connect(1, 1);
  calls += Connect(2, 0) + LowResistance() + Release(2, 0);
  calls += Connect(3, 0) + HighResistance() + Release(3, 0);
  calls += Connect(4, 0) + HighResistance() + Release(4, 0) + Release(1, 1);
  calls += Progress(1.0 / 6.0 + 0.5) + Connect(2, 1) + Release(2, 1);
  calls += Progress(2.0 / 6.0 + 0.5) + Connect(3, 1) + Connect(4, 0);
  calls += LowResistance() + Release(4, 0) + Release(3, 1);
  calls += Progress(3.0 / 6.0 + 0.5) + Connect(4, 1) + Release(4, 1);
  EXPECT_EQ(log.Text(), calls);
}

TEST_F(LearnPairs, OnlyUnknownPairsOfCandidatesAreMeasured) {
  Channels(1, 4);
  SetMatrix(data, "8 38 008 1008");
  LearnPairPass(data, Candidates({0, 1, 3}), Progressed);
  std::string calls = PrepareAfterReset(1);
  calls += Progress(0.0 / 4.0 + 0.5) + Connect(1, 1) + Release(1, 1);
  calls += Progress(1.0 / 4.0 + 0.5) + Connect(2, 1) + Connect(4, 0);
  calls += HighResistance() + Release(4, 0) + Release(2, 1);
  calls += Progress(2.0 / 4.0 + 0.5) + Connect(4, 1) + Release(4, 1);
  EXPECT_EQ(log.Text(), calls);
  EXPECT_EQ(MatrixText(data), "8 38 008 1108");
}

TEST_F(LearnPairs, AChannelIsNeverMeasuredAgainstItself) {
  Channels(1, 2);
  SetMatrix(data, "0 30");  // the diagonal of a damaged file
  LearnPairPass(data, Candidates({0, 1}), Progressed);
  EXPECT_EQ(log.Count("read"), 0);
  EXPECT_EQ(MatrixText(data), "0 30");
}

TEST_F(LearnPairs, TheThresholdItselfIsOpen) {
  Channels(1, 2);
  driver.Wire(1, 2, 10.0);
  ui.Answer({mrIgnore});
  LearnPairPass(data, Candidates({0, 1}), Progressed);
  EXPECT_EQ(MatrixText(data), "8 18");
}

TEST_F(LearnPairs, AStopReturnsAtOnce) {
  Channels(1, 3);
  driver.Wire(1, 2);
  driver.Wire(2, 3);
  StopAt(1);
  LearnPairPass(data, Candidates({0, 1, 2}), Progressed);
  EXPECT_EQ(log.Text(), PrepareAfterReset(1) + Progress(0.5));
  EXPECT_EQ(MatrixText(data), "8 08 008");
}

// --- near the threshold ---

class NearThreshold : public LearnPairs {
 protected:
  void SetUp() override {
    LearnPairs::SetUp();
    Channels(11, 13);
  }
  void LearnPairOf(double ohm) {
    driver.Wire(11, 13, ohm);
    LearnPairPass(data, Candidates({0, 2}), Progressed);
  }
};

TEST_F(NearThreshold, TheQuestionNamesChannelsAndResistance) {
  LearnPairOf(9.456);
  ASSERT_EQ(ui.Boxes().size(), 1U);
  const MessageBoxRequest& box = ui.Boxes().front();
  EXPECT_EQ(box.text,
            "Der zwischen den Kanälen 13 und 11 gemessene Widerstand von 9,46 Ohm liegt im Bereich von "
            "+- 10 % vom Schwellwert.");
  EXPECT_EQ(box.kind, MessageKind::Information);
  EXPECT_EQ(box.buttons, (std::vector<int>{mrCancel, mrIgnore}));
  EXPECT_EQ(box.helpContext, 140);
}

TEST_F(NearThreshold, TheResistanceHasTheUsersSeparatorAndTwoDecimals) {
  SetDecimalSeparator(".");
  LearnPairOf(10.5);
  ASSERT_EQ(ui.Boxes().size(), 1U);
  EXPECT_NE(ui.Boxes().front().text.find(" 10.50 Ohm "), std::string::npos) << ui.Boxes().front().text;
}

TEST_F(NearThreshold, IgnoreKeepsTheReading) {
  ui.Answer({mrIgnore});
  LearnPairOf(9.5);
  EXPECT_EQ(MatrixText(data), "8 08 208");
  EXPECT_EQ(data.GetR(2, 0), 9.5);
  EXPECT_EQ(log.Count("bus"), 6 + 2 + 2 + 2);  // everything that was closed is opened again
}

TEST_F(NearThreshold, IgnoreKeepsAReadingAboveAsOpen) {
  ui.Answer({mrIgnore});
  LearnPairOf(10.5);
  EXPECT_EQ(MatrixText(data), "8 08 108");
}

TEST_F(NearThreshold, AnyAnswerButCancelIsIgnore) {
  for (const int answer : {0, 1, 3, 4, 5, 6, 7}) {
    Channels(11, 13);
    ui.Answer({answer});
    LearnPairOf(9.5);
    EXPECT_EQ(MatrixText(data), "8 08 208") << answer;
  }
}

TEST_F(NearThreshold, CancelEndsThePassWithoutReleases) {
  ui.Answer({mrCancel});
  LearnPairOf(9.5);
  EXPECT_EQ(MatrixText(data), "8 08 008");
  const std::string calls = log.Select([](std::string_view line) { return !line.starts_with("box"); });
  EXPECT_EQ(calls, PrepareAfterReset(1) + Progress(0.5) + Connect(11, 1) + Connect(13, 0) + HighResistance());
}

TEST_F(NearThreshold, CancelLeavesWhatIsUndecidedAndCleansUp) {
  Channels(1, 4);
  driver.Wire(1, 2, 0.5);
  driver.Wire(3, 4, 9.5);
  driver.Wire(1, 3, 9.2);
  ui.Answer({mrCancel});
  EXPECT_EQ(Learn(), LearnOutcome::Stopped);
  // The first near pair is 3 and 1; 2 and 1 were decided before it.
  EXPECT_EQ(MatrixText(data), "8 28 008 0008");
  EXPECT_EQ(ui.Boxes().size(), 1U);
  EXPECT_TRUE(driver.AllRelaysOpen());
  EXPECT_TRUE(log.Text().ends_with(ReleaseAll(1) + Progress(1.0)));
  EXPECT_EQ(log.Count("progress 1\n"), 0);
}

struct BandRow {
  const char* name;
  double ohm;
  bool asked;
};

class NearBand : public NearThreshold, public ::testing::WithParamInterface<BandRow> {};

TEST_P(NearBand, IsOpenAtBothEnds) {
  LearnPairOf(GetParam().ohm);
  EXPECT_EQ(ui.Boxes().size(), GetParam().asked ? 1U : 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Resistances, NearBand,
    ::testing::Values(BandRow{"FarBelow", 1.0, false}, BandRow{"Lower", 0.9 * 10.0, false},
                      BandRow{"JustAboveLower", 9.0000001, true}, BandRow{"AtTheThreshold", 10.0, true},
                      BandRow{"JustBelowUpper", 10.9999999, true}, BandRow{"Upper", 1.1 * 10.0, false},
                      BandRow{"FarAbove", 1e6, false}, BandRow{"Negative", -9.5, false}),
    [](const auto& row) { return row.param.name; });

TEST_F(NearThreshold, IsAskedInThePairPassOnly) {
  Channels(1, 2);
  driver.Wire(1, 2, 10.5);  // at or above the threshold: no candidate, no pair, no question
  Learn();
  EXPECT_TRUE(ui.Boxes().empty());
  EXPECT_EQ(MatrixText(data), "8 18");
}

TEST_F(NearThreshold, EveryNearPairIsAsked) {
  Channels(1, 4);
  driver.Wire(1, 2, 9.5);
  driver.Wire(3, 4, 9.6);
  ui.Answer({mrIgnore, mrIgnore});
  Learn();
  EXPECT_EQ(ui.Boxes().size(), 2U);
  EXPECT_EQ(MatrixText(data), "8 28 118 1128");
}

}  // namespace
}  // namespace shorttest::testkit
