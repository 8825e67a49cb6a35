#include "bench/results/ResultDatabase.h"

#include <limits>
#include <stdexcept>
#include <vector>

#include "bench/results/ResultReader.h"
#include "bench/results/Schema.h"
#include "bench/results/Spool.h"
#include "bench/results/SummaryQueries.h"

namespace kxbench::results {

namespace {

using soci::into;
using soci::use;

/// Past every day and moment.
constexpr char EndOfTime[] = "9999-99-99";

StoreUrl UsableUrl(const std::string& url) {
  StoreUrl read = ReadStoreUrl(url);
  CheckServerUrl(read);
  return read;
}

/// A day as its end, "2026-03-14~", which goes after all of its moments; a moment as it is.
std::string UpTo(const std::string& to) {
  if (to.empty()) return EndOfTime;
  return to.size() == 10 ? to + "~" : to;
}

/// The ids that begin with `id`, at most two.
std::vector<std::string> IdsFrom(soci::session& session, const std::string& id) {
  std::vector<std::string> ids;
  const std::string end = id + "~";  // after every digit and letter
  std::string found;
  soci::statement select =
      (session.prepare
           << "select id from stored_results where id >= :begin and id < :end order by id limit 2",
       use(id), use(end), into(found));
  select.execute();
  while (select.fetch()) ids.push_back(found);
  return ids;
}

}  // namespace

ResultDatabase::ResultDatabase(const std::string& url, bool make)
    : database_(UsableUrl(url), std::nullopt, make ? Database::Missing::Make : Database::Missing::Refuse) {
  MigrateSchema(database_);
}

void ResultDatabase::Select(const ResultFilter& filter, std::size_t most,
                            const std::function<void(const ResultLine&)>& each) {
  // The text of the statement is one of a few; what is asked for is bound.
  std::string query =
      "select id, started, seconds, verdict, serial, part, operator, station, expectation, sha256, diagnosis "
      "from stored_results where started >= :from and started < :to";
  if (filter.part) query += " and part = :part";
  if (filter.serial) query += " and serial = :serial";
  if (filter.station) query += " and station = :station";
  if (filter.verdict) query += " and verdict = :verdict";
  query += " order by started desc, id desc limit :most";

  const std::string to = UpTo(filter.to);
  const std::string part = filter.part.value_or("");
  const std::string serial = filter.serial.value_or("");
  const std::string station = filter.station.value_or("");
  const std::string verdict = filter.verdict ? std::string(VerdictWord(*filter.verdict)) : "";
  const long long limit = static_cast<long long>(most);
  ResultLine line;
  std::string diagnosis;
  soci::indicator diagnosed = soci::i_null;
  soci::statement select(database_.Session());
  for (std::string* text : {&line.id, &line.started}) select.exchange(into(*text));
  select.exchange(into(line.seconds));
  for (std::string* text : {&line.verdict, &line.serial, &line.part, &line.operatorName, &line.station,
                            &line.expectation, &line.sha256}) {
    select.exchange(into(*text));
  }
  select.exchange(into(diagnosis, diagnosed));
  select.exchange(use(filter.from));
  select.exchange(use(to));
  if (filter.part) select.exchange(use(part));
  if (filter.serial) select.exchange(use(serial));
  if (filter.station) select.exchange(use(station));
  if (filter.verdict) select.exchange(use(verdict));
  select.exchange(use(limit));
  select.alloc();
  select.prepare(query);
  select.define_and_bind();
  select.execute();
  while (select.fetch()) {
    line.diagnosis.reset();
    if (diagnosed == soci::i_ok) line.diagnosis = diagnosis;
    each(line);
  }
}

void ResultDatabase::List(const ResultFilter& filter, std::size_t most,
                          const std::function<void(const ResultLine&)>& each) {
  database_.Read([&] { Select(filter, most, each); });
}

void ResultDatabase::Each(const ResultFilter& filter, const std::function<bool(const Result&)>& each) {
  database_.Read([&] {
    std::vector<std::string> ids;
    Select(filter, std::numeric_limits<std::int32_t>::max(),
           [&](const ResultLine& line) { ids.push_back(line.id); });
    for (auto id = ids.rbegin(); id != ids.rend(); ++id) {
      const std::optional<Result> result = ReadResult(database_, *id);
      if (result && !each(*result)) break;
    }
  });
}

std::optional<Result> ResultDatabase::Find(const std::string& id) {
  std::optional<Result> result;
  database_.Read([&] {
    const std::vector<std::string> ids = IdsFrom(database_.Session(), id);
    if (ids.size() > 1) throw DatabaseError("several results have ids that begin with " + id);
    if (!ids.empty()) result = ReadResult(database_, ids.front());
  });
  return result;
}

ResultSummary ResultDatabase::Summarise(const ResultFilter& filter) {
  ResultSummary summary;
  database_.Read([&] { summary = QuerySummary(database_.Session(), filter); });
  return summary;
}

void ResultDatabase::Forward(const std::filesystem::path& spoolFile, bool all, Delivery& delivery) {
  constexpr int MostFailures = 3;
  constexpr std::chrono::seconds Patience{10};
  const std::filesystem::path file = spoolFile.empty() ? UsersSpool() : spoolFile;
  std::error_code error;
  if (!std::filesystem::exists(file, error)) return;  // nothing ever waited
  Spool spool(file, Patience, Database::Missing::Refuse);
  std::string failure;
  int failuresInARow = 0;
  for (const Spool::Queue& queue : spool.Queues()) {
    if (!all && queue.target != database_.Url().shown) continue;
    for (const std::string& id : spool.WaitingFor(queue.target, queue.results)) {
      // One result that the database refuses does not hold up the others.
      if (failuresInARow == MostFailures) break;
      try {
        Deliver(spool, database_, id);
        ++delivery.delivered;
        failuresInARow = 0;
      } catch (const DatabaseError& refusal) {
        failure = "result " + id + ": " + refusal.what();
        ++failuresInARow;
      }
    }
  }
  for (const Spool::Queue& queue : spool.Queues()) delivery.left.push_back({queue.target, queue.results});
  if (!failure.empty()) throw DatabaseError(failure);
}

}  // namespace kxbench::results
