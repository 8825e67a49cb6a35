#pragma once

#include <gmock/gmock.h>

#include <chrono>
#include <memory>
#include <string>

#include "bench/results/Database.h"
#include "bench/results/ResultReader.h"
#include "bench/results/ResultStore.h"
#include "tests/bench/program/TemporaryFolder.h"
#include "tests/bench/results/PostgresServer.h"
#include "tests/bench/results/SampleResults.h"

namespace kxbench::results {

/// A store with a spool in a folder of its own. It has all the time of a busy machine; where the time is what
/// is tested, the test gives its own.
class StoreTest : public testing::Test {
 protected:
  std::unique_ptr<ResultStore> Open(const std::string& url) const { return OpenResultStore(url, options_); }

  std::string File(const std::string& name) const { return (folder_.Path() / name).string(); }

  /// The number that a query gives, asked on a connection of its own.
  static int Number(const std::string& url, const std::string& query) {
    Database database(ReadStoreUrl(url), std::nullopt, Database::Missing::Refuse);
    int number = -1;
    database.Session() << query, soci::into(number);
    return number;
  }
  static std::string Text(const std::string& url, const std::string& query) {
    Database database(ReadStoreUrl(url), std::nullopt, Database::Missing::Refuse);
    std::string text;
    database.Session() << query, soci::into(text);
    return text;
  }
  static std::optional<Result> Stored(const std::string& url, const std::string& id) {
    Database database(ReadStoreUrl(url), std::nullopt, Database::Missing::Refuse);
    std::optional<Result> result;
    database.Read([&] { result = ReadResult(database, id); });
    return result;
  }
  static int Count(const std::string& url) { return Number(url, "select count(*) from results"); }
  std::string SpoolUrl() const { return "sqlite:" + File("spool.db"); }
  int Waiting() const { return Number(SpoolUrl(), "select count(*) from waiting"); }

  TemporaryFolder folder_;
  StoreSettings options_{.spool = folder_.Path() / "spool.db", .timeout = std::chrono::seconds(60)};
};

/// The same for both databases: "sqlite" and "postgresql".
class EitherStoreTest : public StoreTest, public testing::WithParamInterface<const char*> {
 protected:
  std::string url_ = std::string(GetParam()) == "sqlite" ? "sqlite:" + File("results.db")
                                                         : PostgresServer::Get().NewDatabase();
};

}  // namespace kxbench::results
