// Faults of the driver, the progress display and the message box at every point.
#include "tests/plugin/learn/LearnBench.h"

namespace shorttest::testkit {
namespace {

class LearnFault : public LearnBench {
 protected:
  void SetUp() override {
    LearnBench::SetUp();
    Harness();
  }

  // Everything that learning can meet: two nets, a free channel, an excluded pair, a live channel, a charge,
  // a reading near the threshold, over two cards with a terminating resistor.
  void Harness() {
    Channels(44, 51);
    data.LastRelaisKarte = 1;
    data.LastRelais = 8;
    data.SetC(7, 0, CellState::ExcludedPair, NoResistance);
    driver.Wire(44, 46, 0.5);
    driver.Wire(46, 50, 9.0);
    driver.Wire(45, 49, 0.3);
    driver.Live(47, 24.0);
    driver.Charge(48, 2.0, 0.4);
    clock.ticksStep = 1000;
  }

  static std::string CleanUp() { return ReleaseAll(2) + TerminationOff(0, 7) + Progress(1.0); }
  static constexpr int CleanUpCalls = 2 * 2 + 1;  // of the driver

  void ExpectCleanedUp() {
    EXPECT_TRUE(log.Text().ends_with(CleanUp()));
    EXPECT_TRUE(driver.AllRelaysOpen());
    EXPECT_FALSE(driver.TerminationOn());
    EXPECT_EQ(driver.OutstandingTexts(), 0);
  }

  static constexpr const char* Learned = "8 18 218 4449 11148 121418 2124118 31141118";
};

TEST_F(LearnFault, TheHarnessIsLearned) {
  Learn();
  EXPECT_EQ(MatrixText(data), Learned);
  EXPECT_EQ(ui.Boxes().size(), 1U);
  ExpectCleanedUp();
}

TEST_F(LearnFault, ADriverErrorAtAnyCallBecomesItsExceptionAfterTheCleanUp) {
  driver.FailAt(1'000'000, "counting only");
  Learn();
  const int calls = driver.FailableCalls();
  ASSERT_GT(calls, 100);

  for (const auto fault : {FakeDriver::Fault::Performed, FakeDriver::Fault::Dropped}) {
    for (int k = 1; k <= calls - CleanUpCalls; ++k) {
      SCOPED_TRACE("failing call " + std::to_string(k));
      Harness();
      log.Clear();
      driver.FailAt(k, "fault at " + std::to_string(k), fault);
      EXPECT_EQ(HardwareErrorOf([this] { Learn(); }), "fault at " + std::to_string(k));
      ExpectCleanedUp();

      // What comes next, after the error is cleared, is not touched by it.
      driver.NoFault();
      ASSERT_TRUE(InitHardware());
      Harness();
      Learn();
      EXPECT_EQ(MatrixText(data), Learned);
    }
  }
}

TEST_F(LearnFault, ADriverErrorWithinTheCleanUpThrowsNothing) {
  driver.FailAt(1'000'000, "counting only");
  Learn();
  const int calls = driver.FailableCalls();
  for (int k = calls - CleanUpCalls + 1; k <= calls; ++k) {
    Harness();
    log.Clear();
    driver.DeleteError();
    driver.FailAt(k, "late fault");
    EXPECT_NO_THROW(Learn()) << k;
    EXPECT_EQ(MatrixText(data), Learned);
    ExpectCleanedUp();
  }
}

TEST_F(LearnFault, ADriverThatStaysDeadLeavesTheCleanUpWhole) {
  driver.FailFrom(40, "gone");
  EXPECT_EQ(HardwareErrorOf([this] { Learn(); }), "gone");
  ExpectCleanedUp();
}

TEST_F(LearnFault, AnErrorFromBeforeIsRaisedAtTheFirstQuery) {
  driver.PendingError("from before");
  EXPECT_EQ(HardwareErrorOf([this] { Learn(); }), "from before");
  EXPECT_EQ(log.Text(), "relay 0 7 1\n" + ErrorTaken() + CleanUp());
}

TEST_F(LearnFault, EarlierResultsAreForgottenEvenWhenTheFirstCallFails) {
  SetMatrix(data, "8 28 118 1118 11118 111118 1111118 11111118");
  driver.FailAt(1, "no such relay");
  EXPECT_EQ(HardwareErrorOf([this] { Learn(); }), "no such relay");
  EXPECT_EQ(MatrixText(data), "8 08 008 0008 00008 000008 0000008 00000008");
}

TEST_F(LearnFault, FindingsBeforeTheFaultAreKept) {
  Channels(1, 3);
  const int voltagePass = 6 + 1 + 2 * 4;
  const int firstChannelAgainstAll = 4 + 6;
  driver.FailFrom(voltagePass + firstChannelAgainstAll + 1, "second channel of the isolation pass");
  EXPECT_NE(HardwareErrorOf([this] { Learn(); }), "");
  EXPECT_EQ(MatrixText(data), "8 18 108");
}

TEST_F(LearnFault, AnExceptionOfTheProgressFunctionPassesThroughAfterTheCleanUp) {
  Learn();
  const int calls = ProgressCalls();
  for (int n = 1; n < calls; ++n) {
    SCOPED_TRACE("thrown by progress call " + std::to_string(n));
    SetUp();
    log.Clear();
    ThrowAt(n);
    EXPECT_THROW(Learn(), ProgressFailure);
    ExpectCleanedUp();
    EXPECT_EQ(ProgressCalls(), n + 1);
  }
}

TEST_F(LearnFault, AnExceptionOfTheLastProgressCallDoesNotSpoilTheResult) {
  Learn();
  const int calls = ProgressCalls();
  SetUp();
  ThrowAt(calls);
  EXPECT_NO_THROW(Learn());
  EXPECT_EQ(MatrixText(data), Learned);
}

TEST_F(LearnFault, AnExceptionOfTheLastProgressCallDoesNotReplaceTheFirst) {
  ThrowAt(2);  // the clean-up's call, after the one at 0.01
  driver.FailAt(4, "first");
  EXPECT_EQ(HardwareErrorOf([this] { Learn(); }), "first");
  EXPECT_TRUE(driver.AllRelaysOpen());
}

TEST_F(LearnFault, AnExceptionOfTheMessageBoxPassesThroughAfterTheCleanUp) {
  ui.ThrowAtCall(1);
  EXPECT_THROW(Learn(), UserInterfaceFailure);
  ExpectCleanedUp();
}

// --- a range that the tester does not have ---

TEST_F(LearnFault, ATesterHasTheChannelsOfItsCards) {
  driver.Cards(2);
  ASSERT_TRUE(InitHardware());
  struct Range {
    int von, bis;
    bool there;
  };
  for (const Range& range : {Range{1, 96, true}, Range{96, 96, true}, Range{1, 1, true}, Range{1, 97, false},
                             Range{97, 97, false}, Range{0, 5, false}, Range{5, 4, false}}) {
    EXPECT_EQ(HasChannelsFor(TShortTestData(range.von, range.bis)), range.there)
        << range.von << " to " << range.bis;
  }
}

}  // namespace
}  // namespace shorttest::testkit
