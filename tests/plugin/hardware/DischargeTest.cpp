#include <limits>
#include <stdexcept>
#include <vector>

#include "plugin/hardware/Measurement.h"
#include "tests/support/Bench.h"

namespace shorttest::testkit {
namespace {

constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

class Discharge : public Bench {
 protected:
  void SetUp() override {
    data.U_Control = 2;
    data.Timeout = 5000;
    clock.ticksStep = 1000;
  }

  double Wait(double limit = 0.5, double posFrom = 0.25, double posTo = 0.5) {
    return WaitForDischarge(data, limit, posFrom, posTo, [this](double position) {
      log.Add("progress " + ExactText(position));
      return ++progressCalls == progressStopsAt;
    });
  }

  // Position after `elapsed` ms of the default time limit, from 0.25 to 0.5.
  static std::string At(double elapsed) { return Progress(0.25 + elapsed / 5000.0 * (0.5 - 0.25)); }

  TShortTestData data{1, 4};
  int progressStopsAt = 0;  // the call that answers true, from 1; 0: none
  int progressCalls = 0;
};

// --- one reading or none ---

TEST_F(Discharge, WithoutVoltageControlNothingIsRead) {
  for (const int control : {0, -1, -100}) {
    data.U_Control = control;
    driver.NextReadings({12.0});
    EXPECT_EQ(Wait(), 0.0);
  }
  EXPECT_EQ(log.Text(), "");
}

TEST_F(Discharge, VoltageControlAloneReadsOnceAndDoesNotWait) {
  for (const int control : {1, 3, 4, 100}) {
    data.U_Control = control;
    driver.NextReadings({3.0});
    log.Clear();
    EXPECT_EQ(Wait(), 3.0);
    EXPECT_EQ(log.Text(), Voltage());
  }
  EXPECT_EQ(clock.tickReads, 0);
}

TEST_F(Discharge, AVoltageBelowTheLimitEndsAtOnce) {
  driver.NextReadings({0.3});
  EXPECT_EQ(Wait(), 0.3);
  EXPECT_EQ(log.Text(), Voltage());
}

TEST_F(Discharge, TheLimitItselfEndsTheWait) {
  driver.NextReadings({0.5});
  EXPECT_EQ(Wait(), 0.5);
  driver.NextReadings({-0.5});
  EXPECT_EQ(Wait(), -0.5);
  EXPECT_EQ(log.Text(), Voltage() + Voltage());
}

TEST_F(Discharge, ATimeLimitOfZeroDoesNoHarmWhileNothingNeedsWaiting) {
  data.Timeout = 0;
  driver.NextReadings({0.4});
  EXPECT_EQ(Wait(), 0.4);
  data.U_Control = 1;
  driver.NextReadings({4.0});
  EXPECT_EQ(Wait(), 4.0);
}

TEST_F(Discharge, ATimeLimitOfZeroIsRefusedWhenWaitingIsNeeded) {
  data.Timeout = 0;
  driver.NextReadings({4.0, 0.0});
  EXPECT_THROW(Wait(), std::invalid_argument);
  EXPECT_EQ(log.Text(), Voltage());
}

// --- waiting ---

TEST_F(Discharge, ReadsUntilTheVoltageHasFallen) {
  driver.NextReadings({4.0, 2.0, 1.0, 0.5, 0.1});
  EXPECT_EQ(Wait(), 0.5);
  EXPECT_EQ(log.Text(), Voltage() + Voltage() + At(1000) + Voltage() + At(2000) + Voltage());
}

TEST_F(Discharge, ANegativeVoltageIsWaitedForAsWell) {
  driver.NextReadings({-4.0, -2.0, -0.2});
  EXPECT_EQ(Wait(), -0.2);
  EXPECT_EQ(log.Text(), Voltage() + Voltage() + At(1000) + Voltage());
}

TEST_F(Discharge, ADischargeThatNeverEndsIsGivenUpJustPastTheTimeLimit) {
  driver.AllReadings([](int) { return 2.0; });
  EXPECT_EQ(Wait(), 2.0);
  std::string expected = Voltage();
  // At the time limit itself it goes on; past it the position is told before it gives up.
  for (const double elapsed : {1000.0, 2000.0, 3000.0, 4000.0, 5000.0, 6000.0}) {
    expected += Voltage() + At(elapsed);
  }
  EXPECT_EQ(log.Text(), expected);
}

TEST_F(Discharge, TheLastReadingIsReturned) {
  driver.AllReadings([](int number) { return 20.0 - number; });
  EXPECT_EQ(Wait(), 13.0);  // one reading before the wait, six in it
}

TEST_F(Discharge, StopsWhenProgressSaysSo) {
  progressStopsAt = 2;
  driver.AllReadings([](int number) { return 20.0 - number; });
  EXPECT_EQ(Wait(), 17.0);
  EXPECT_EQ(log.Text(), Voltage() + Voltage() + At(1000) + Voltage() + At(2000));
}

TEST_F(Discharge, AFallenVoltageIsReturnedWithoutAskingProgress) {
  progressStopsAt = 1;
  driver.NextReadings({2.0, 0.0});
  EXPECT_EQ(Wait(), 0.0);
  EXPECT_EQ(log.Text(), Voltage() + Voltage());
}

TEST_F(Discharge, PositionsRunBetweenTheGivenOnes) {
  data.Timeout = 4000;
  driver.AllReadings([](int) { return 9.0; });
  Wait(0.7, 0.1, 0.9);
  std::string expected = Voltage();
  for (const double elapsed : {1000.0, 2000.0, 3000.0, 4000.0, 5000.0}) {
    expected += Voltage() + Progress(0.1 + elapsed / 4000.0 * (0.9 - 0.1));
  }
  EXPECT_EQ(log.Text(), expected);
}

TEST_F(Discharge, NoTimePassedIsTheFirstPosition) {
  clock.ticksStep = 0;
  progressStopsAt = 1;
  driver.AllReadings([](int) { return 9.0; });
  Wait();
  EXPECT_EQ(log.Text(), Voltage() + Voltage() + Progress(0.25));
}

TEST_F(Discharge, TheWrapOfTheTickCountDoesNoHarm) {
  clock.ticks = 0xFFFF'FFFFU - 1499;  // wraps between the first and the second second
  driver.AllReadings([](int) { return 2.0; });
  EXPECT_EQ(Wait(), 2.0);
  std::string expected = Voltage();
  for (const double elapsed : {1000.0, 2000.0, 3000.0, 4000.0, 5000.0, 6000.0}) {
    expected += Voltage() + At(elapsed);
  }
  EXPECT_EQ(log.Text(), expected);
}

TEST_F(Discharge, ElapsedTimeIsSigned) {
  // Half the range of the tick count away, the difference is negative and lies before any time limit.
  clock.ticksStep = 0x8000'0000U;
  progressStopsAt = 1;
  driver.AllReadings([](int) { return 2.0; });
  Wait();
  EXPECT_EQ(log.Text(), Voltage() + Voltage() + At(-2147483648.0));
}

TEST_F(Discharge, ANegativeTimeLimitEndsAfterOneMoreReading) {
  data.Timeout = -5000;
  driver.AllReadings([](int) { return 2.0; });
  EXPECT_EQ(Wait(), 2.0);
  EXPECT_EQ(log.Text(), Voltage() + Voltage() + Progress(0.25 + 1000.0 / -5000.0 * 0.25));
}

TEST_F(Discharge, NeverWaitsOnTheCounter) {
  driver.NextReadings({4.0, 2.0, 0.1});
  Wait();
  EXPECT_EQ(clock.counterReads, 0);
}

// --- errors ---

TEST_F(Discharge, AFailedFirstReadingThrows) {
  driver.FailAt(1, "instrument");
  EXPECT_EQ(HardwareErrorOf([this] { Wait(); }), "instrument");
}

TEST_F(Discharge, AFailedReadingWhileWaitingThrows) {
  driver.AllReadings([](int) { return 2.0; });
  driver.FailAt(3, "instrument");
  EXPECT_EQ(HardwareErrorOf([this] { Wait(); }), "instrument");
  EXPECT_EQ(log.Count("progress"), 1);
}

TEST_F(Discharge, AReadingThatIsNotANumberIsWaitedPast) {
  driver.NextReadings({NotANumber, 2.0, NotANumber, 0.25});
  EXPECT_EQ(Wait(), 0.25);
  EXPECT_EQ(log.Text(), Voltage() + Voltage() + At(1000) + Voltage() + At(2000) + Voltage());
}

TEST_F(Discharge, AWaitThatEndsOnAReadingThatIsNotANumberIsNoMeasurement) {
  driver.AllReadings([](int) { return NotANumber; });
  EXPECT_THROW(Wait(), std::runtime_error) << "at the time limit";
  progressStopsAt = progressCalls + 1;
  EXPECT_THROW(Wait(), std::runtime_error) << "at the stop";
  data.U_Control = 1;
  EXPECT_THROW(Wait(), std::runtime_error) << "at the only reading";
}

TEST_F(Discharge, AnInfiniteVoltageIsWaitedForUntilTheTimeLimit) {
  driver.AllReadings([](int) { return -std::numeric_limits<double>::infinity(); });
  EXPECT_EQ(Wait(), -std::numeric_limits<double>::infinity());
  EXPECT_EQ(log.Count("progress"), 6);
}

}  // namespace
}  // namespace shorttest::testkit
