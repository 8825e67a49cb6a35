// The isolation pass.
#include "tests/plugin/learn/LearnBench.h"

namespace shorttest::testkit {
namespace {

class LearnIsolation : public LearnBench {
 protected:
  // The bundle that the voltage pass leaves.
  void Bundle() {
    for (int channel = data.von; channel <= data.bis; ++channel) ConnectChannel(channel, 1);
    log.Clear();
  }
};

TEST_F(LearnIsolation, ListsConnectedChannelsInAscendingOrderWithTheirResistance) {
  Channels(11, 15);
  driver.Wire(12, 15, 3.0);
  driver.Wire(13, 14, 2.0);
  Bundle();
  const TConnFound candidates = LearnIsolationPass(data, Progressed);
  ASSERT_EQ(candidates.size(), 4U);
  const std::vector<std::pair<int, double>> expected = {{1, 3.0}, {2, 2.0}, {3, 2.0}, {4, 3.0}};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(candidates[i].x, expected[i].first);
    EXPECT_EQ(candidates[i].resistance, expected[i].second);
  }
  EXPECT_EQ(MatrixText(data), "8 18 108 1008 10008");
}

struct ThresholdRow {
  const char* name;
  double ohm;
  bool connected;
};

class LearnThreshold : public LearnIsolation, public ::testing::WithParamInterface<ThresholdRow> {};

TEST_P(LearnThreshold, IsOpenAtTheThresholdItself) {
  Channels(1, 2);
  driver.Wire(1, 2, GetParam().ohm);
  Bundle();
  const TConnFound candidates = LearnIsolationPass(data, Progressed);
  EXPECT_EQ(candidates.size(), GetParam().connected ? 2U : 0U);
  EXPECT_EQ(MatrixText(data), GetParam().connected ? "8 08" : "8 18");
}

INSTANTIATE_TEST_SUITE_P(Resistances, LearnThreshold,
                         ::testing::Values(ThresholdRow{"Negative", -3.0, true},
                                           ThresholdRow{"Zero", 0.0, true},
                                           ThresholdRow{"JustBelow", 9.999999, true},
                                           ThresholdRow{"At", 10.0, false},
                                           ThresholdRow{"Above", 10.000001, false}),
                         [](const auto& row) { return row.param.name; });

TEST_F(LearnIsolation, AFreeChannelIsOpenToAllWithItsOwnReading) {
  Channels(1, 3);
  Bundle();
  driver.NextReadings({0.5, 20.0, 20.0, 30.0, 30.0});  // channel 1 connected, 2 at 20 Ohm, 3 at 30 Ohm
  LearnIsolationPass(data, Progressed);
  EXPECT_EQ(MatrixText(data), "8 18 118");
  EXPECT_EQ(data.GetR(1, 0), 20.0);
  EXPECT_EQ(data.GetR(2, 1), 20.0);
  EXPECT_EQ(data.GetR(2, 0), 30.0);
}

TEST_F(LearnIsolation, ExcludedAndUntestablePairsKeepTheirState) {
  Channels(1, 4);
  SetMatrix(data, "8 38 008 0008");
  Suspend(3);
  Bundle();
  LearnIsolationPass(data, Progressed);
  EXPECT_EQ(MatrixText(data), "8 38 118 4449");
}

TEST_F(LearnIsolation, EachChannelReturnsToTheBundle) {
  Channels(1, 3);
  Bundle();
  driver.Wire(1, 3);
  LearnIsolationPass(data, Progressed);
  for (int channel = 1; channel <= 3; ++channel) {
    EXPECT_TRUE(driver.Closed(channel, 1));
    EXPECT_FALSE(driver.Closed(channel, 0));
  }
}

TEST_F(LearnIsolation, AStopReturnsTheListSoFar) {
  Channels(1, 3);
  driver.Wire(1, 3);
  Bundle();
  StopAt(2);
  const TConnFound candidates = LearnIsolationPass(data, Progressed);
  ASSERT_EQ(candidates.size(), 1U);
  EXPECT_EQ(candidates[0].x, 0);
  std::string calls = PrepareWithoutReset(1) + Progress(0.25) + Release(1, 1) + Connect(1, 0);
  calls += LowResistance() + Release(1, 0) + Connect(1, 1) + Progress(1.0 / 8.0 + 0.25);
  EXPECT_EQ(log.Text(), calls);
}

TEST_F(LearnIsolation, AReadingThatIsNotANumberEndsLearning) {
  Channels(1, 3);
  data.U_Control = 0;
  driver.AllReadings([](int) { return std::nan(""); });
  EXPECT_THROW(Learn(), std::runtime_error);
  EXPECT_EQ(MatrixText(data), "8 08 008");
  EXPECT_TRUE(driver.AllRelaysOpen());
  EXPECT_TRUE(log.Text().ends_with(ReleaseAll(1) + Progress(1.0)));
}

TEST_F(LearnIsolation, AThresholdNothingCanBeMeasuredAgainstEndsLearning) {
  Channels(1, 3);
  data.Schwelle = 0.0;
  EXPECT_THROW(Learn(), std::invalid_argument);
  EXPECT_TRUE(driver.AllRelaysOpen());
  EXPECT_EQ(log.Count("read 10"), 0);
}

}  // namespace
}  // namespace shorttest::testkit
