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

// Three hundred days of eight hours, eight stations, twenty parts of eighty contacts. Every tenth check is a
// retest of the one before, which had failed; every fifth of these fails again, on another station. Which
// part, station and contact it is, a generator of random numbers says (multiplication modulo 2^31 - 1), the
// same one in both databases; so does the id. What a summary reads is made from the results in one go:
// storing a million one by one takes an hour.
constexpr const char* Results = R"(
insert into stored_results
with recursive counted (n, total) as (
  select cast(0 as bigint), cast(:count as bigint)
  union all select n + 1, total from counted where n + 1 < total),
checks (n, device, day, second) as (
  select n, case when n % 10 = 9 then n - 1 else n end, n * 300 / total,
    21600 + n * 300 % total * 28800 / total from counted),
random (n, device, day, second, id, place, tester) as (
  select n, device, day, second, n * 742938285 % 2147483647, device * 742938285 % 2147483647,
    (case when n % 50 = 9 then n else device end) * 742938285 % 2147483647 from checks)
select substr(cast(10000000000 + id as text), 2) || '-4000-8000-' || substr(cast(1000000000000 + n as text), 2),
  '2026-' || substr(cast(101 + day / 28 as text), 2) || '-' || substr(cast(101 + day % 28 as text), 2) || 'T' ||
    substr(cast(100 + second / 3600 as text), 2) || ':' || substr(cast(100 + second / 60 % 60 as text), 2) || ':' ||
    substr(cast(100 + second % 60 as text), 2) || '.' || substr(cast(1000 + n % 1000 as text), 2) || 'Z',
  2.0 + id % 7, case when n % 10 = 8 or n % 50 = 9 then 'fail' else 'pass' end, 'SN ' || device,
  'W-' || (place % 20), 'somebody', 'bench ' || (tester / 20 % 8), 'w100.dat', 'sha',
  case when n % 10 = 8 or n % 50 = 9 then 'open: a wire' end, '0.1.0', '1', 'driver', '2', '4', '', 1
from random)";

constexpr const char* Tables[] = {
    R"(insert into stored_faults
select id, 1, 'open', contact || ',' || (contact + 40), 'open: the wire from ' || contact || ' to ' || (contact + 40)
from (select id, 1 + cast(substr(serial, 4) as bigint) * 742938285 % 2147483647 / 160 % 40 as contact
  from stored_results where verdict = 'fail') as failed)",
    R"(insert into devices
select part, serial, first_id, first_started, first_station, substr(first_started, 1, 10), first_pass, last_id,
  last_started, last_pass from (
  select part, serial, id as last_id, started as last_started,
    case verdict when 'pass' then 1 else 0 end as last_pass,
    first_value(id) over w as first_id, first_value(started) over w as first_started,
    first_value(station) over w as first_station,
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
    R"(insert into contact_devices
select distinct part, cast(substr(channels, 1, length(channels) - 3) as integer) + 40 * side, station, serial
from stored_results join stored_faults on result_id = id cross join (select 0 as side union all select 1) as sides)",
    R"(insert into contact_totals
select part, channel, station, day, count(*) from (
  select part, cast(substr(channels, 1, length(channels) - 3) as integer) + 40 * side as channel, station, serial,
    min(substr(started, 1, 10)) as day
  from stored_results join stored_faults on result_id = id cross join (select 0 as side union all select 1) as sides
  group by 1, 2, 3, 4) as first_days
group by part, channel, station, day)",
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
    const long long results = count;
    database.Session() << Results, soci::use(results);
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
    const bool whole = summary.all.checks == state.range(1) &&
                       summary.all.devices == state.range(1) / 10 * 9 && summary.parts.size() == 20 &&
                       summary.stations.size() == 8 && summary.days.size() == 300;
    if (!whole) state.SkipWithError("results are missing");
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
