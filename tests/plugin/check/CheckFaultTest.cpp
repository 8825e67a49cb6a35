// Faults of the driver, the user interface and the host at every point of a check.
#include <cmath>
#include <limits>
#include <stdexcept>

#include "tests/plugin/check/CheckBench.h"

namespace shorttest::testkit {
namespace {

class CheckFault : public CheckBench {
 protected:
  void SetUp() override {
    CheckBench::SetUp();
    Harness();
  }

  // Two cards, a terminating resistor, a good net, an open connection, a short, an excluded pair, a suspended
  // channel and a charge that is waited for.
  void Harness() {
    Expect(44, "8 28 118 1128 44449 111148 3111418 11114118");
    data.LastRelaisKarte = 1;
    data.LastRelais = 8;
    driver.Wire(44, 45, 0.5);
    driver.Wire(45, 49, 0.3);
    driver.Live(48, 24.0);
    driver.Charge(51, 2.0, 0.4);
    clock.ticksStep = 1000;
  }

  // 44 and 49 are measured with 0.8 Ohm; 45 and 49 take over the 0.5 Ohm of 44 and 45, the smaller one.
  static constexpr const char* AllRecords =
      "fehlende Verbindung zwischen 46 und 47|0|1000000000|Ohm|10|0|\n"
      "Verbindungstest|2|1||2||\n"
      "Kurzschluss zwischen (44, 45) und 49|10|0,5|Ohm|100000000000001|0|\n"
      "Kurzschluss zwischen (44, 45) und 49|10|0,5|Ohm|100000000000001|0|\n"
      "Kurzschlusstest|0|2||0||\n";

  static std::string CleanUp() {
    return ReleaseAll(2) + TerminationOff(0, 7) + "enable 11 12\nclose dialog\n";
  }
  static constexpr int SetUpCalls = 2;            // of the driver, before anything must be undone
  static constexpr int CleanUpCalls = 2 * 2 + 1;  // of the driver

  int CountDriverCalls() {
    driver.FailAt(1'000'000, "counting only");
    RunShortTest(data);
    const int calls = driver.FailableCalls();
    driver.NoFault();
    Harness();
    log.Clear();
    return calls;
  }

  void ExpectSafe() {
    EXPECT_TRUE(driver.AllRelaysOpen());
    EXPECT_FALSE(driver.TerminationOn());
    EXPECT_TRUE(ui.AllWindowsEnabled());
    EXPECT_EQ(ui.Dialogs(), 0);
    EXPECT_EQ(CheckForm, nullptr);
    EXPECT_EQ(driver.OutstandingTexts(), 0);
  }

