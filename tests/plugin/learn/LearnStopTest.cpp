// Stopping at every progress call.
#include "tests/plugin/learn/LearnBench.h"

namespace shorttest::testkit {
namespace {

class LearnStop : public LearnBench {
 protected:
  static constexpr int High = 4;  // five channels

  void SetUp() override {
    LearnBench::SetUp();
    Harness();
  }

  // Two nets and a free channel over two cards.
  void Harness() {
    Channels(46, 46 + High);
    data.LastRelaisKarte = 1;
    data.LastRelais = 8;
    driver.Wire(46, 48);
    driver.Wire(47, 50);
  }

  static std::string CleanUp() { return ReleaseAll(2) + TerminationOff(0, 7) + Progress(1.0); }

  // What the log held up to and including its n-th progress call.
  static std::string UpToProgress(const std::string& text, int n) {
    std::size_t at = 0;
    for (int i = 0; i < n; ++i) at = text.find("progress", at) + 1;
    return text.substr(0, text.find('\n', at) + 1);
  }
};

TEST_F(LearnStop, BeforeTheFirstPassSkipsAllPasses) {
  StopFrom(1);
  EXPECT_EQ(Learn(), LearnOutcome::Stopped);
  EXPECT_EQ(log.Text(), TerminationOn(0, 7) + Progress(0.01) + CleanUp());
}

TEST_F(LearnStop, AtAnyProgressCallEndsThatPassAndTheLaterOnesAtTheirFirst) {
  EXPECT_EQ(Learn(), LearnOutcome::Learned);
  const std::string whole = log.Text();
  const int calls = ProgressCalls();
  // One before the passes, one a comparison, one a channel, one a candidate, one at the end.
  ASSERT_EQ(calls, 1 + High + (High + 1) + 4 + 1);

  for (int n = 1; n < calls; ++n) {
    SCOPED_TRACE("stopped at progress call " + std::to_string(n));
    SetUp();
    log.Clear();
    StopFrom(n);
    EXPECT_EQ(Learn(), LearnOutcome::Stopped);

    std::string expected = UpToProgress(whole, n);
    const bool inVoltagePass = n >= 2 && n <= 1 + High;
    const bool inIsolationPass = n > 1 + High && n <= 2 * (High + 1);
    const int channelsDone = n - (2 + High);  // by the isolation pass
    if (inVoltagePass) expected += PrepareWithoutReset(2) + Progress(0.25);
    if (inVoltagePass || inIsolationPass) expected += PrepareAfterReset(2);
    // The first channel of the harness is a candidate, so the pair pass has one once it is done.
    if (inIsolationPass && channelsDone >= 1) expected += Progress(0.5);
    EXPECT_EQ(log.Text(), expected + CleanUp());
    EXPECT_TRUE(driver.AllRelaysOpen());
    EXPECT_FALSE(driver.TerminationOn());
  }
}

TEST_F(LearnStop, LeavesPairsNotReachedUnknown) {
  StopFrom(1 + High + 1);  // first call of the isolation pass
  Learn();
  EXPECT_EQ(MatrixText(data), "8 08 008 0008 00008");
}

TEST_F(LearnStop, ForgetsEarlierResultsEvenWhenNothingIsMeasured) {
  SetMatrix(data, "8 28 118 1138 11118");
  StopFrom(1);
  Learn();
  EXPECT_EQ(MatrixText(data), "8 08 008 0038 00008");
}

TEST_F(LearnStop, TheAnswerToTheLastCallIsIgnored) {
  Learn();
  const int calls = ProgressCalls();
  SetUp();
  StopAt(calls);
  EXPECT_EQ(Learn(), LearnOutcome::Learned);
  EXPECT_EQ(MatrixText(data), "8 18 218 1118 12118");
}

TEST_F(LearnStop, ASingleTrueStopsOnePassAlone) {
  StopAt(2);  // first call of the voltage pass
  EXPECT_EQ(Learn(), LearnOutcome::Stopped);
  // The bundle holds the first channel alone, so the others find nothing on line 1 to be connected to, except
  // channel 48, which is wired to it; each channel stays in the bundle once it was measured.
  EXPECT_EQ(log.Count("read 8"), 0);
  EXPECT_GT(log.Count("read 10"), 0);
  EXPECT_TRUE(log.Text().ends_with(CleanUp()));
}

TEST_F(LearnStop, InTheIsolationPassTheCandidatesSoFarAreStillPaired) {
  Channels(1, 3);
  driver.Wire(1, 2);
  StopAt(1 + 2 + 3);  // third channel of the isolation pass, and only there
  EXPECT_EQ(Learn(), LearnOutcome::Stopped);
  EXPECT_EQ(MatrixText(data), "8 28 008");
}

TEST_F(LearnStop, LearningOutOfARunningOneIsRefusedAndDoesNotDisturbIt) {
  Learn();
  const std::string alone = log.Text();
  SetUp();
  log.Clear();
  LearnConnections(data, [this](double position) {
    EXPECT_THROW(Learn(), std::logic_error);
    return Progressed(position);
  });
  EXPECT_EQ(log.Text(), alone);
}

}  // namespace
}  // namespace shorttest::testkit
