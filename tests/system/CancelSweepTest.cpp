// The user stops a check, or learning, at every point; the user interface fails at every call.
#include "simulator/SimulatedTester.h"
#include "tests/support/Sweep.h"
#include "tests/system/SweepHarness.h"
#include "tests/system/SystemBench.h"

namespace shorttest::testkit {
namespace {

class CancelSweep : public SystemBench {
 protected:
  void SetUp() override {
    Connect(goodHarness);
    data = UnlearnedSweepData();
    Learn(data);
    Connect(faultyHarness);
    const int before = ui.MessageCalls();
    ui.ThrowAtCall(0);
    records = Check(data);
    ASSERT_EQ(Findings(records), 7);
    points = ui.MessageCalls() - before;
    calls = ui.Calls();
    ASSERT_GT(points, 300);
  }

  void ExpectSafe() {
    EXPECT_TRUE(TesterIsSafe());
    EXPECT_TRUE(ui.AllWindowsEnabled());
    EXPECT_EQ(ui.Dialogs(), 0);
  }

  TShortTestData data{1, 1};
  std::string records;
  int points = 0;  ///< progress points of the whole check
  int calls = 0;   ///< calls of the user interface
};

TEST_F(CancelSweep, TheButtonAtAnyPointOfACheck) {
  int presses = 0;
  for (int n = 1; n < points && !HasFailure(); n += SweepStep) {
    SCOPED_TRACE("pressed at point " + std::to_string(n) + " of " + std::to_string(points));
    Connect(faultyHarness);
    ui.PressCancelAt(n);
    EXPECT_EQ(Check(data), "");
    EXPECT_EQ(environment.Cancels(), ++presses);
    ExpectSafe();
  }
  Connect(faultyHarness);
  EXPECT_EQ(Check(data), records);
}

TEST_F(CancelSweep, TheCloseBoxAtAnyPointOfACheck) {
  for (int n = 1; n < points && !HasFailure(); n += SweepStep) {
    SCOPED_TRACE("closed at point " + std::to_string(n) + " of " + std::to_string(points));
    Connect(faultyHarness);
    ui.CloseBoxAt(n);
    EXPECT_EQ(Check(data), "");
    ExpectSafe();
  }
  EXPECT_EQ(environment.Cancels(), 0);
}

TEST_F(CancelSweep, AFailureOfTheUserInterfaceAtAnyCallOfACheck) {
  constexpr int CleanUpCalls = 2;
  for (int k = 1; k <= calls - CleanUpCalls && !HasFailure(); k += SweepStep) {
    SCOPED_TRACE("failing call " + std::to_string(k) + " of " + std::to_string(calls));
    Connect(faultyHarness);
    ui.ThrowAtCall(k);
    EXPECT_THROW(Check(data), UserInterfaceFailure);
    ExpectSafe();
  }
  ui.ThrowAtCall(0);
  Connect(faultyHarness);
  EXPECT_EQ(Check(data), records);
}

TEST_F(CancelSweep, AStopAtAnyPointOfLearning) {
  Connect(goodHarness);
  progressCalls = 0;
  TShortTestData whole = UnlearnedSweepData();
  Learn(whole);
  const int all = progressCalls;
  ASSERT_GT(all, 200);
  for (int n = 1; n <= all && !HasFailure(); n += SweepStep) {
    SCOPED_TRACE("stopped at point " + std::to_string(n) + " of " + std::to_string(all));
    Connect(goodHarness);
    TShortTestData stopped = UnlearnedSweepData();
    progressCalls = 0;
    stopFrom = n;
    Learn(stopped);
    EXPECT_TRUE(TesterIsSafe());
    // A pair is decided as in the whole run or not at all; a stop during a wait suspends the channel waited
    // for.
    int wrong = 0;
    for (int i = 0; i <= stopped.Highconnections(); ++i) {
      for (int j = 0; j < i; ++j) {
        const CellState state = stopped.Get(i, j);
        const bool decided = state != CellState::Unknown && state != CellState::NotTestable;
        wrong += decided && state != whole.Get(i, j) ? 1 : 0;
      }
    }
    EXPECT_EQ(wrong, 0);
  }
}

}  // namespace
}  // namespace shorttest::testkit
