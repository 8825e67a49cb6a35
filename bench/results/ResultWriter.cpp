#include "bench/results/ResultWriter.h"

#include "bench/results/Outputs.h"
#include "bench/results/ResultTotals.h"

namespace kxbench::results {

namespace {

/// A number that may be missing, as SOCI takes it.
struct Nullable {
  explicit Nullable(const std::optional<double>& number)
      : value(number.value_or(0)), indicator(number ? soci::i_ok : soci::i_null) {}
  double value;
  soci::indicator indicator;
};

bool WriteHead(soci::session& session, const Result& result) {
  const std::string started = TimeText(result.started);
  const std::string verdict(VerdictWord(result.verdict));
  const std::string diagnosis = DiagnosisText(result);
  soci::indicator diagnosed = result.diagnosed ? soci::i_ok : soci::i_null;
  const int checks = static_cast<int>(result.checks);
  using soci::use;
  soci::statement insert =
      (session.prepare << R"(
insert into stored_results (id, started, seconds, verdict, serial, part, operator, station, expectation, sha256,
  diagnosis, program_version, plugin_version, driver, driver_generation, cards, error,
  checks)
values (:id, :started, :seconds, :verdict, :serial, :part, :operator, :station, :expectation, :sha256,
  :diagnosis, :program_version, :plugin_version, :driver, :driver_generation, :cards, :error, :checks)
on conflict (id) do nothing)",
       use(result.id), use(started), use(result.seconds), use(verdict), use(result.serial), use(result.part),
       use(result.operatorName), use(result.station), use(result.expectation), use(result.expectationSha256),
       use(diagnosis, diagnosed), use(result.programVersion), use(result.pluginVersion), use(result.driver),
       use(result.driverGeneration), use(result.cards), use(result.error), use(checks));
  insert.execute(true);
  return insert.get_affected_rows() == 1;
}

void WriteRecords(soci::session& session, const Result& result) {
  if (result.records.empty()) return;
  int number = 0;
  int finding = 0;
  std::string line;
  std::string text;
  std::string unit;
  Nullable value{{}};
  Nullable lower{{}};
  Nullable upper{{}};
  using soci::use;
  soci::statement insert =
      (session.prepare << R"(
insert into stored_records (result_id, number, line, text, value, lower, upper, unit, finding)
values (:result_id, :number, :line, :text, :value, :lower, :upper, :unit, :finding))",
       use(result.id), use(number), use(line), use(text), use(value.value, value.indicator),
       use(lower.value, lower.indicator), use(upper.value, upper.indicator), use(unit), use(finding));
  for (const ResultRecord& record : result.records) {
    ++number;
    finding = record.finding ? 1 : 0;
    line = record.line;
    text = record.text;
    unit = record.unit;
    value = Nullable(record.value);
    lower = Nullable(record.lower);
    upper = Nullable(record.upper);
    insert.execute(true);
  }
}

void WriteFaults(soci::session& session, const Result& result) {
  if (result.faults.empty()) return;
  int number = 0;
  std::string kind;
  std::string channels;
  std::string text;
  using soci::use;
  soci::statement insert = (session.prepare << R"(
insert into stored_faults (result_id, number, kind, channels, text)
values (:result_id, :number, :kind, :channels, :text))",
                            use(result.id), use(number), use(kind), use(channels), use(text));
  for (const ResultFault& fault : result.faults) {
    ++number;
    kind = fault.kind;
    channels = ChannelsText(fault.channels);
    text = fault.text;
    insert.execute(true);
  }
}

}  // namespace

bool WriteResult(Database& database, const Result& result, Keep keep) {
  soci::session& session = database.Session();
  if (!WriteHead(session, result)) return false;
  WriteRecords(session, result);
  WriteFaults(session, result);
  if (keep == Keep::ForGood) AddToTotals(session, result);
  return true;
}

void RemoveResult(Database& database, const std::string& id) {
  soci::session& session = database.Session();
  session << "delete from waiting where result_id = :id", soci::use(id);
  session << "delete from stored_records where result_id = :id", soci::use(id);
  session << "delete from stored_faults where result_id = :id", soci::use(id);
  session << "delete from stored_results where id = :id", soci::use(id);
}

std::string ChannelsText(const std::vector<std::int32_t>& channels) {
  std::string text;
  for (const std::int32_t channel : channels) text += (text.empty() ? "" : ",") + std::to_string(channel);
  return text;
}

}  // namespace kxbench::results
