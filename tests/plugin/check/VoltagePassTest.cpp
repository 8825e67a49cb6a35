// The second pass: channels carrying a voltage.
#include "tests/plugin/check/CheckBench.h"

namespace shorttest::testkit {
namespace {

class VoltagePass : public PassBench {};

TEST_F(VoltagePass, LeavesEveryChannelOnLine1) {
  Expect(1, "8 18 118");
  EXPECT_EQ(CheckVoltagePass(data, work), 0);
  std::string calls = Bar(0.25) + Connect(1, 1);
  calls += Bar(1.0 / 12.0 + 0.25) + Connect(2, 0) + Voltage() + Connect(2, 1) + Release(2, 0);
  calls += Bar(2.0 / 12.0 + 0.25) + Connect(3, 0) + Voltage() + Connect(3, 1) + Release(3, 0);
  EXPECT_EQ(log.Text(), calls);
  for (int channel = 1; channel <= 3; ++channel) EXPECT_TRUE(driver.Closed(channel, 1));
}

TEST_F(VoltagePass, ASingleChannelIsOnlySwitched) {
  Expect(49, "8");
  EXPECT_EQ(CheckVoltagePass(data, work), 0);
  EXPECT_EQ(log.Text(), Bar(0.25) + Connect(49, 1));
}

TEST_F(VoltagePass, SkipsSuspendedChannels) {
  Expect(1, "9 48 449 4148");
  EXPECT_EQ(CheckVoltagePass(data, work), 0);
  std::string calls = Bar(0.25) + Connect(2, 1) + Bar(2.0 / 16.0 + 0.25);
  calls += Bar(3.0 / 16.0 + 0.25) + Connect(4, 0) + Voltage() + Connect(4, 1) + Release(4, 0);
  EXPECT_EQ(log.Text(), calls);
}

TEST_F(VoltagePass, WithEveryChannelSuspendedTheOneAfterTheRangeIsSwitched) {
  Expect(47, "9 49");
  EXPECT_EQ(CheckVoltagePass(data, work), 0);
  EXPECT_EQ(log.Text(), Bar(0.25) + Connect(49, 1));
}

TEST_F(VoltagePass, ALiveChannelEndsThePassAndIsSuspendedInWork) {
  Expect(1, "8 18 118 1118");
  data.MaxError = 4;
  data.U_Control = 1;
  driver.Live(3, 5.25);
  EXPECT_EQ(CheckVoltagePass(data, work), 4);
  std::string calls = Bar(0.25) + Connect(1, 1);
  calls += Bar(1.0 / 16.0 + 0.25) + Connect(2, 0) + Voltage() + Connect(2, 1) + Release(2, 0);
  calls += Bar(2.0 / 16.0 + 0.25) + Connect(3, 0) + Voltage();
  EXPECT_EQ(log.Text(), calls);
  EXPECT_EQ(MatrixText(work), "8 08 449 0048");
  EXPECT_EQ(work.GetVoltage(2), 5.25);
  EXPECT_EQ(MatrixText(data), "8 18 118 1118");
}

TEST_F(VoltagePass, AVoltageAtTheFirstComparisonIsBlamedOnTheFirstChannel) {
  Expect(1, "8 18 118");
  data.U_Control = 1;
  driver.Live(2, 5.0);
  EXPECT_EQ(CheckVoltagePass(data, work), 10);
  EXPECT_EQ(MatrixText(work), "9 48 408");
  EXPECT_EQ(work.GetVoltage(0), 5.0);
  EXPECT_EQ(work.GetVoltage(1), 0.0);
}

TEST_F(VoltagePass, TheRuleOfTheFirstChannelIsForIndex1Alone) {
  Expect(1, "9 48 418");
  data.U_Control = 1;
  driver.Live(3, 5.0);  // the first comparison, but index 2
  CheckVoltagePass(data, work);
  EXPECT_EQ(MatrixText(work), "8 08 449");
}

struct LimitRow {
  const char* name;
  double volts;
  bool live;
};

class CheckVoltageLimit : public VoltagePass, public ::testing::WithParamInterface<LimitRow> {};

TEST_P(CheckVoltageLimit, ComparesTheSignedVoltage) {
  Expect(1, "8 18 118");
  data.U_Control = 1;
  driver.Live(3, GetParam().volts);
  EXPECT_EQ(CheckVoltagePass(data, work), GetParam().live ? data.MaxError : 0);
  EXPECT_EQ(work.Get(2, 2) == CellState::Suspended, GetParam().live);
}

INSTANTIATE_TEST_SUITE_P(Voltages, CheckVoltageLimit,
                         ::testing::Values(LimitRow{"Zero", 0.0, false}, LimitRow{"LearnLimit", 0.5, false},
                                           LimitRow{"JustBelow", 0.699999, false}, LimitRow{"At", 0.7, true},
                                           LimitRow{"Above", 0.700001, true},
                                           LimitRow{"NegativeAt", -0.7, false},
                                           LimitRow{"NegativeFarBelow", -24.0, false}),
                         [](const auto& row) { return row.param.name; });

TEST_F(VoltagePass, WithoutVoltageControlNothingIsRead) {
  Expect(1, "8 18 118");
  data.U_Control = 0;
  driver.Live(3, 230.0);
  EXPECT_EQ(CheckVoltagePass(data, work), 0);
  EXPECT_EQ(log.Count("read"), 0);
  EXPECT_TRUE(driver.Closed(3, 1));
}

TEST_F(VoltagePass, WaitsForADischargeWithThePositionsOfTheChannel) {
  Expect(1, "8 18 118");
  data.Timeout = 1000;
  clock.ticksStep = 200;
  driver.Charge(3, 2.0, 0.6);  // 2.0, 1.2, 0.72, 0.432 V
  EXPECT_EQ(CheckVoltagePass(data, work), 0);
  const double from = 2.0 / 12.0 + 0.25;
  const double to = 3.0 / 12.0 + 0.25;
  std::string calls = Bar(from) + Connect(3, 0) + Voltage() + Voltage();
  calls += Bar(from + 0.2 * (to - from)) + Voltage() + Bar(from + 0.4 * (to - from)) + Voltage();
  calls += Connect(3, 1) + Release(3, 0);
  EXPECT_TRUE(log.Text().ends_with(calls)) << log.Text();
}

TEST_F(VoltagePass, ADischargeThatNeverEndsIsALiveChannel) {
  Expect(1, "8 18 118");
  data.Timeout = 1000;
  clock.ticksStep = 600;
  driver.Live(3, 2.0);
  EXPECT_EQ(CheckVoltagePass(data, work), 10);
  EXPECT_EQ(work.GetVoltage(2), 2.0);
  EXPECT_EQ(log.Count("read 8"), 1 + 3);
}

TEST_F(VoltagePass, ANegativeChargeIsWaitedForAndThenPasses) {
  Expect(1, "8 18 118");
  data.Timeout = 1000;
  clock.ticksStep = 600;
  driver.Live(3, -2.0);
  EXPECT_EQ(CheckVoltagePass(data, work), 0);
  EXPECT_EQ(log.Count("read 8"), 1 + 3);
}

TEST_F(VoltagePass, ACancelWithinTheWaitEndsItAndEntersTheVoltage) {
  Expect(1, "8 18 118");
  driver.Live(3, 2.0);
  ui.PressCancelAt(4);  // the first call within the wait for channel 3
  EXPECT_EQ(CheckVoltagePass(data, work), 10);
  EXPECT_EQ(work.GetVoltage(2), 2.0);
  EXPECT_TRUE(log.Text().ends_with(Voltage() + Voltage() + Stopped()));
}

TEST_F(VoltagePass, ACancelReturnsNoError) {
  Expect(1, "8 18 118");
  ui.PressCancelAt(1);
  EXPECT_EQ(CheckVoltagePass(data, work), 0);
  EXPECT_EQ(log.Text(), Stopped());
}

TEST_F(VoltagePass, ACancelBetweenChannelsReturnsNoError) {
  Expect(1, "8 18 118");
  ui.PressCancelAt(3);
  EXPECT_EQ(CheckVoltagePass(data, work), 0);
  EXPECT_TRUE(log.Text().ends_with(Release(2, 0) + Stopped()));
}

TEST_F(VoltagePass, ATimeLimitOfZeroIsRefusedWhenWaitingIsNeeded) {
  Expect(1, "8 18 118");
  data.Timeout = 0;
  driver.Live(3, 2.0);
  EXPECT_THROW(CheckVoltagePass(data, work), std::invalid_argument);
}

}  // namespace
}  // namespace shorttest::testkit
