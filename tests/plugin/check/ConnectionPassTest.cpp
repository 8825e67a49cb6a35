// The first pass: expected connections.
#include "tests/plugin/check/CheckBench.h"

namespace shorttest::testkit {
namespace {

class ConnectionPass : public PassBench {};

TEST_F(ConnectionPass, MeasuresAnExpectedConnection) {
  Expect(1, "8 28 118");
  driver.Wire(1, 2, 0.4);
  EXPECT_EQ(CheckConnectionPass(data, work), 0);
  std::string calls = Bar(0.0) + PrepareAfterReset(1);
  calls += Bar(1.0 / 16.0) + Connect(1, 0) + Connect(2, 1) + LowResistance() + Release(1, 0) + Release(2, 1);
  calls += Bar(2.0 / 16.0);
  EXPECT_EQ(log.Text(), calls);
  EXPECT_EQ(MatrixText(work), "8 28 008");
  EXPECT_EQ(work.GetR(1, 0), 0.4);
}

TEST_F(ConnectionPass, MeasuresANetAsOftenAsItTakesToJoinIt) {
  Expect(1, "8 28 228 2228");
  driver.Wire(1, 2);
  driver.Wire(2, 3);
  driver.Wire(3, 4);
  EXPECT_EQ(CheckConnectionPass(data, work), 0);
  std::string calls = Bar(0.0) + PrepareAfterReset(1) + Bar(1.0 / 20.0);
  for (const int channel : {2, 3, 4}) {
    calls += Connect(1, 0) + Connect(channel, 1) + Resistance(1, channel == 2 ? 1 : channel == 3 ? 1 : 2);
    calls += Release(1, 0) + Release(channel, 1);
  }
  calls += Bar(2.0 / 20.0) + Bar(3.0 / 20.0);
  EXPECT_EQ(log.Text(), calls);
  EXPECT_EQ(MatrixText(work), "8 28 228 2228");
}

TEST_F(ConnectionPass, WithoutExpectedConnectionsOnlyProgressMoves) {
  Expect(1, "8 18 138");
  EXPECT_EQ(CheckConnectionPass(data, work), 0);
  EXPECT_EQ(log.Text(), Bar(0.0) + PrepareAfterReset(1) + Bar(1.0 / 16.0) + Bar(2.0 / 16.0));
}

TEST_F(ConnectionPass, ASingleChannelHasNoRow) {
  Expect(48, "8");
  EXPECT_EQ(CheckConnectionPass(data, work), 0);
  EXPECT_EQ(log.Text(), Bar(0.0) + PrepareAfterReset(1));
}

TEST_F(ConnectionPass, CountsOpenConnections) {
  Expect(1, "8 28 118 1128");
  driver.Wire(1, 2);
  EXPECT_EQ(CheckConnectionPass(data, work), 1);
  EXPECT_EQ(MatrixText(work), "8 28 008 0018");
  EXPECT_EQ(work.GetR(3, 2), 1e9);
  EXPECT_TRUE(
      log.Text().ends_with(Connect(3, 0) + Connect(4, 1) + HighResistance() + Release(3, 0) + Release(4, 1)));
}

TEST_F(ConnectionPass, AnOpenConnectionHoldsForTheWholeNet) {
  Expect(1, "8 28 228");
  driver.Wire(1, 2);  // channel 3 fell off
  EXPECT_EQ(CheckConnectionPass(data, work), 1);
  // That 3 is open to 1 settles 3 and 2: not measured, not counted.
  EXPECT_EQ(MatrixText(work), "8 28 118");
  EXPECT_EQ(log.Count("read"), 1 + 2);
}

TEST_F(ConnectionPass, ReachingTheLimitReturnsAtOnceWithTheChannelsOn) {
  Expect(1, "8 28 118 1128");
  data.MaxError = 1;
  EXPECT_EQ(CheckConnectionPass(data, work), 1);
  std::string calls = Bar(0.0) + PrepareAfterReset(1);
  calls += Bar(1.0 / 20.0) + Connect(1, 0) + Connect(2, 1) + HighResistance();
  EXPECT_EQ(log.Text(), calls);
  EXPECT_TRUE(driver.Closed(1, 0));
  EXPECT_TRUE(driver.Closed(2, 1));
}

TEST_F(ConnectionPass, ALimitOfTwoLetsOneOpenConnectionPass) {
  Expect(1, "8 28 118 1128 11118 111128");
  data.MaxError = 2;
  EXPECT_EQ(CheckConnectionPass(data, work), 2);
  EXPECT_EQ(work.Get(5, 4), CellState::Unknown);
  EXPECT_TRUE(driver.Closed(3, 0));
  EXPECT_FALSE(driver.Closed(1, 0));
}

TEST_F(ConnectionPass, ALimitOfZeroOrLessStopsAtTheFirstOpenConnection) {
  for (const int limit : {0, -5}) {
    Expect(1, "8 28 118 1128");
    data.MaxError = limit;
    EXPECT_EQ(CheckConnectionPass(data, work), 1);
    EXPECT_EQ(MatrixText(work), "8 18 008 0008");
  }
}

TEST_F(ConnectionPass, ALimitOfZeroDoesNotStopAGoodDevice) {
  Expect(1, "8 28 118 1128");
  data.MaxError = 0;
  driver.Wire(1, 2);
  driver.Wire(3, 4);
  EXPECT_EQ(CheckConnectionPass(data, work), 0);
  EXPECT_EQ(MatrixText(work), "8 28 008 0028");
}

TEST_F(ConnectionPass, TheThresholdItselfIsOpen) {
  Expect(1, "8 28");
  driver.Wire(1, 2, 10.0);
  EXPECT_EQ(CheckConnectionPass(data, work), 1);
  Expect(1, "8 28");
  driver.Wire(1, 2, 9.999999);
  EXPECT_EQ(CheckConnectionPass(data, work), 0);
}

TEST_F(ConnectionPass, TheThresholdIsThatOfWork) {
  Expect(1, "8 28");
  work.Schwelle = 500.0;
  work.Schwelle2 = 1e6;
  driver.Wire(1, 2, 300.0);
  EXPECT_EQ(CheckConnectionPass(data, work), 0);
  EXPECT_EQ(log.Count("read 10 2 2"), 2);
}

TEST_F(ConnectionPass, OnlyStateConnectedIsExpectedToConnect) {
  Expect(1, "8 38 448 1519");
  EXPECT_EQ(CheckConnectionPass(data, work), 0);
  EXPECT_EQ(log.Count("read"), 0);
}

TEST_F(ConnectionPass, ASuspendedChannelIsSkippedThroughTheStatesOfItsPairs) {
  Expect(1, "8 49 248");
  driver.Wire(1, 3);
  EXPECT_EQ(CheckConnectionPass(data, work), 0);
  EXPECT_EQ(log.Count("bus 128 0 129") + log.Count("bus 129 0 129"), 0);
  EXPECT_EQ(MatrixText(work), "8 08 208");
}

TEST_F(ConnectionPass, ACancelAtTheFirstCallMeasuresNothing) {
  Expect(1, "8 28");
  ui.PressCancelAt(1);
  EXPECT_EQ(CheckConnectionPass(data, work), 0);
  EXPECT_EQ(log.Text(), Stopped());
}

TEST_F(ConnectionPass, ACancelInARowReturnsTheErrorsSoFar) {
  Expect(1, "8 28 118 1128");
  ui.PressCancelAt(3);
  EXPECT_EQ(CheckConnectionPass(data, work), 1);
  EXPECT_EQ(MatrixText(work), "8 18 008 0008");
  EXPECT_TRUE(log.Text().ends_with(Release(2, 1) + Stopped()));
}

}  // namespace
}  // namespace shorttest::testkit
