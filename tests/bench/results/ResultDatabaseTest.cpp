#include "bench/results/ResultDatabase.h"
#include "tests/bench/results/StoreFixture.h"

namespace kxbench::results {
namespace {

class ResultDatabaseTest : public EitherStoreTest {
 protected:
  ResultDatabaseTest() : store_(Open(url_)) {}

  void Keep(Result result, const std::string& part, const std::string& station) {
    result.part = part;
    result.station = station;
    store_->Store(result);
  }

  std::vector<std::string> Serials(const ResultFilter& filter, std::size_t most = 100) {
    std::vector<std::string> serials;
    ResultDatabase(url_, false).List(filter, most, [&](const ResultLine& line) {
      serials.push_back(line.serial);
    });
    return serials;
  }

  ResultSummary Summarised(const ResultFilter& filter = {}) {
    return ResultDatabase(url_, false).Summarise(filter);
  }

  std::unique_ptr<ResultStore> store_;
};

INSTANTIATE_TEST_SUITE_P(Databases, ResultDatabaseTest, testing::Values("sqlite", "postgresql"),
                         [](const auto& database) { return std::string(database.param); });

TEST_P(ResultDatabaseTest, EveryFilterChoosesByItself) {
  Keep(PassedCheck("SN 1", 1), "A", "one");
  Keep(FailedCheck("SN 2", 2), "B", "one");
  Keep(PassedCheck("SN 3", 3), "A", "two");
  Result later = FailedCheck("SN 4", 4);
  later.started += std::chrono::days(1);
  Keep(later, "B", "two");

  using testing::ElementsAre;
  EXPECT_THAT(Serials({}), ElementsAre("SN 4", "SN 3", "SN 2", "SN 1"));
  EXPECT_THAT(Serials({}, 2), ElementsAre("SN 4", "SN 3"));
  EXPECT_THAT(Serials({.part = "A"}), ElementsAre("SN 3", "SN 1"));
  EXPECT_THAT(Serials({.serial = "SN 2"}), ElementsAre("SN 2"));
  EXPECT_THAT(Serials({.station = "two"}), ElementsAre("SN 4", "SN 3"));
  EXPECT_THAT(Serials({.verdict = Verdict::Fail}), ElementsAre("SN 4", "SN 2"));
  EXPECT_THAT(Serials({.from = "2026-03-15"}), ElementsAre("SN 4"));
  EXPECT_THAT(Serials({.to = "2026-03-14"}), ElementsAre("SN 3", "SN 2", "SN 1"));
  EXPECT_THAT(Serials({.from = "2026-03-14T08:02:00.125Z", .to = "2026-03-14T08:03:00.125Z"}),
              ElementsAre("SN 2"));
  EXPECT_THAT(Serials({.part = "A", .serial = "SN 3", .station = "two", .verdict = Verdict::Pass}),
              ElementsAre("SN 3"));
  EXPECT_THAT(Serials({.part = "' or '1' = '1"}), ElementsAre());
}

TEST_P(ResultDatabaseTest, AResultIsFoundByTheBeginningOfItsId) {
  Result first = PassedCheck("SN 1");
  first.id = "aaaaaaaa-0000-4000-8000-000000000001";
  Result second = PassedCheck("SN 2");
  second.id = "aaaaaaaa-0000-4000-8000-000000000002";
  store_->Store(first);
  store_->Store(second);
  ResultDatabase database(url_, false);
  EXPECT_EQ(database.Find("aaaaaaaa-0000-4000-8000-000000000002")->serial, "SN 2");
  EXPECT_EQ(database.Find("b"), std::nullopt);
  EXPECT_THROW(database.Find("aaaaaaaa"), std::runtime_error);
  EXPECT_EQ(database.Find("%"), std::nullopt);
}

TEST_P(ResultDatabaseTest, EachResultComesWholeTheOldestFirst) {
  store_->Store(FailedCheck("SN 2", 2));
  store_->Store(PassedCheck("SN 1", 1));
  std::vector<std::string> serials;
  std::size_t records = 0;
  ResultDatabase(url_, false).Each({}, [&](const Result& result) {
    serials.push_back(result.serial);
    records += result.records.size();
    return true;
  });
  EXPECT_THAT(serials, testing::ElementsAre("SN 1", "SN 2"));
  EXPECT_EQ(records, 3U);
}

TEST_P(ResultDatabaseTest, TheSummaryAddsUpWhatTheViewsHold) {
  for (int i = 0; i < 40; ++i) {
    Result result =
        i % 5 == 0 ? FailedCheck("SN " + std::to_string(i), i) : PassedCheck("SN " + std::to_string(i), i);
    result.started += std::chrono::days(i % 3);
    result.seconds = 1 + i % 4;
    Keep(result, i % 2 == 0 ? "A" : "B", "bench " + std::to_string(i % 4));
  }
  Result retest = PassedCheck("SN 0", 59);
  retest.started += std::chrono::days(4);
  Keep(retest, "A", "bench 3");
  Result broken = PassedCheck("SN 1", 58);
  broken.verdict = Verdict::Error;
  Keep(broken, "B", "bench 3");

  const ResultSummary summary = Summarised();
  EXPECT_EQ(summary.all.checks, Number(url_, "select count(*) from results"));
  EXPECT_EQ(summary.all.passes, 33);
  EXPECT_EQ(summary.all.fails, 8);
  EXPECT_EQ(summary.all.errors, 1);
  EXPECT_EQ(summary.all.devices, 40);
  EXPECT_EQ(summary.all.firstPasses, 32);
  EXPECT_EQ(summary.all.finalPasses, 33);
  EXPECT_DOUBLE_EQ(*summary.all.FirstPassYield(), 0.8);
  EXPECT_DOUBLE_EQ(*summary.all.FinalYield(), 0.825);
  EXPECT_EQ(summary.all.seconds,
            Number(url_, "select cast(sum(seconds * 10) as integer) from results") / 10.0);
  EXPECT_EQ(summary.all.longest, 4);
  ASSERT_EQ(summary.parts.size(), 2U);
  EXPECT_EQ(summary.parts[0].name, "A");
  EXPECT_EQ(summary.parts[0].checks, Number(url_, "select count(*) from results where part = 'A'"));
  EXPECT_EQ(summary.parts[0].devices, 20);
  ASSERT_EQ(summary.stations.size(), 4U);
  EXPECT_EQ(summary.stations[3].checks,
            Number(url_, "select count(*) from results where station = 'bench 3'"));
  ASSERT_EQ(summary.days.size(), 4U);
  EXPECT_EQ(summary.days[3].name, "2026-03-18");
  EXPECT_EQ(summary.days[3].devices, 0);
  EXPECT_EQ(summary.days[3].FirstPassYield(), std::nullopt);
  ASSERT_EQ(summary.faults.size(), 2U);  // of two parts
  EXPECT_EQ(summary.faults[0].checks, 4);
  EXPECT_EQ(summary.faults[0].kind, "open");
  EXPECT_EQ(summary.faults[0].channels, "1,14");
  EXPECT_EQ(summary.faultsInAll, Number(url_, "select count(*) from faults"));

  EXPECT_EQ(Summarised({.part = "A"}).all.checks,
            Number(url_, "select count(*) from results where part = 'A'"));
  EXPECT_EQ(Summarised({.station = "bench 1"}).all.checks, 10);
  EXPECT_EQ(Summarised({.from = "2026-03-15"}).all.checks,
            Number(url_, "select count(*) from results where started >= '2026-03-15'"));
  EXPECT_EQ(Summarised({.to = "2026-03-14"}).all.checks,
            Number(url_, "select count(*) from results where started < '2026-03-15'"));
  EXPECT_EQ(Summarised({.part = "none"}).all.checks, 0);
}

TEST_P(ResultDatabaseTest, TheMostFrequentFaultGoesFirst) {
  for (int i = 0; i < 30; ++i) {
    Result result = FailedCheck("SN " + std::to_string(i), i);
    result.faults[0].channels = {1, 100 + i};
    result.faults[0].text = "fault " + std::to_string(i);
    store_->Store(result);
    if (i == 17) store_->Store(FailedCheck("SN X", 40));
  }
  Result again = FailedCheck("SN Y", 50);
  again.faults[0].channels = {1, 112};
  store_->Store(again);
  const ResultSummary summary = Summarised();
  ASSERT_EQ(summary.faults.size(), MostListedFaults);
  EXPECT_EQ(summary.faults[0].channels, "1,112");
  EXPECT_EQ(summary.faults[0].checks, 2);
  EXPECT_EQ(summary.faultsInAll, 32);
}

struct SuspectRow {
  const char* name;
  int here;    ///< devices with the fault, of 20 tested here
  int others;  ///< of 40 tested at two other stations
  bool suspect;
};

class SuspectTest : public StoreTest, public testing::WithParamInterface<SuspectRow> {};

TEST_P(SuspectTest, AContactIsSuspectWhenItComesBackOnOneStationAlone) {
  const std::string url = "sqlite:" + File("results.db");
  const auto store = Open(url);
  for (int i = 0; i < 60; ++i) {
    const bool here = i < 20;
    const bool fault = here ? i < GetParam().here : i - 20 < GetParam().others;
    Result result = fault ? FailedCheck("SN " + std::to_string(i)) : PassedCheck("SN " + std::to_string(i));
    if (fault) result.faults[0].channels = {7};
    result.station = here ? "here" : i % 2 == 0 ? "there" : "elsewhere";
    store->Store(result);
    // Retests of a device say nothing new.
    if (fault) {
      result.id = NewId();
      store->Store(result);
      result.id = NewId();
      store->Store(result);
    }
  }
  const ResultSummary summary = ResultDatabase(url, false).Summarise({});
  ASSERT_EQ(summary.suspects.size(), GetParam().suspect ? 1U : 0U);
  if (!GetParam().suspect) return;
  EXPECT_EQ(summary.suspects[0].station, "here");
  EXPECT_EQ(summary.suspects[0].channel, 7);
  EXPECT_EQ(summary.suspects[0].devices, GetParam().here);
  EXPECT_EQ(summary.suspects[0].tested, 20);
  EXPECT_EQ(summary.suspects[0].devicesOthers, GetParam().others);
  EXPECT_EQ(summary.suspects[0].testedOthers, 40);
}

INSTANTIATE_TEST_SUITE_P(Counts, SuspectTest,
                         testing::Values(SuspectRow{"None", 0, 0, false}, SuspectRow{"TooFew", 2, 0, false},
                                         SuspectRow{"ThreeHereAlone", 3, 0, true},
                                         SuspectRow{"AFifthElsewhere", 5, 2, true},
                                         SuspectRow{"MoreElsewhere", 5, 3, false},
                                         SuspectRow{"TheSameEverywhere", 5, 10, false}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace kxbench::results
