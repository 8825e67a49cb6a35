#include "bench/results/Spool.h"

#include <stdexcept>

#include "bench/results/ResultReader.h"
#include "bench/results/ResultWriter.h"
#include "bench/results/Schema.h"
#include "text/Environment.h"
#include "text/Paths.h"

namespace kxbench::results {

namespace {

StoreUrl SpoolUrl(const std::filesystem::path& file, Database::Missing missing) {
  if (missing == Database::Missing::Make && file.has_parent_path()) {
    std::filesystem::create_directories(file.parent_path());
  }
  StoreUrl url;
  url.kind = StoreUrl::Kind::Sqlite;
  url.file = file;
  url.shown = "the spool " + shorttest::Utf8FromPath(file);
  return url;
}

}  // namespace

std::filesystem::path UsersSpool() {
#ifdef _WIN32
  const auto folder = shorttest::EnvironmentVariable("LOCALAPPDATA");
  if (folder) return shorttest::PathFromUtf8(*folder) / "shorttest" / "spool.db";
#else
  if (const auto folder = shorttest::EnvironmentVariable("XDG_DATA_HOME")) {
    return shorttest::PathFromUtf8(*folder) / "shorttest" / "spool.db";
  }
  const auto home = shorttest::EnvironmentVariable("HOME");
  if (home) return shorttest::PathFromUtf8(*home) / ".local" / "share" / "shorttest" / "spool.db";
#endif
  throw std::runtime_error(
      "there is no folder for the user's data: --spool FILE says where results may wait");
}

Spool::Spool(const std::filesystem::path& file, std::chrono::milliseconds patience, Database::Missing missing)
    : database_(SpoolUrl(file, missing), patience, missing) {
  MigrateSchema(database_);
}

void Spool::Keep(const Result& result, const std::string& target) {
  database_.Change([&] {
    if (!WriteResult(database_, result, kxbench::results::Keep::UntilSent)) return;
    database_.Session() << "insert into waiting (result_id, target) values (:id, :target)",
        soci::use(result.id), soci::use(target);
  });
}

std::vector<std::string> Spool::WaitingFor(const std::string& target, std::size_t most) {
  std::vector<std::string> ids;
  database_.Read([&] {
    std::string id;
    soci::statement select = (database_.Session().prepare << R"(
select result_id from waiting join stored_results on id = result_id where target = :target order by started, id)",
                              soci::use(target), soci::into(id));
    select.execute();
    while (ids.size() < most && select.fetch()) ids.push_back(id);
  });
  return ids;
}

std::vector<Spool::Queue> Spool::Queues() {
  std::vector<Queue> queues;
  database_.Read([&] {
    std::string target;
    int results = 0;
    soci::statement select = (database_.Session().prepare
                                  << "select target, count(*) from waiting group by target order by target",
                              soci::into(target), soci::into(results));
    select.execute();
    while (select.fetch()) queues.push_back({target, static_cast<std::size_t>(results)});
  });
  return queues;
}

std::optional<Result> Spool::Find(const std::string& id) {
  std::optional<Result> result;
  database_.Read([&] { result = ReadResult(database_, id); });
  return result;
}

void Spool::Remove(const std::string& id) {
  database_.Change([&] { RemoveResult(database_, id); });
}

void Deliver(Spool& spool, Database& database, const std::string& id) {
  const std::optional<Result> result = spool.Find(id);
  if (!result) return;  // another program was faster
  database.Change([&] { WriteResult(database, *result, Keep::ForGood); });
  spool.Remove(id);
}

}  // namespace kxbench::results
