// Storing a result, and summing up ten thousand to a million of them.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <map>
#include <string>

#include "bench/results/Database.h"
#include "bench/results/ResultDatabase.h"
#include "bench/results/ResultStore.h"
#include "bench/results/Schema.h"
#include "tests/bench/program/TemporaryFolder.h"
#include "tests/bench/results/PostgresServer.h"
#include "tests/bench/results/SampleResults.h"

namespace {

using namespace kxbench::results;

enum Kind : std::int64_t { Sqlite, Postgresql };

std::string NewUrl(std::int64_t kind, const TemporaryFolder& folder, const std::string& name) {
  if (kind == Postgresql) return PostgresServer::Get().NewDatabase();
  return "sqlite:" + (folder.Path() / name).string();
}

// Three hundred days, eight stations, twenty parts; every tenth check is a retest of the one before, which
// had failed. The tables of the summary are made from the results in one go: storing a million one by one
// takes an hour.
constexpr const char* Results = R"(
insert into stored_results
with recursive counted (n) as (select 0 union all select n + 1 from counted where n + 1 < :count),
checks (n, device, day) as (
  select n, case when n % 10 = 9 then n - 1 else n end, cast(n * 300.0 / :days - 0.5 as integer) from counted)
select 'id' || n,
  '2026-' || substr(cast(101 + day / 28 as text), 2, 2) || '-' || substr(cast(101 + day % 28 as text), 2, 2) || 'T' ||
    substr(cast(100 + n / 3600 % 24 as text), 2, 2) || ':' || substr(cast(100 + n / 60 % 60 as text), 2, 2) || ':' ||
    substr(cast(100 + n % 60 as text), 2, 2) || '.000Z',
  2.0 + n % 7, case when n % 10 = 8 or n % 50 = 9 then 'fail' else 'pass' end, 'SN ' || device, 'W-' || (device % 20),
  'somebody', 'bench ' || (device % 8), 'w100.dat', 'sha', case when n % 10 = 8 then 'open: 1' end, '0.1.0', '1', 'driver',
  '2', '4', '', 1
from checks)";

constexpr const char* Tables[] = {
    R"(insert into stored_faults
select id, 1, 'open', (length(serial) * 7 + cast(substr(id, 3) as integer) / 10 % 40) || ',90',
  'open: contact ' || (cast(substr(id, 3) as integer) / 10 % 40) from stored_results where verdict = 'fail')",
    R"(insert into devices
select part, serial, first_id, first_started, station, substr(first_started, 1, 10), first_pass, last_id, last_started,
  last_pass from (
  select part, serial, station, id as last_id, started as last_started,
    case verdict when 'pass' then 1 else 0 end as last_pass,
    first_value(id) over w as first_id, first_value(started) over w as first_started,
    first_value(case verdict when 'pass' then 1 else 0 end) over w as first_pass,
    row_number() over (partition by part, serial order by started desc, id desc) as back
  from stored_results window w as (partition by part, serial order by started, id)) as numbered where back = 1)",
    R"(insert into day_totals
select part, station, substr(started, 1, 10), count(*), sum(case verdict when 'pass' then 1 else 0 end),
  sum(case verdict when 'fail' then 1 else 0 end), 0, 0, 0, 0, 0, sum(seconds), max(seconds)
from stored_results group by part, station, substr(started, 1, 10))",
    R"(insert into day_totals
select part, first_station, first_day, 0, 0, 0, 0, 0, count(*), sum(first_pass), sum(last_pass), 0, 0
from devices where true group by part, first_station, first_day
on conflict (part, station, day) do update set devices = excluded.devices, first_passes = excluded.first_passes,
  final_passes = excluded.final_passes)",
    R"(insert into fault_totals
select part, station, substr(started, 1, 10), kind, channels, channels, min(text), count(*)
from stored_results join stored_faults on result_id = id
group by part, station, substr(started, 1, 10), kind, channels)",
    R"(insert into contact_totals
select part, cast(substr(channels, 1, length(channels) - 3) as integer), station, substr(started, 1, 10), count(*)
from stored_results join stored_faults on result_id = id
group by part, cast(substr(channels, 1, length(channels) - 3) as integer), station, substr(started, 1, 10))",
};

/// A database with so many results; made once.
const std::string& DatabaseWith(std::int64_t kind, std::int64_t count) {
  static TemporaryFolder folder;
  static std::map<std::pair<std::int64_t, std::int64_t>, std::string> made;
  std::string& url = made[{kind, count}];
  if (!url.empty()) return url;
  url = NewUrl(kind, folder, std::to_string(count) + ".db");
  Database database(ReadStoreUrl(url), std::nullopt, Database::Missing::Make);
  MigrateSchema(database);
  database.Change([&] {
    const int results = static_cast<int>(count);
    const double days = static_cast<double>(count);
    database.Session() << Results, soci::use(results), soci::use(days);
    for (const char* table : Tables) database.Session() << table;
  });
  database.Session() << "analyze";
  return url;
}

void BM_Store(benchmark::State& state) {
  const TemporaryFolder folder;
  StoreSettings options;
  options.spool = folder.Path() / "spool.db";
  const auto store = OpenResultStore(NewUrl(state.range(0), folder, "results.db"), options);
  int number = 0;
  for (auto _ : state) {
    ++number;
    const std::string serial = "SN " + std::to_string(number);
    if (!store->Store(number % 5 == 0 ? FailedCheck(serial) : PassedCheck(serial)).inDatabase) {
      state.SkipWithError("the result went to the spool");
    }
  }
}
BENCHMARK(BM_Store)
    ->ArgName("database")
    ->Arg(Sqlite)
    ->Arg(Postgresql)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

void BM_Summary(benchmark::State& state) {
  ResultDatabase database(DatabaseWith(state.range(0), state.range(1)), false);
  for (auto _ : state) {
    const ResultSummary summary = database.Summarise({});
    if (summary.all.checks != state.range(1)) state.SkipWithError("results are missing");
  }
}
BENCHMARK(BM_Summary)
    ->ArgNames({"database", "results"})
    ->ArgsProduct({{Sqlite, Postgresql}, {10000, 100000, 1000000}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

void BM_ListOneSerial(benchmark::State& state) {
  ResultDatabase database(DatabaseWith(state.range(0), state.range(1)), false);
  ResultFilter filter;
  filter.serial = "SN 4711";
  for (auto _ : state) {
    std::size_t found = 0;
    database.List(filter, 100, [&](const ResultLine&) { ++found; });
    if (found != 1) state.SkipWithError("the result is missing");
  }
}
BENCHMARK(BM_ListOneSerial)
    ->ArgNames({"database", "results"})
    ->ArgsProduct({{Sqlite, Postgresql}, {10000, 1000000}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
