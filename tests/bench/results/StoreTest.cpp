#include <random>
#include <thread>
#include <vector>

#include "bench/results/ResultStore.h"
#include "bench/results/Schema.h"
#include "tests/bench/results/StoreFixture.h"

namespace kxbench::results {
namespace {

INSTANTIATE_TEST_SUITE_P(Databases, EitherStoreTest, testing::Values("sqlite", "postgresql"),
                         [](const auto& database) { return std::string(database.param); });

TEST_P(EitherStoreTest, AResultComesBackAsItWasStored) {
  const Result result = FailedCheck("SN 1");
  const StoreOutcome outcome = Open(url_)->Store(result);
  EXPECT_TRUE(outcome.inDatabase);
  EXPECT_EQ(outcome.line, "");
  const std::optional<Result> stored = Stored(url_, result.id);
  ASSERT_TRUE(stored);
  EXPECT_EQ(TimeText(stored->started), TimeText(result.started));
  EXPECT_EQ(stored->seconds, 2.5);
  EXPECT_EQ(stored->verdict, Verdict::Fail);
  EXPECT_EQ(stored->serial, "SN 1");
  EXPECT_EQ(stored->part, "W-100");
  EXPECT_EQ(stored->operatorName, "Jäger");
  EXPECT_EQ(stored->station, "bench 1");
  EXPECT_EQ(stored->expectation, "w100.dat");
  EXPECT_EQ(stored->expectationSha256, result.expectationSha256);
  EXPECT_EQ(stored->programVersion, "0.1.0");
  EXPECT_EQ(stored->pluginVersion, "ShortTest 1");
  EXPECT_EQ(stored->driver, result.driver);
  EXPECT_EQ(stored->driverGeneration, "2");
  EXPECT_EQ(stored->cards, "4");
  EXPECT_TRUE(stored->diagnosed);
  ASSERT_EQ(stored->records.size(), 2U);
  EXPECT_EQ(stored->records[0].value, 0.0);
  EXPECT_EQ(stored->records[0].lower, std::nullopt);
  EXPECT_FALSE(stored->records[0].finding);
  EXPECT_EQ(stored->records[1].line, result.records[1].line);
  EXPECT_EQ(stored->records[1].text, "Verbindung 1-14");
  EXPECT_EQ(stored->records[1].value, 1e6);
  EXPECT_EQ(stored->records[1].upper, 10.0);
  EXPECT_EQ(stored->records[1].unit, "Ohm");
  EXPECT_TRUE(stored->records[1].finding);
  ASSERT_EQ(stored->faults.size(), 1U);
  EXPECT_EQ(stored->faults[0].kind, "open");
  EXPECT_EQ(stored->faults[0].channels, (std::vector<std::int32_t>{1, 14}));
  EXPECT_EQ(stored->faults[0].text, result.faults[0].text);
}

TEST_P(EitherStoreTest, AnErrorWithoutDiagnosisComesBackAsOne) {
  Result result = PassedCheck("");
  result.verdict = Verdict::Error;
  result.diagnosed = false;
  result.records.clear();
  result.error = "the driver does not answer";
  Open(url_)->Store(result);
  const std::optional<Result> stored = Stored(url_, result.id);
  ASSERT_TRUE(stored);
  EXPECT_EQ(stored->verdict, Verdict::Error);
  EXPECT_FALSE(stored->diagnosed);
  EXPECT_EQ(stored->error, "the driver does not answer");
  EXPECT_TRUE(stored->records.empty());
}

TEST_P(EitherStoreTest, TheViewsAreThoseOfTheContract) {
  Open(url_)->Store(FailedCheck("SN 2"));
  EXPECT_EQ(Text(url_, "select started from results"), "2026-03-14T08:00:00.125Z");
  EXPECT_EQ(Number(url_,
                   "select count(*) from results where id <> '' and seconds = 2.5 and verdict = 'fail' and "
                   "serial = 'SN 2' and part = 'W-100' and operator = 'Jäger' and station = 'bench 1' and "
                   "expectation = 'w100.dat' and length(sha256) = 64 and diagnosis like 'open%'"),
            1);
  EXPECT_EQ(Number(url_,
                   "select count(*) from results join records on result_id = id where number = 2 and text = "
                   "'Verbindung 1-14' and value = 1000000 and lower is null and upper = 10 and unit = 'Ohm'"),
            1);
  EXPECT_EQ(Number(url_,
                   "select count(*) from results join faults on result_id = id where kind = 'open' and "
                   "channels = '1,14' and text like 'open%'"),
            1);
}

TEST_P(EitherStoreTest, TheSameIdIsStoredOnce) {
  const Result result = FailedCheck("SN 3");
  const auto store = Open(url_);
  EXPECT_TRUE(store->Store(result).inDatabase);
  EXPECT_TRUE(store->Store(result).inDatabase);
  EXPECT_TRUE(Open(url_)->Store(result).inDatabase);
  EXPECT_EQ(Count(url_), 1);
  EXPECT_EQ(Number(url_, "select count(*) from records"), 2);
  EXPECT_EQ(Number(url_, "select count(*) from faults"), 1);
  EXPECT_EQ(Number(url_, "select sum(checks) from summary"), 1);
  EXPECT_EQ(Number(url_, "select sum(checks) from pareto"), 1);
}

/// As long as may be, and hard to compress: indexes count compressed bytes.
std::string LongText() {
  std::mt19937 random(1);
  std::string text;
  while (text.size() < MostStorableBytes) text += static_cast<char>('!' + random() % 94);
  return text;
}

TEST_P(EitherStoreTest, TextsAreStoredAsTheyAre) {
  const std::string texts[] = {"O'Neil \"x\"; drop table stored_results; --",
                               "a\nb\r\n\tc",
                               ":serial $1 ? %s \\",
                               "Ünïcödé \xF0\x9F\x94\x8C",
                               LongText(),
                               " blanks "};
  const auto store = Open(url_);
  for (const std::string& text : texts) {
    Result result = FailedCheck(text);
    result.part = result.station = result.operatorName = result.expectation = result.error = text;
    result.records[1].text = result.faults[0].text = result.faults[0].kind = text;
    EXPECT_TRUE(store->Store(result).inDatabase) << text;
    const std::optional<Result> stored = Stored(url_, result.id);
    ASSERT_TRUE(stored) << text;
    EXPECT_EQ(stored->serial, text);
    EXPECT_EQ(stored->part, text);
    EXPECT_EQ(stored->station, text);
    EXPECT_EQ(stored->operatorName, text);
    EXPECT_EQ(stored->expectation, text);
    EXPECT_EQ(stored->error, text);
    EXPECT_EQ(stored->records[1].text, text);
    EXPECT_EQ(stored->faults[0].text, text);
  }
  EXPECT_EQ(Count(url_), 6);
}

TEST_P(EitherStoreTest, WhatAKeyCannotHoldIsRefused) {
  const auto store = Open(url_);
  for (const std::string& serial : {std::string(10000, 'x'), std::string("\xFF\xFE"), std::string("a\0b", 3),
                                    std::string(MostStorableBytes + 1, 'x')}) {
    EXPECT_THROW(store->Store(PassedCheck(serial)), std::runtime_error);
  }
  EXPECT_EQ(Count(url_), 0);
}

TEST_P(EitherStoreTest, TextsOfADriverThatAreNoTextDoNotLoseTheResult) {
  Result result = FailedCheck("SN 4");
  result.error = std::string("a\0b\xFF", 4);
  result.faults[0].channels.clear();
  for (int channel = 1; channel <= 10000; ++channel) result.faults[0].channels.push_back(channel);
  EXPECT_TRUE(Open(url_)->Store(result).inDatabase);
  const std::optional<Result> stored = Stored(url_, result.id);
  ASSERT_TRUE(stored);
  EXPECT_EQ(stored->error,
            "a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD");
  EXPECT_EQ(stored->faults[0].channels.size(), 10000U);
}

TEST_P(EitherStoreTest, ANewerSchemaIsRefusedWithAClearLine) {
  Open(url_)->Store(PassedCheck("SN 5"));
  {
    Database database(ReadStoreUrl(url_), std::nullopt, Database::Missing::Refuse);
    database.Session() << "update schema_version set version = 1000";
  }
  try {
    Open(url_);
    FAIL() << "it was opened";
  } catch (const std::runtime_error& error) {
    EXPECT_THAT(error.what(),
                testing::EndsWith("its schema has version 1000, and this program knows versions up "
                                  "to 1: use a newer kxbench"));
  }
  EXPECT_EQ(Number(url_, "select version from schema_version"), 1000);
}

TEST_P(EitherStoreTest, AMigrationThatFailsLeavesNothing) {
  {
    Database database(ReadStoreUrl(url_), std::nullopt, Database::Missing::Make);
    database.Session() << "create table day_totals (in_the_way integer)";
    EXPECT_THROW(MigrateSchema(database), DatabaseError);
    EXPECT_FALSE(database.HasTable("schema_version"));
    EXPECT_FALSE(database.HasTable("stored_results"));
    database.Session() << "drop table day_totals";
  }
  EXPECT_TRUE(Open(url_)->Store(PassedCheck("SN 6")).inDatabase);
}

TEST_P(EitherStoreTest, SeveralProgramsOpenAnEmptyDatabaseAtOnce) {
  std::vector<std::thread> programs;
  for (int i = 0; i < 6; ++i) {
    programs.emplace_back([this, i] { Open(url_)->Store(PassedCheck("SN " + std::to_string(i))); });
  }
  for (std::thread& program : programs) program.join();
  const int waiting = std::filesystem::exists(options_.spool) ? Waiting() : 0;
  EXPECT_EQ(Count(url_) + waiting, 6);
  EXPECT_EQ(waiting, 0);
}

TEST_P(EitherStoreTest, EarlierChecksOfASerialNumberAreToldNewestFirst) {
  const auto store = Open(url_);
  store->Store(FailedCheck("SN 7", 1));
  store->Store(PassedCheck("SN 7", 3));
  store->Store(FailedCheck("SN 7", 2));
  store->Store(PassedCheck("SN 8", 9));
  const auto earlier = store->Earlier("SN 7", 2);
  ASSERT_EQ(earlier.size(), 2U);
  EXPECT_EQ(earlier[0].verdict, Verdict::Pass);
  EXPECT_EQ(earlier[1].verdict, Verdict::Fail);
  EXPECT_EQ(earlier[1].started, "2026-03-14T08:02:00.125Z");
  EXPECT_THAT(earlier[1].faults, testing::ElementsAre(testing::StartsWith("open")));
}

TEST_P(EitherStoreTest, ADeviceCountsByItsFirstAndItsLastTestInWhateverOrderTheyCome) {
  const auto store = Open(url_);
  const auto yield = [this] {
    return Text(url_,
                "select sum(devices) || ' ' || sum(first_passes) || ' ' || sum(final_passes) from summary");
  };
  store->Store(PassedCheck("SN 9", 2));
  EXPECT_EQ(yield(), "1 1 1");
  store->Store(FailedCheck("SN 9", 1));  // came late, from a spool
  EXPECT_EQ(yield(), "1 0 1");
  store->Store(FailedCheck("SN 9", 3));
  EXPECT_EQ(yield(), "1 0 0");
  Result cancelled = PassedCheck("SN 9", 4);
  cancelled.verdict = Verdict::Cancelled;
  store->Store(cancelled);
  EXPECT_EQ(yield(), "1 0 0");
  store->Store(PassedCheck("", 5));
  store->Store(FailedCheck("", 6));
  EXPECT_EQ(yield(), "3 1 1");
  EXPECT_EQ(Number(url_, "select sum(checks) from summary"), 6);
  EXPECT_EQ(Number(url_, "select sum(passes) from summary"), 2);
  EXPECT_EQ(Number(url_, "select sum(cancels) from summary"), 1);
}

TEST_P(EitherStoreTest, ADeviceCountsAtTheStationOfItsFirstTest) {
  const auto store = Open(url_);
  Result retest = PassedCheck("SN 10", 2);
  retest.station = "bench 2";
  store->Store(retest);
  store->Store(FailedCheck("SN 10", 1));
  EXPECT_EQ(Text(url_,
                 "select devices || ' ' || first_passes || ' ' || final_passes from summary where station = "
                 "'bench 1'"),
            "1 0 1");
  EXPECT_EQ(Text(url_, "select devices || ' ' || checks from summary where station = 'bench 2'"), "0 1");
}

/// How many writers and how many results of each: 8 x 200 to look closely.
constexpr int Writers = 8;
constexpr int ResultsOfEach = STORE_TEST_RESULTS;

TEST_P(EitherStoreTest, StationsThatWriteAtOnceLoseNothingAndWriteNothingTwice) {
  std::vector<std::thread> stations;
  for (int station = 0; station < Writers; ++station) {
    stations.emplace_back([this, station] {
      const auto store = Open(url_);
      for (int i = 0; i < ResultsOfEach; ++i) {
        // The same serial numbers at all stations, at times in no order.
        const std::string serial = "SN " + std::to_string(i % 7);
        Result result = i % 3 == 0 ? FailedCheck(serial, i * 13 % 50) : PassedCheck(serial, i * 7 % 50);
        result.station = "bench " + std::to_string(station % 3);
        store->Store(result);
        if (i % 5 == 0) store->Store(result);
      }
    });
  }
  for (std::thread& station : stations) station.join();
  EXPECT_FALSE(std::filesystem::exists(options_.spool));
  EXPECT_EQ(Count(url_), Writers * ResultsOfEach);
  EXPECT_EQ(Number(url_, "select count(*) from records"),
            Number(url_, "select sum(case verdict when 'fail' then 2 else 1 end) from results"));
  EXPECT_EQ(Number(url_, "select sum(checks) from summary"), Writers * ResultsOfEach);
  EXPECT_EQ(Number(url_, "select sum(devices) from summary"), std::min(7, ResultsOfEach));
  EXPECT_EQ(Number(url_, "select sum(first_passes) from summary"), Number(url_, R"(
select count(*) from results as one where verdict = 'pass' and not exists (select 1 from results as other
where other.serial = one.serial and (other.started < one.started or (other.started = one.started and other.id < one.id))))"));
  EXPECT_EQ(Number(url_, "select sum(final_passes) from summary"), Number(url_, R"(
select count(*) from results as one where verdict = 'pass' and not exists (select 1 from results as other
where other.serial = one.serial and (other.started > one.started or (other.started = one.started and other.id > one.id))))"));
}

}  // namespace
}  // namespace kxbench::results
