// Whole runs of learning, call by call.
#include "tests/plugin/learn/LearnBench.h"

namespace shorttest::testkit {
namespace {

class LearnTrace : public LearnBench {};

TEST_F(LearnTrace, OneWireAndOneFreeChannel) {
  Channels(1, 3);
  driver.Wire(1, 2, 0.4);
  Learn();
  std::string calls = Progress(0.01);
  // voltages
  calls += PrepareAfterReset(1) + Connect(1, 1);
  calls += Progress(1.0 / 8.0) + Connect(2, 0) + Voltage() + Connect(2, 1) + Release(2, 0);
  calls += Progress(2.0 / 8.0) + Connect(3, 0) + Voltage() + Connect(3, 1) + Release(3, 0);
  // each against all others
  calls += PrepareWithoutReset(1);
  calls += Progress(0.0 / 8.0 + 0.25) + Release(1, 1) + Connect(1, 0) + LowResistance();
  calls += Release(1, 0) + Connect(1, 1);
  calls += Progress(1.0 / 8.0 + 0.25) + Release(2, 1) + Connect(2, 0) + LowResistance();
  calls += Release(2, 0) + Connect(2, 1);
  calls += Progress(2.0 / 8.0 + 0.25) + Release(3, 1) + Connect(3, 0) + HighResistance();
  calls += Release(3, 0) + Connect(3, 1);
  // pairs of candidates
  calls += PrepareAfterReset(1);
  calls += Progress(0.0 / 2.0 + 0.5) + Connect(1, 1) + Connect(2, 0) + LowResistance();
  calls += Release(2, 0) + Release(1, 1);
  calls += Progress(1.0 / 2.0 + 0.5) + Connect(2, 1) + Release(2, 1);
  // clean-up
  calls += ReleaseAll(1) + Progress(1.0);
  EXPECT_EQ(log.Text(), calls);
  EXPECT_EQ(MatrixText(data), "8 28 118");
  EXPECT_EQ(data.GetR(1, 0), 0.4);
  EXPECT_EQ(data.GetR(2, 0), 1e9);
  EXPECT_EQ(data.GetR(2, 1), 1e9);
}

TEST_F(LearnTrace, FourChannelsWiredTogetherTakeThreePairs) {
  Channels(1, 4);
  driver.Wire(1, 2, 0.1);
  driver.Wire(2, 3, 0.2);
  driver.Wire(3, 4, 0.3);
  Learn();
  const std::string text = log.Text();
  std::string pairs = PrepareAfterReset(1);
  pairs += Progress(0.0 / 6.0 + 0.5) + Connect(1, 1);
  pairs += Connect(2, 0) + LowResistance() + Release(2, 0);
  pairs += Connect(3, 0) + LowResistance() + Release(3, 0);
  pairs += Connect(4, 0) + LowResistance() + Release(4, 0) + Release(1, 1);
  pairs += Progress(1.0 / 6.0 + 0.5) + Connect(2, 1) + Release(2, 1);
  pairs += Progress(2.0 / 6.0 + 0.5) + Connect(3, 1) + Release(3, 1);
  pairs += Progress(3.0 / 6.0 + 0.5) + Connect(4, 1) + Release(4, 1) + ReleaseAll(1) + Progress(1.0);
  ASSERT_GT(text.size(), pairs.size());
  EXPECT_EQ(text.substr(text.size() - pairs.size()), pairs);
  EXPECT_EQ(MatrixText(data), "8 28 228 2228");
}

TEST_F(LearnTrace, NothingConnectedMeasuresNoPair) {
  Channels(1, 2);
  Learn();
  std::string calls = Progress(0.01) + PrepareAfterReset(1) + Connect(1, 1);
  calls += Progress(1.0 / 4.0) + Connect(2, 0) + Voltage() + Connect(2, 1);
  calls += Release(2, 0) + PrepareWithoutReset(1);
  calls += Progress(0.0 / 4.0 + 0.25) + Release(1, 1) + Connect(1, 0);
  calls += HighResistance() + Release(1, 0) + Connect(1, 1);
  calls += Progress(1.0 / 4.0 + 0.25) + Release(2, 1) + Connect(2, 0);
  calls += HighResistance() + Release(2, 0) + Connect(2, 1);
  calls += PrepareAfterReset(1) + ReleaseAll(1) + Progress(1.0);
  EXPECT_EQ(log.Text(), calls);
  EXPECT_EQ(MatrixText(data), "8 18");
}

TEST_F(LearnTrace, ARangeAcrossTwoCards) {
  Channels(48, 49);
  driver.Wire(48, 49, 5.0);
  Learn();
  std::string calls = Progress(0.01) + PrepareAfterReset(2) + Connect(48, 1);
  calls += Progress(1.0 / 4.0) + Connect(49, 0) + Voltage() + Connect(49, 1);
  calls += Release(49, 0) + PrepareWithoutReset(2);
  calls += Progress(0.0 / 4.0 + 0.25) + Release(48, 1) + Connect(48, 0);
  calls += HighResistance() + Release(48, 0) + Connect(48, 1);
  calls += Progress(1.0 / 4.0 + 0.25) + Release(49, 1) + Connect(49, 0);
  calls += HighResistance() + Release(49, 0) + Connect(49, 1) + PrepareAfterReset(2);
  calls += Progress(0.0 / 2.0 + 0.5) + Connect(48, 1) + Connect(49, 0);
  calls += HighResistance() + Release(49, 0) + Release(48, 1);
  calls += Progress(1.0 / 2.0 + 0.5) + Connect(49, 1) + Release(49, 1);
  calls += ReleaseAll(2) + Progress(1.0);
  EXPECT_EQ(log.Text(), calls);
  EXPECT_EQ(MatrixText(data), "8 28");
  EXPECT_EQ(data.GetR(1, 0), 5.0);
}

TEST_F(LearnTrace, ASingleChannelHasPositionsAtThePassStarts) {
  Channels(5, 5);
  Learn();
  std::string calls = Progress(0.01) + PrepareAfterReset(1) + Connect(5, 1) + PrepareWithoutReset(1);
  calls += Progress(0.25) + Release(5, 1) + Connect(5, 0) + HighResistance();
  calls += Release(5, 0) + Connect(5, 1) + PrepareAfterReset(1) + ReleaseAll(1);
  calls += Progress(1.0);
  EXPECT_EQ(log.Text(), calls);
  EXPECT_EQ(MatrixText(data), "8");
}

TEST_F(LearnTrace, ASingleCandidateHasThePositionOfThePassStart) {
  Channels(5, 5);
  driver.AllReadings([](int) { return 0.4; });
  Learn();
  std::string calls = Progress(0.01) + PrepareAfterReset(1) + Connect(5, 1) + PrepareWithoutReset(1);
  calls += Progress(0.25) + Release(5, 1) + Connect(5, 0) + LowResistance();
  calls += Release(5, 0) + Connect(5, 1) + PrepareAfterReset(1);
  calls += Progress(0.5) + Connect(5, 1) + Release(5, 1) + ReleaseAll(1);
  calls += Progress(1.0);
  EXPECT_EQ(log.Text(), calls);
}

TEST_F(LearnTrace, WithEveryChannelSuspendedTheOneAfterTheRangeIsSwitched) {
  Channels(1, 2);
  Suspend(0);
  Suspend(1);
  Learn();
  std::string calls = Progress(0.01) + PrepareAfterReset(1) + Connect(3, 1) + PrepareWithoutReset(1);
  calls += Progress(0.0 / 4.0 + 0.25) + Progress(1.0 / 4.0 + 0.25);
  calls += PrepareAfterReset(1) + ReleaseAll(1) + Progress(1.0);
  EXPECT_EQ(log.Text(), calls);
  EXPECT_EQ(MatrixText(data), "9 49");
}

TEST_F(LearnTrace, TheOneAfterTheRangeIsOpenedAlsoOnAnotherCard) {
  Channels(47, 48);
  Suspend(0);
  Suspend(1);
  Learn();
  std::string calls = Progress(0.01) + PrepareAfterReset(1) + Connect(49, 1) + PrepareWithoutReset(1);
  calls += Progress(0.0 / 4.0 + 0.25) + Progress(1.0 / 4.0 + 0.25);
  calls += PrepareAfterReset(1) + ReleaseAll(1) + "bus 131 0 64\n" + Progress(1.0);
  EXPECT_EQ(log.Text(), calls);
  EXPECT_TRUE(driver.AllRelaysOpen());
}

TEST_F(LearnTrace, ChannelsSuspendedWhileLearningLeaveNothingAfterTheRange) {
  Channels(47, 48);
  data.U_Control = 1;
  driver.Live(48, 5.0);
  Learn();
  EXPECT_EQ(MatrixText(data), "9 49");
  EXPECT_TRUE(log.Text().ends_with(ReleaseAll(1) + Progress(1.0))) << log.Text();
}

TEST_F(LearnTrace, AnEmptyRangeMeasuresNothing) {
  Channels(4, 3);
  Learn();
  std::string calls = Progress(0.01) + PrepareAfterReset(1) + Connect(4, 1) + PrepareWithoutReset(1);
  calls += PrepareAfterReset(1) + ReleaseAll(1) + Progress(1.0);
  EXPECT_EQ(log.Text(), calls);
}

TEST_F(LearnTrace, TheTerminatingResistorIsOnDuringAllPasses) {
  Channels(1, 1);
  data.LastRelaisKarte = 3;
  data.LastRelais = 2;
  Learn();
  std::string calls = TerminationOn(2, 1) + Progress(0.01) + PrepareAfterReset(1) + Connect(1, 1);
  calls += PrepareWithoutReset(1) + Progress(0.25) + Release(1, 1) + Connect(1, 0);
  calls += HighResistance() + Release(1, 0) + Connect(1, 1) + PrepareAfterReset(1);
  calls += ReleaseAll(1) + TerminationOff(2, 1) + Progress(1.0);
  EXPECT_EQ(log.Text(), calls);
  EXPECT_FALSE(driver.TerminationOn());
}

TEST_F(LearnTrace, WithoutATerminatingResistorItsRelayIsNeverSwitched) {
  for (const auto& [card, relay] : {std::pair(0, 2), std::pair(2, 0), std::pair(-1, 2), std::pair(2, -1)}) {
    Channels(1, 2);
    data.LastRelaisKarte = card;
    data.LastRelais = relay;
    Learn();
  }
  EXPECT_EQ(log.Count("relay"), 0);
}

TEST_F(LearnTrace, WithoutVoltageControlNoVoltageIsRead) {
  Channels(1, 3);
  data.U_Control = 0;
  driver.Live(2, 30.0);
  Learn();
  EXPECT_EQ(log.Count("read 8"), 0);
  EXPECT_EQ(MatrixText(data), "8 18 118");
}

TEST_F(LearnTrace, TheRangeOfTheInstrumentFollowsTheThreshold) {
  Channels(1, 2);
  data.Schwelle = 25e3;
  data.Schwelle2 = 5.0;  // plays no part in learning
  driver.Wire(1, 2, 20e3);
  Learn();
  EXPECT_EQ(log.Count("read 10"), log.Count("read 10 4 2"));
  EXPECT_EQ(MatrixText(data), "8 28");
}

TEST_F(LearnTrace, EveryRelayIsOpenAfterwards) {
  Channels(40, 150);
  for (int channel = 40; channel < 150; channel += 3) driver.Wire(channel, channel + 1);
  Learn();
  EXPECT_TRUE(driver.AllRelaysOpen());
  EXPECT_FALSE(driver.HasPendingError());
}

// --- preparation of the matrix ---

TEST_F(LearnTrace, ResetKeepsEverythingThatLearningDoesNotDecide) {
  Channels(1, 6);
  SetMatrix(data, "8 08 118 2238 44449 555558");
  data.SetC(1, 0, CellState::Connected, 0.3);
  data.SetC(3, 2, CellState::ExcludedPair, 7.0);
  data.SetC(5, 0, CellState::Reserved, 8.0);
  ResetLearnedCells(data);
  EXPECT_EQ(MatrixText(data), "8 08 008 0038 44449 555558");
  EXPECT_EQ(data.GetR(1, 0), -1.0);
  EXPECT_EQ(data.GetR(3, 2), 7.0);
  EXPECT_EQ(data.GetR(5, 0), 8.0);
  EXPECT_EQ(log.Text(), "");
}

TEST_F(LearnTrace, ResetTakesDiagonalCellsOfDamagedFilesAlongToTheLast) {
  Channels(1, 3);
  SetMatrix(data, "1 02 002");
  ResetLearnedCells(data);
  EXPECT_EQ(MatrixText(data), "0 00 000");
}

TEST_F(LearnTrace, AnEarlierResultIsForgotten) {
  Channels(1, 3);
  driver.Wire(1, 2);
  Learn();
  ASSERT_EQ(MatrixText(data), "8 28 118");
  driver.Unwire(1, 2);
  driver.Wire(2, 3);
  Learn();
  EXPECT_EQ(MatrixText(data), "8 18 128");
}

TEST_F(LearnTrace, AChannelSuspendedEarlierStaysSuspendedAndIsLeftAlone) {
  Channels(1, 3);
  Suspend(1);
  driver.Wire(1, 2);
  Learn();
  EXPECT_EQ(MatrixText(data), "8 49 148");
  std::string calls = Progress(0.01) + PrepareAfterReset(1) + Connect(1, 1) + Progress(1.0 / 8.0);
  calls += Progress(2.0 / 8.0) + Connect(3, 0) + Voltage() + Connect(3, 1);
  calls += Release(3, 0) + PrepareWithoutReset(1);
  calls += Progress(0.25) + Release(1, 1) + Connect(1, 0) + HighResistance();
  calls += Release(1, 0) + Connect(1, 1) + Progress(1.0 / 8.0 + 0.25);
  calls += Progress(2.0 / 8.0 + 0.25) + Release(3, 1) + Connect(3, 0);
  calls += HighResistance() + Release(3, 0) + Connect(3, 1) + PrepareAfterReset(1);
  calls += ReleaseAll(1) + Progress(1.0);
  EXPECT_EQ(log.Text(), calls);
}

TEST_F(LearnTrace, AnExcludedPairIsNeverMeasuredAsAPair) {
  Channels(1, 3);
  SetMatrix(data, "8 38 008");
  driver.Wire(1, 2);
  driver.Wire(2, 3);
  Learn();
  // 1 and 3 are measured; that 1 and 2 are excluded then holds for 3 and 2 as well.
  EXPECT_EQ(MatrixText(data), "8 38 238");
  EXPECT_EQ(log.Count("read 10"), 3 + 1);
}

}  // namespace
}  // namespace shorttest::testkit
