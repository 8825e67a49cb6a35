// The voltage pass.
#include "tests/plugin/learn/LearnBench.h"

namespace shorttest::testkit {
namespace {

class LearnVoltage : public LearnBench {
 protected:
  void SetUp() override {
    LearnBench::SetUp();
    Channels(1, 4);
    data.U_Control = 1;
  }
};

TEST_F(LearnVoltage, TheFirstComparisonSuspendsBothChannels) {
  driver.Live(2, 12.0);
  LearnVoltagePass(data, Progressed);
  EXPECT_EQ(MatrixText(data), "9 49 448 4408");
  EXPECT_EQ(data.GetVoltage(0), 12.0);
  EXPECT_EQ(data.GetVoltage(1), 12.0);
  std::string calls = PrepareAfterReset(1) + Connect(1, 1);
  calls += Progress(1.0 / 12.0) + Connect(2, 0) + Voltage() + Release(2, 0);
  calls += Progress(2.0 / 12.0) + Connect(3, 0) + Voltage() + Connect(3, 1);
  calls += Release(3, 0);
  calls += Progress(3.0 / 12.0) + Connect(4, 0) + Voltage() + Connect(4, 1);
  calls += Release(4, 0);
  EXPECT_EQ(log.Text(), calls);
}

TEST_F(LearnVoltage, TheSuspendedReferenceStaysOnLine1UntilThePairPass) {
  driver.Live(2, 12.0);
  Learn();
  std::string isolation = PrepareWithoutReset(1) + Progress(0.25) + Progress(1.0 / 12.0 + 0.25);
  isolation += Progress(2.0 / 12.0 + 0.25) + Release(3, 1);
  EXPECT_NE(log.Text().find(isolation), std::string::npos) << log.Text();
}

TEST_F(LearnVoltage, ALaterComparisonSuspendsThatChannelAlone) {
  driver.Live(3, -12.0);
  LearnVoltagePass(data, Progressed);
  EXPECT_EQ(MatrixText(data), "8 08 449 0048");
  EXPECT_EQ(data.GetVoltage(2), -12.0);
  EXPECT_EQ(data.GetVoltage(0), 0.0);
  EXPECT_FALSE(driver.Closed(3, 0));
  EXPECT_FALSE(driver.Closed(3, 1));
  EXPECT_TRUE(driver.Closed(4, 1));
}

TEST_F(LearnVoltage, WithTheFirstChannelSuspendedTheFirstComparisonIsNotAgainstIt) {
  Suspend(0);
  driver.Live(3, 5.0);
  LearnVoltagePass(data, Progressed);
  // Index 2 is compared with index 1, and a live one suspends itself alone.
  EXPECT_EQ(MatrixText(data), "9 48 449 4048");
  std::string calls = PrepareAfterReset(1) + Connect(2, 1);
  calls += Progress(2.0 / 12.0) + Connect(3, 0) + Voltage() + Release(3, 0);
  calls += Progress(3.0 / 12.0) + Connect(4, 0) + Voltage() + Connect(4, 1);
  calls += Release(4, 0);
  EXPECT_EQ(log.Text(), calls);
}

TEST_F(LearnVoltage, ALiveReferenceSuspendsEverything) {
  driver.Live(1, 5.0);
  LearnVoltagePass(data, Progressed);
  EXPECT_EQ(MatrixText(data), "9 49 449 4449");
  EXPECT_EQ(data.GetVoltage(0), -5.0);
  EXPECT_EQ(data.GetVoltage(3), -5.0);
}

struct LimitRow {
  const char* name;
  double volts;
  bool suspended;
};

class VoltageLimit : public LearnVoltage, public ::testing::WithParamInterface<LimitRow> {};

TEST_P(VoltageLimit, IsHalfAVoltOfEitherSignAndSuspendsItself) {
  driver.Live(3, GetParam().volts);
  LearnVoltagePass(data, Progressed);
  EXPECT_EQ(MatrixText(data), GetParam().suspended ? "8 08 449 0048" : "8 08 008 0008");
  EXPECT_EQ(driver.Closed(3, 1), !GetParam().suspended);
}

INSTANTIATE_TEST_SUITE_P(Voltages, VoltageLimit,
                         ::testing::Values(LimitRow{"Zero", 0.0, false}, LimitRow{"Below", 0.499999, false},
                                           LimitRow{"At", 0.5, true}, LimitRow{"Above", 0.500001, true},
                                           LimitRow{"NegativeBelow", -0.499999, false},
                                           LimitRow{"NegativeAt", -0.5, true},
                                           LimitRow{"NegativeAbove", -0.6, true},
                                           LimitRow{"BetweenLearnAndCheckLimit", 0.6, true}),
                         [](const auto& row) { return row.param.name; });

TEST_F(LearnVoltage, AChargeIsWaitedForAndJoinsTheBundle) {
  data.U_Control = 2;
  data.Timeout = 1000;
  clock.ticksStep = 100;
  driver.Charge(3, 1.8, 0.5);  // 1.8, 0.9, 0.45 V
  LearnVoltagePass(data, Progressed);
  EXPECT_EQ(MatrixText(data), "8 08 008 0008");
  const double from = 2.0 / 12.0;
  const double to = 3.0 / 12.0;
  std::string calls = PrepareAfterReset(1) + Connect(1, 1);
  calls += Progress(1.0 / 12.0) + Connect(2, 0) + Voltage() + Connect(2, 1);
  calls += Release(2, 0);
  calls += Progress(2.0 / 12.0) + Connect(3, 0) + Voltage() + Voltage();
  calls += Progress(from + 100.0 / 1000.0 * (to - from)) + Voltage() + Connect(3, 1);
  calls += Release(3, 0);
  calls += Progress(3.0 / 12.0) + Connect(4, 0) + Voltage() + Connect(4, 1);
  calls += Release(4, 0);
  EXPECT_EQ(log.Text(), calls);
}

TEST_F(LearnVoltage, AChargeThatStaysSuspendsAfterTheTimeLimit) {
  data.U_Control = 2;
  data.Timeout = 1000;
  clock.ticksStep = 600;
  driver.Live(3, 1.8);
  LearnVoltagePass(data, Progressed);
  EXPECT_EQ(MatrixText(data), "8 08 449 0048");
  EXPECT_EQ(log.Count("read 8"), 1 + 3 + 1);
}

TEST_F(LearnVoltage, AStopDuringTheWaitStillEntersTheVoltage) {
  data.U_Control = 2;
  driver.Live(3, 1.8);
  StopFrom(3);  // within the wait for channel 3
  LearnVoltagePass(data, Progressed);
  EXPECT_EQ(MatrixText(data), "8 08 449 0048");
  const std::string end = Progress(2.0 / 12.0) + Connect(3, 0) + Voltage() + Voltage() +
                          Progress(2.0 / 12.0) + Release(3, 0) + Progress(3.0 / 12.0);
  const std::string text = log.Text();
  ASSERT_GT(text.size(), end.size());
  EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

TEST_F(LearnVoltage, ATimeLimitOfZeroEndsLearningCleanly) {
  data.U_Control = 2;
  data.Timeout = 0;
  driver.Live(3, 1.8);
  EXPECT_THROW(Learn(), std::invalid_argument);
  EXPECT_TRUE(driver.AllRelaysOpen());
}

TEST_F(LearnVoltage, ALiveChannelTakesNoPartInTheRest) {
  driver.Live(3, 24.0);
  driver.Wire(1, 2);
  driver.Wire(2, 4);
  Learn();
  EXPECT_EQ(MatrixText(data), "8 28 449 2248");
  EXPECT_EQ(log.Count("bus 128 0 130"), 1);  // channel 3 on line 0: to read its voltage, never again
  EXPECT_EQ(log.Count("bus 129 0 130"), 0);
}

}  // namespace
}  // namespace shorttest::testkit
