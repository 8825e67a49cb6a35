// The third pass: each net against everything else.
#include "tests/plugin/check/CheckBench.h"

namespace shorttest::testkit {
namespace {

class IsolationPass : public PassBench {};

TEST_F(IsolationPass, TakesTheWholeNetOutOfTheBundle) {
  Expect(1, "8 18 218");
  work.Put(2, 0, CellState::Connected, 0.4);
  Bundle();
  EXPECT_TRUE(CheckIsolationPass(data, work).empty());
  std::string calls = Bar(0.5) + PrepareWithoutReset(1);
  calls += Bar(1.0 / 16.0 + 0.5) + Release(1, 1) + Release(3, 1) + Connect(1, 0) + HighResistance();
  calls += Release(1, 0) + Connect(1, 1) + Connect(3, 1);
  calls += Bar(2.0 / 16.0 + 0.5) + Release(2, 1) + Connect(2, 0) + HighResistance();
  calls += Release(2, 0) + Connect(2, 1);
  calls += Bar(3.0 / 16.0 + 0.5) + Release(1, 1) + Release(3, 1) + Connect(3, 0) + HighResistance();
  calls += Release(3, 0) + Connect(1, 1) + Connect(3, 1);
  EXPECT_EQ(log.Text(), calls);
  EXPECT_EQ(MatrixText(work), "8 18 218");
  EXPECT_EQ(work.GetR(2, 0), 0.4);
  EXPECT_EQ(work.GetR(1, 0), 1e9);
}

TEST_F(IsolationPass, ListsChannelsWhoseNetIsNotIsolated) {
  Expect(11, "8 18 118 1118");
  driver.Wire(12, 14, 3.0);
  Bundle();
  const TConnFound candidates = CheckIsolationPass(data, work);
  ASSERT_EQ(candidates.size(), 2U);
  EXPECT_EQ(candidates[0].x, 1);
  EXPECT_EQ(candidates[0].resistance, 3.0);
  EXPECT_EQ(candidates[1].x, 3);
  EXPECT_EQ(MatrixText(work), "8 18 118 1018");
}

TEST_F(IsolationPass, MeasuresASingleChannelAgainstAnEmptyBundle) {
  Expect(5, "8");
  Bundle();
  EXPECT_TRUE(CheckIsolationPass(data, work).empty());
  EXPECT_EQ(log.Text(), Bar(0.5) + PrepareWithoutReset(1) + Bar(1.0 / 8.0 + 0.5) + Release(5, 1) +
                            Connect(5, 0) + HighResistance() + Release(5, 0) + Connect(5, 1));
  EXPECT_EQ(MatrixText(work), "8");
}

TEST_F(IsolationPass, SkipsSuspendedChannels) {
  Expect(1, "8 49 148");
  Bundle();
  CheckIsolationPass(data, work);
  EXPECT_EQ(log.Text(), Bar(0.5) + PrepareWithoutReset(1) +  //
                            Bar(1.0 / 16.0 + 0.5) + Release(1, 1) + Connect(1, 0) + HighResistance() +
                            Release(1, 0) + Connect(1, 1) + Bar(2.0 / 16.0 + 0.5) + Bar(3.0 / 16.0 + 0.5) +
                            Release(3, 1) + Connect(3, 0) + HighResistance() + Release(3, 0) + Connect(3, 1));
}

TEST_F(IsolationPass, KnownConnectionsStayWhenTheNetIsIsolated) {
  Expect(1, "8 28 118");
  work.Put(1, 0, CellState::Connected, 0.25);
  Bundle();
  driver.NextReadings({70.0, 70.0, 80.0, 80.0, 90.0, 90.0});
  CheckIsolationPass(data, work);
  EXPECT_EQ(MatrixText(work), "8 28 118");
  EXPECT_EQ(work.GetR(1, 0), 0.25);
  EXPECT_EQ(work.GetR(2, 0), 70.0);  // the first write wins, and spreads through the net
  EXPECT_EQ(work.GetR(2, 1), 70.0);
}

TEST_F(IsolationPass, TheThresholdIsTheSecondOfWorkAndOpenItself) {
  Expect(1, "8 18");
  work.Schwelle = 10.0;
  work.Schwelle2 = 2000.0;
  driver.Wire(1, 2, 2000.0);
  Bundle();
  EXPECT_TRUE(CheckIsolationPass(data, work).empty());
  EXPECT_EQ(log.Count("read 10 3 2"), log.Count("read"));

  Expect(1, "8 18");
  work.Schwelle2 = 2000.0;
  driver.Wire(1, 2, 1999.9);
  Bundle();
  EXPECT_EQ(CheckIsolationPass(data, work).size(), 2U);
}

TEST_F(IsolationPass, ACancelAtTheFirstCallReturnsNothingAndPreparesNothing) {
  Expect(1, "8 18");
  ui.PressCancelAt(1);
  EXPECT_TRUE(CheckIsolationPass(data, work).empty());
  EXPECT_EQ(log.Text(), Stopped());
}

TEST_F(IsolationPass, ACancelDropsTheCandidatesSoFar) {
  Expect(1, "8 18 118");
  driver.Short(1, 2);
  Bundle();
  ui.PressCancelAt(4);
  EXPECT_TRUE(CheckIsolationPass(data, work).empty());
  EXPECT_TRUE(log.Text().ends_with(Connect(2, 1) + Stopped()));
}

}  // namespace
}  // namespace shorttest::testkit
