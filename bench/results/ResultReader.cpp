#include "bench/results/ResultReader.h"

#include <charconv>
#include <cstdio>
#include <stdexcept>

namespace kxbench::results {

namespace {

using soci::into;
using soci::use;

std::optional<double> Number(double value, soci::indicator indicator) {
  if (indicator == soci::i_null) return std::nullopt;
  return value;
}

bool ReadHead(soci::session& session, Result& result) {
  std::string started;
  std::string verdict;
  std::string diagnosis;
  soci::indicator diagnosed = soci::i_null;
  int checks = 1;
  session << R"(
select started, seconds, verdict, serial, part, operator, station, expectation, sha256, diagnosis,
  program_version, plugin_version, driver, driver_generation, cards, error, checks
from stored_results where id = :id)",
      use(result.id), into(started), into(result.seconds), into(verdict), into(result.serial),
      into(result.part), into(result.operatorName), into(result.station), into(result.expectation),
      into(result.expectationSha256), into(diagnosis, diagnosed), into(result.programVersion),
      into(result.pluginVersion), into(result.driver), into(result.driverGeneration), into(result.cards),
      into(result.error), into(checks);
  if (!session.got_data()) return false;
  const auto time = TimeOf(started);
  const auto known = VerdictOf(verdict);
  if (!time || !known) throw std::runtime_error("result " + result.id + " is damaged");
  result.started = *time;
  result.verdict = *known;
  result.diagnosed = diagnosed == soci::i_ok;
  result.checks = checks;
  return true;
}

void ReadRecords(soci::session& session, Result& result) {
  ResultRecord record;
  int finding = 0;
  double value = 0;
  double lower = 0;
  double upper = 0;
  soci::indicator hasValue{};
  soci::indicator hasLower{};
  soci::indicator hasUpper{};
  soci::statement select = (session.prepare << R"(
select line, text, value, lower, upper, unit, finding from stored_records where result_id = :id order by number)",
                            use(result.id), into(record.line), into(record.text), into(value, hasValue),
                            into(lower, hasLower), into(upper, hasUpper), into(record.unit), into(finding));
  select.execute();
  while (select.fetch()) {
    record.value = Number(value, hasValue);
    record.lower = Number(lower, hasLower);
    record.upper = Number(upper, hasUpper);
    record.finding = finding != 0;
    result.records.push_back(record);
  }
}

void ReadFaults(soci::session& session, Result& result) {
  ResultFault fault;
  std::string channels;
  soci::statement select =
      (session.prepare
           << "select kind, channels, text from stored_faults where result_id = :id order by number",
       use(result.id), into(fault.kind), into(channels), into(fault.text));
  select.execute();
  while (select.fetch()) {
    fault.channels = ChannelsOf(channels);
    result.faults.push_back(fault);
  }
}

}  // namespace

std::optional<Result> ReadResult(Database& database, const std::string& id) {
  Result result;
  result.id = id;
  if (!ReadHead(database.Session(), result)) return std::nullopt;
  ReadRecords(database.Session(), result);
  ReadFaults(database.Session(), result);
  return result;
}

std::optional<std::chrono::sys_time<std::chrono::milliseconds>> TimeOf(const std::string& text) {
  int year = 0;
  unsigned month = 0;
  unsigned day = 0;
  int hours = 0;
  int minutes = 0;
  int seconds = 0;
  int milliseconds = 0;
  char end = 0;
  const int read = std::sscanf(text.c_str(), "%4d-%2u-%2uT%2d:%2d:%2d.%3d%c", &year, &month, &day, &hours,
                               &minutes, &seconds, &milliseconds, &end);
  const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month),
                                         std::chrono::day(day)};
  if (read != 8 || end != 'Z' || !date.ok()) return std::nullopt;
  const std::chrono::sys_time<std::chrono::milliseconds> time =
      std::chrono::sys_days(date) + std::chrono::hours(hours) + std::chrono::minutes(minutes) +
      std::chrono::seconds(seconds) + std::chrono::milliseconds(milliseconds);
  if (TimeText(time) != text) return std::nullopt;
  return time;
}

std::vector<std::int32_t> ChannelsOf(const std::string& text) {
  std::vector<std::int32_t> channels;
  const char* const end = text.data() + text.size();
  for (const char* at = text.data(); at < end;) {
    std::int32_t channel = 0;
    const auto [next, error] = std::from_chars(at, end, channel);
    if (error != std::errc()) break;
    channels.push_back(channel);
    at = next + 1;
  }
  return channels;
}

}  // namespace kxbench::results
