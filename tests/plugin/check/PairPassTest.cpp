// The fourth pass: short candidates pair by pair.
#include "tests/plugin/check/CheckBench.h"

namespace shorttest::testkit {
namespace {

class PairPass : public PassBench {
 protected:
  static TConnFound Candidates(const std::vector<int>& indices) {
    TConnFound candidates;
    for (const int index : indices) candidates.push_back({index, 0.0});
    return candidates;
  }
};

TEST_F(PairPass, WithoutCandidatesNothingIsCalled) {
  Expect(1, "8 18");
  EXPECT_EQ(CheckPairPass(data, work, {}), 0);
  EXPECT_EQ(log.Text(), "");
}

TEST_F(PairPass, ASingleCandidateHasNoPair) {
  Expect(1, "8 18");
  EXPECT_EQ(CheckPairPass(data, work, Candidates({1})), 0);
  EXPECT_EQ(log.Text(),
            Bar(0.75) + PrepareAfterReset(1) + Bar(1.0 / 8.0 + 0.75) + Connect(2, 1) + Release(2, 1));
}

TEST_F(PairPass, EachCandidateOnLine1MeetsEveryOtherInListOrder) {
  Expect(1, "8 18 118");
  driver.Short(1, 3);
  EXPECT_EQ(CheckPairPass(data, work, Candidates({0, 1, 2})), 1);
  std::string calls = Bar(0.75) + PrepareAfterReset(1);
  calls += Bar(1.0 / 16.0 + 0.75) + Connect(1, 1);
  calls += Connect(2, 0) + HighResistance() + Release(2, 0);
  calls += Connect(3, 0) + LowResistance() + Release(3, 0) + Release(1, 1);
  // 2 and 3 follow from 2 and 1.
  calls += Bar(2.0 / 16.0 + 0.75) + Connect(2, 1) + Release(2, 1);
  calls += Bar(3.0 / 16.0 + 0.75) + Connect(3, 1) + Release(3, 1);
  EXPECT_EQ(log.Text(), calls);
  EXPECT_EQ(MatrixText(work), "8 18 218");
}

TEST_F(PairPass, EarlierCandidatesAreMetAsWellWhenStillUnknown) {
  Expect(1, "8 18 118");
  EXPECT_EQ(CheckPairPass(data, work, Candidates({2, 0})), 0);
  std::string calls = Bar(0.75) + PrepareAfterReset(1) + Bar(1.0 / 12.0 + 0.75) + Connect(3, 1);
  calls += Connect(1, 0) + HighResistance() + Release(1, 0) + Release(3, 1);
  calls += Bar(2.0 / 12.0 + 0.75) + Connect(1, 1) + Release(1, 1);
  EXPECT_EQ(log.Text(), calls);
}

struct StateRow {
  const char* name;
  char expected;
  bool low;
  int errors;
  bool measured;
};

class PairState : public PairPass, public ::testing::WithParamInterface<StateRow> {};

TEST_P(PairState, IsComparedWithTheExpectation) {
  Expect(1, std::string("8 ") + GetParam().expected + "8");
  driver.Wire(1, 2, GetParam().low ? 0.5 : 50.0);
  EXPECT_EQ(CheckPairPass(data, work, Candidates({0, 1})), GetParam().errors);
  const char* const measured = GetParam().low ? "8 28" : "8 18";
  EXPECT_EQ(MatrixText(work), GetParam().measured ? measured : "8 08");
}

INSTANTIATE_TEST_SUITE_P(States, PairState,
                         ::testing::Values(StateRow{"ConnectedAsExpected", '2', true, 0, true},
                                           StateRow{"ConnectedThoughExpectedOpen", '1', true, 1, true},
                                           StateRow{"ConnectedThoughUnknown", '0', true, 1, true},
                                           StateRow{"ConnectedThoughNotTestable", '4', true, 1, true},
                                           StateRow{"OpenAsExpected", '1', false, 0, true},
                                           StateRow{"OpenThoughExpectedConnected", '2', false, 1, true},
                                           StateRow{"OpenThoughUnknown", '0', false, 1, true},
                                           StateRow{"ExcludedAndConnected", '3', true, 0, false},
                                           StateRow{"ExcludedAndOpen", '3', false, 0, false}),
                         [](const auto& row) { return row.param.name; });

TEST_F(PairPass, APairThatIsSettledInWorkIsNotMeasured) {
  Expect(1, "8 18");
  work.Put(1, 0, CellState::NotConnected, 5.0);
  driver.Short(1, 2);
  EXPECT_EQ(CheckPairPass(data, work, Candidates({0, 1})), 0);
  EXPECT_EQ(log.Count("read"), 0);
}

TEST_F(PairPass, ReachingTheLimitReturnsAtOnceWithTheChannelsOn) {
  Expect(1, "8 18 118");
  data.MaxError = 1;
  driver.Short(1, 2);
  EXPECT_EQ(CheckPairPass(data, work, Candidates({0, 1, 2})), 1);
  EXPECT_TRUE(log.Text().ends_with(Connect(1, 1) + Connect(2, 0) + LowResistance()));
  EXPECT_TRUE(driver.Closed(1, 1));
  EXPECT_TRUE(driver.Closed(2, 0));
  EXPECT_EQ(work.Get(2, 0), CellState::Unknown);
}

TEST_F(PairPass, TheLimitIsTestedAfterEveryMeasurementWhetherOrNotItCounts) {
  Expect(1, "8 18 118");
  data.MaxError = 0;
  EXPECT_EQ(CheckPairPass(data, work, Candidates({0, 1, 2})), 0);
  // The first pair is as expected, and it is the last all the same.
  EXPECT_TRUE(log.Text().ends_with(Connect(1, 1) + Connect(2, 0) + HighResistance()));
}

TEST_F(PairPass, ErrorsBelowTheLimitGoOn) {
  Expect(1, "8 18 118 1118");
  data.MaxError = 3;
  driver.Short(1, 2);
  driver.Short(3, 4);
  EXPECT_EQ(CheckPairPass(data, work, Candidates({0, 1, 2, 3})), 2);
  EXPECT_EQ(MatrixText(work), "8 28 118 1128");
}

TEST_F(PairPass, TheThresholdIsTheSecondOfWorkAndOpenItself) {
  Expect(1, "8 18");
  work.Schwelle2 = 250e3;
  driver.Wire(1, 2, 250e3);
  EXPECT_EQ(CheckPairPass(data, work, Candidates({0, 1})), 0);
  EXPECT_EQ(log.Count("read 10 5 2"), log.Count("read"));
}

TEST_F(PairPass, ACancelAtTheFirstCallReturnsZero) {
  Expect(1, "8 18");
  ui.PressCancelAt(1);
  EXPECT_EQ(CheckPairPass(data, work, Candidates({0, 1})), 0);
  EXPECT_EQ(log.Text(), Stopped());
}

TEST_F(PairPass, ACancelBetweenCandidatesReturnsTheErrorsSoFar) {
  Expect(1, "8 18 118");
  driver.Short(1, 2);
  ui.PressCancelAt(3);
  EXPECT_EQ(CheckPairPass(data, work, Candidates({0, 1, 2})), 1);
  EXPECT_TRUE(log.Text().ends_with(Release(1, 1) + Stopped()));
}

}  // namespace
}  // namespace shorttest::testkit