  void ExpectTheNextCheckIsRight() {
    driver.NoFault();
    ui.ThrowAtCall(0);
    Harness();
    host.Clear();
    RunShortTest(data);
    EXPECT_EQ(Records(), AllRecords);
    host.Clear();
  }
};

TEST_F(CheckFault, TheHarnessHasItsFindings) {
  RunShortTest(data);
  EXPECT_EQ(Records(), AllRecords);
  EXPECT_EQ(log.Count("read 8"), 6 + 2);  // channels in use but the first, and two more for the charge
  ExpectSafe();
}

TEST_F(CheckFault, ADriverErrorAtAnyCallBecomesItsExceptionAfterTheCleanUp) {
  const int calls = CountDriverCalls();
  ASSERT_GT(calls, 100);
  for (const auto fault : {FakeDriver::Fault::Performed, FakeDriver::Fault::Dropped}) {
    for (int k = 1; k <= calls - CleanUpCalls; ++k) {
      SCOPED_TRACE("failing call " + std::to_string(k));
      Harness();
      log.Clear();
      host.Clear();
      driver.FailAt(k, "fault at " + std::to_string(k), fault);
      EXPECT_EQ(HardwareErrorOf([this] { RunShortTest(data); }), "fault at " + std::to_string(k));
      if (k <= SetUpCalls) {
        EXPECT_TRUE(log.Text().ends_with(ErrorTaken() + "close dialog\n"));
        EXPECT_EQ(log.Count("disable"), 0);
      } else {
        EXPECT_TRUE(log.Text().ends_with(CleanUp()));
      }
      EXPECT_EQ(Records(), "");
      EXPECT_EQ(environment.Cancels(), 0);
      ExpectSafe();
      ExpectTheNextCheckIsRight();
    }
  }
}

TEST_F(CheckFault, ADriverErrorWithinTheCleanUpThrowsNothingAndTakesNoRecord) {
  const int calls = CountDriverCalls();
  for (int k = calls - CleanUpCalls + 1; k <= calls; ++k) {
    SCOPED_TRACE("failing call " + std::to_string(k));
    Harness();
    host.Clear();
    driver.FailAt(k, "late fault");
    EXPECT_NO_THROW(RunShortTest(data));
    EXPECT_EQ(Records(), AllRecords);
    ExpectSafe();
    ExpectTheNextCheckIsRight();
  }
}

TEST_F(CheckFault, ADriverThatStaysDeadLeavesTheCleanUpWhole) {
  driver.FailFrom(60, "gone");
  EXPECT_EQ(HardwareErrorOf([this] { RunShortTest(data); }), "gone");
  EXPECT_TRUE(log.Text().ends_with(CleanUp()));
  ExpectSafe();
}

TEST_F(CheckFault, AnErrorFromBeforeIsClearedFirst) {
  driver.PendingError("from before");
  RunShortTest(data);
  EXPECT_EQ(Records(), AllRecords);
}

TEST_F(CheckFault, AnExceptionOfTheUserInterfaceAtAnyCallPassesThroughAfterTheCleanUp) {
  RunShortTest(data);
  const int calls = ui.Calls();
  constexpr int atEnd = 2;  // the clean-up asks for the result and enables the windows
  for (int k = 1; k <= calls - atEnd; ++k) {
    SCOPED_TRACE("throwing call " + std::to_string(k));
    Harness();
    log.Clear();
    ui.ThrowAtCall(k);
    EXPECT_THROW(RunShortTest(data), UserInterfaceFailure);
    EXPECT_EQ(environment.Cancels(), 0);
    ExpectSafe();
    if (k % 10 == 0) ExpectTheNextCheckIsRight();
  }
}

TEST_F(CheckFault, AnExceptionOfTheUserInterfaceWithinTheCleanUpDoesNotSpoilTheResult) {
  RunShortTest(data);
  const int calls = ui.Calls();
  Harness();
  ui.ThrowAtCall(calls - 1);  // asking for the modal result
  EXPECT_NO_THROW(RunShortTest(data));
  ExpectSafe();

  Harness();
  ui.ThrowAtCall(calls);  // enabling the windows
  host.Clear();
  EXPECT_NO_THROW(RunShortTest(data));
  EXPECT_EQ(Records(), AllRecords);
  EXPECT_TRUE(driver.AllRelaysOpen());
  EXPECT_EQ(ui.Dialogs(), 0);
}

TEST_F(CheckFault, ACancelBeforeTheExceptionStillTellsTheHost) {
  ui.PressCancelAt(2);
  int calls = 0;
  ui.WithinMessages([&] {
    if (++calls == 3) throw UserInterfaceFailure();
  });
  EXPECT_THROW(RunShortTest(data), UserInterfaceFailure);
  EXPECT_EQ(environment.Cancels(), 1);
  ui.WithinMessages(nullptr);
  ExpectSafe();
}

TEST_F(CheckFault, AHostThatFailsWhenItIsToldDoesNotStopTheCleanUp) {
  environment.ThrowOnCancel();
  ui.PressCancelAt(3);
  EXPECT_NO_THROW(RunShortTest(data));
  EXPECT_EQ(environment.Cancels(), 1);
  ExpectSafe();
}

TEST_F(CheckFault, WithoutAUserInterfaceNothingIsTouched) {
  SetApplication(nullptr);
  EXPECT_THROW(RunShortTest(data), std::logic_error);
  EXPECT_EQ(log.Text(), "");
  SetApplication(&ui);
}

// --- readings and options that no good tester or file brings ---

TEST_F(CheckFault, AResistanceThatIsNotANumberEndsTheCheckWithoutRecords) {
  data.U_Control = 0;
  driver.AllReadings([](int) { return std::nan(""); });
  EXPECT_THROW(RunShortTest(data), std::runtime_error);
  EXPECT_EQ(Records(), "");
  ExpectSafe();
}

TEST_F(CheckFault, AVoltageThatIsNotANumberEndsTheCheckWithoutRecords) {
  driver.AllReadings([](int number) { return number <= 4 ? 0.5 : std::nan(""); });
  EXPECT_THROW(RunShortTest(data), std::runtime_error);
  EXPECT_EQ(Records(), "");
  ExpectSafe();
}

TEST_F(CheckFault, InfiniteReadingsAreOpenPaths) {
  Expect(1, "8 28");
  data.U_Control = 0;
  driver.AllReadings([](int) { return std::numeric_limits<double>::infinity(); });
  RunShortTest(data);
  EXPECT_EQ(Records(),
            "fehlende Verbindung zwischen 1 und 2|0|INF|Ohm|10|0|\n"
            "Verbindungstest|1|0||1||\n"
            "Kurzschlusstest|0|0||0||\n");
}

TEST_F(CheckFault, NegativeReadingsAreBelowEveryThreshold) {
  Expect(1, "8 18");
  data.U_Control = 0;
  driver.AllReadings([](int) { return -3.0; });
  RunShortTest(data);
  EXPECT_EQ(Records(),
            "Kurzschluss zwischen 1 und 2|10|-3|Ohm|100000000000001|0|\n"
            "Kurzschlusstest|0|1||0||\n");
}

TEST_F(CheckFault, MinusInfinityIsBelowEveryThresholdToo) {
  Expect(1, "8 28");
  data.U_Control = 0;
  driver.AllReadings([](int) { return -std::numeric_limits<double>::infinity(); });
  RunShortTest(data);
  EXPECT_EQ(Records(), "Verbindungstest|1|1||1||\nKurzschlusstest|0|0||0||\n");
}

TEST_F(CheckFault, AThresholdNothingCanBeMeasuredAgainstEndsTheCheck) {
  Expect(1, "8 28");
  data.Schwelle = 0.0;
  data.Schwelle2 = 0.0;
  EXPECT_THROW(RunShortTest(data), std::invalid_argument);
  EXPECT_EQ(Records(), "");
  ExpectSafe();
}

TEST_F(CheckFault, ARangeBeyondTheBusEndsTheCheckQuicklyAndCleanly) {
  data = TShortTestData(2'000'000'000, 2'000'000'001);
  EXPECT_THROW(RunShortTest(data), std::out_of_range);
  EXPECT_EQ(Records(), "");
  EXPECT_LT(log.Count(""), 1000);
  ExpectSafe();
}

TEST_F(CheckFault, VoltageControlBeyondItsValuesReadsWithoutWaiting) {
  Expect(1, "8 18 118");
  data.U_Control = 77;
  driver.Live(3, 2.0);
  RunShortTest(data);
  EXPECT_EQ(log.Count("read 8"), 2);
  EXPECT_EQ(Records(), "Spannung an Kanal 3|0,7|2|V|||\nKurzschlusstest|0|0||0||\n");
}

TEST_F(CheckFault, ANegativeErrorLimitSendsSummariesAlone) {
  Expect(1, "8 28");
  data.MaxError = std::numeric_limits<int>::min();
  RunShortTest(data);
  EXPECT_EQ(Records(), "Verbindungstest|1|0||1||\nKurzschlusstest|0|0||0||\n");
}

TEST_F(CheckFault, TheLargestErrorLimitDoesNotOverflow) {
  Expect(1, "8 28 118");
  data.MaxError = std::numeric_limits<int>::max();
  data.U_Control = 1;
  driver.Live(3, 2.0);
  RunShortTest(data);  // one open connection and the limit itself for the voltage
  EXPECT_EQ(log.Count("read 10"), 2);
  EXPECT_EQ(log.Count("send Spannung an Kanal 3"), 1);
}

}  // namespace
}  // namespace shorttest::testkit
