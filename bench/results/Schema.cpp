#include "bench/results/Schema.h"

#include <span>

namespace kxbench::results {

namespace {

// Words that both databases know. Texts in keys are at most MostStorableBytes long: an index of PostgreSQL
// takes no entries of more than about 2700 bytes.
constexpr const char* FirstVersion[] = {
    R"(create table schema_version (version integer not null))",
    R"(insert into schema_version (version) values (0))",

    R"(create table stored_results (
  id text primary key, started text not null, seconds double precision not null, verdict text not null,
  serial text not null, part text not null, operator text not null, station text not null,
  expectation text not null, sha256 text not null, diagnosis text, program_version text not null,
  plugin_version text not null, driver text not null, driver_generation text not null, cards text not null,
  error text not null, checks integer not null))",
    R"(create index stored_results_started on stored_results (started))",
    R"(create index stored_results_serial on stored_results (serial, started))",
    R"(create index stored_results_part on stored_results (part, started))",
    R"(create index stored_results_station on stored_results (station, started))",

    R"(create table stored_records (
  result_id text not null references stored_results (id), number integer not null, line text not null,
  text text not null, value double precision, lower double precision, upper double precision,
  unit text not null, finding integer not null, primary key (result_id, number)))",
    R"(create table stored_faults (
  result_id text not null references stored_results (id), number integer not null, kind text not null,
  channels text not null, text text not null, primary key (result_id, number)))",

    // A result that waits in a spool, and for which database.
    R"(create table waiting (
  result_id text primary key references stored_results (id), target text not null))",

    // What the summary is made of, kept up to date with every result: adding up a million results would take
    // longer than anybody waits.
    R"(create table devices (
  part text not null, serial text not null, first_id text not null, first_started text not null,
  first_station text not null, first_day text not null, first_pass integer not null, last_id text not null,
  last_started text not null, last_pass integer not null, primary key (part, serial)))",
    R"(create table day_totals (
  part text not null, station text not null, day text not null, checks integer not null,
  passes integer not null, fails integer not null, errors integer not null, cancels integer not null,
  devices integer not null, first_passes integer not null, final_passes integer not null,
  seconds double precision not null, longest double precision not null, primary key (part, station, day)))",
    R"(create table fault_totals (
  part text not null, station text not null, day text not null, kind text not null,
  channels_key text not null, channels text not null, text text not null, checks integer not null,
  primary key (part, station, day, kind, channels_key)))",
    R"(create table contact_devices (
  part text not null, channel integer not null, station text not null, device text not null,
  primary key (part, channel, station, device)))",
    R"(create table contact_totals (
  part text not null, channel integer not null, station text not null, day text not null,
  devices integer not null, primary key (part, channel, station, day)))",

    R"(create view results as
  select id, started, seconds, verdict, serial, part, operator, station, expectation, sha256, diagnosis
  from stored_results)",
    R"(create view records as
  select result_id, number, text, value, lower, upper, unit from stored_records)",
    R"(create view faults as
  select result_id, kind, channels, text from stored_faults)",
    R"(create view summary as
  select part, station, day, checks, passes, fails, errors, cancels, devices, first_passes, final_passes,
    seconds, longest from day_totals)",
    R"(create view pareto as
  select part, station, day, kind, channels, text, checks from fault_totals)",
};

/// What leads from each version to the next; the last one leads to SchemaVersion.
constexpr std::span<const char* const> Steps[] = {FirstVersion};
static_assert(std::size(Steps) == SchemaVersion);

/// 0: none.
int VersionOf(Database& database) {
  if (!database.HasTable("schema_version")) return 0;
  int version = 0;
  database.Session() << "select max(version) from schema_version", soci::into(version);
  return version;
}

void RefuseNewer(const Database& database, int version) {
  if (version <= SchemaVersion) return;
  throw SchemaTooNew(database.Url().shown + ": its schema has version " + std::to_string(version) +
                     ", and this program knows versions up to " + std::to_string(SchemaVersion) +
                     ": use a newer kxbench");
}

}  // namespace

void MigrateSchema(Database& database) {
  int version = 0;
  database.Read([&] { version = VersionOf(database); });
  RefuseNewer(database, version);
  if (version == SchemaVersion) return;
  database.Change([&] {
    database.LockSchema();
    version = VersionOf(database);  // another program may have been first
    RefuseNewer(database, version);
    for (; version < SchemaVersion; ++version) {
      for (const char* statement : Steps[version]) database.Session() << statement;
    }
    database.Session() << "update schema_version set version = :version", soci::use(version);
  });
}

}  // namespace kxbench::results
