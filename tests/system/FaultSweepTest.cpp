// Every single call of the driver fails once, in a check and in learning.
#include "plugin/hardware/Bus.h"
#include "simulator/SimulatedTester.h"
#include "tests/support/MatrixText.h"
#include "tests/support/Sweep.h"
#include "tests/system/SweepHarness.h"
#include "tests/system/SystemBench.h"

namespace shorttest::testkit {
namespace {

// Line resets of two cards and the terminating relay. What fails here throws nothing, and what is then left
// closed nobody can open: the simulated tester ignores a call that fails.
constexpr int CleanUpCalls = 2 * 2 + 1;

class FaultSweep : public SystemBench {
 protected:
  TShortTestData Learned() {
    Connect(goodHarness);
    TShortTestData data = UnlearnedSweepData();
    Learn(data);
    return data;
  }

  template <typename Action>
  static std::string ErrorOf(Action action) {
    try {
      action();
    } catch (const TShortTestHWException& error) {
      return error.what();
    }
    return "";
  }

  void SweepCheck(const std::string& device, int findings) {
    const TShortTestData data = Learned();
    Connect(device);
    const std::string records = Check(data);
    ASSERT_EQ(Findings(records), findings) << records;
    const auto calls = static_cast<int>(brenmor_sim_call_count());
    ASSERT_GT(calls, 300);

    for (int k = 1; k <= calls && !HasFailure(); k += SweepStep) {
      SCOPED_TRACE("failing call " + std::to_string(k) + " of " + std::to_string(calls));
      Connect(device);
      const std::string text = "call " + std::to_string(k) + " failed";
      brenmor_sim_fail_call(k, text.c_str());
      std::string spoiled;
      const std::string error = ErrorOf([&] { spoiled = Check(data); });
      EXPECT_TRUE(ui.AllWindowsEnabled());
      EXPECT_EQ(ui.Dialogs(), 0);
      EXPECT_EQ(environment.Cancels(), 0);
      if (k > calls - CleanUpCalls) {
        EXPECT_EQ(error, "");
        EXPECT_EQ(spoiled, records);
        continue;
      }
      EXPECT_EQ(error, text);
      EXPECT_EQ(host.Records(), "");
      EXPECT_TRUE(TesterIsSafe());
      if (k % 50 == 0) {
        Connect(device);
        EXPECT_EQ(Check(data), records);
      }
    }
  }
};

TEST_F(FaultSweep, TheHarnessIsLearnedAndFoundGood) {
  const TShortTestData data = Learned();
  EXPECT_EQ(data.Get(39, 39), CellState::Suspended);
  EXPECT_EQ(data.Get(92, 92), CellState::NotApplicable);
  EXPECT_EQ(data.Get(14, 13), CellState::ExcludedPair);
  EXPECT_EQ(data.Get(51, 0), CellState::Connected);
  EXPECT_EQ(Findings(Check(data)), 0);
  EXPECT_TRUE(TesterIsSafe());
}

TEST_F(FaultSweep, AnyCallOfACheckWithOpenWiresAndShorts) { SweepCheck(faultyHarness, 7); }

TEST_F(FaultSweep, AnyCallOfACheckWithALiveChannel) { SweepCheck(liveHarness, 5); }

TEST_F(FaultSweep, AnyCallOfLearning) {
  const TShortTestData learned = Learned();
  Connect(goodHarness);
  TShortTestData again = UnlearnedSweepData();
  Learn(again);
  const auto calls = static_cast<int>(brenmor_sim_call_count());
  ASSERT_GT(calls, 500);

  for (int k = 1; k <= calls && !HasFailure(); k += SweepStep) {
    SCOPED_TRACE("failing call " + std::to_string(k) + " of " + std::to_string(calls));
    Connect(goodHarness);
    const std::string text = "call " + std::to_string(k) + " failed";
    brenmor_sim_fail_call(k, text.c_str());
    TShortTestData data = UnlearnedSweepData();
    const std::string error = ErrorOf([&] { Learn(data); });
    if (k > calls - CleanUpCalls) {
      EXPECT_EQ(error, "");
      EXPECT_EQ(MatrixText(data), MatrixText(learned));
      continue;
    }
    EXPECT_EQ(error, text);
    EXPECT_TRUE(TesterIsSafe());
    if (k % 50 == 0) {
      // The error stays until the hardware is initialised anew.
      TShortTestData next = UnlearnedSweepData();
      EXPECT_EQ(ErrorOf([&] { Learn(next); }), text);
      ASSERT_TRUE(InitHardware());
      EXPECT_EQ(HWChannelCount, 96);
      next = UnlearnedSweepData();
      Learn(next);
      EXPECT_EQ(MatrixText(next), MatrixText(learned));
    }
  }
}

}  // namespace
}  // namespace shorttest::testkit
