#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>
#include <set>
#include <thread>

#include "bench/results/ResultDatabase.h"
#include "tests/bench/results/StoreFixture.h"

namespace kxbench::results {
namespace {

/// How often a process is killed: 100 of each row to look closely.
constexpr int Kills = STORE_TEST_KILLS;

/// Stations that are killed. What they print is what a person saw.
class StoreKilledTest : public StoreTest, public testing::WithParamInterface<const char*> {
 protected:
  /// Stores results, and prints each id once it is stored, until it is killed.
  [[noreturn]] void BeAStation(int printed) {
    try {
      const auto store = Open(url_);
      for (int i = 0;; ++i) {
        const Result result = i % 2 == 0 ? PassedCheck("SN " + std::to_string(i)) : FailedCheck("SN");
        store->Store(result);
        const std::string line = result.id + "\n";
        if (write(printed, line.data(), line.size()) < 0) _exit(1);
      }
    } catch (const std::exception& error) {
      std::fprintf(stderr, "%s\n", error.what());
      _exit(1);
    }
  }

  enum class From { Start, FirstResult };

  /// Starts a station, kills it so long after its start or its first result, and gives the ids that it
  /// printed.
  std::vector<std::string> Killed(From from, std::chrono::microseconds time) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    const pid_t station = fork();
    if (station == 0) {
      close(ends[0]);
      BeAStation(ends[1]);
    }
    close(ends[1]);
    pollfd first = {ends[0], POLLIN, 0};
    if (from == From::FirstResult) poll(&first, 1, 60000);
    std::this_thread::sleep_for(time);  // the moment is what is tested: any will do
    kill(station, SIGKILL);
    int status = 0;
    waitpid(station, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << status;
    std::string text;
    char buffer[4096];
    for (ssize_t count = 0; (count = read(ends[0], buffer, sizeof buffer)) > 0;) {
      text.append(buffer, static_cast<std::size_t>(count));
    }
    close(ends[0]);
    std::vector<std::string> ids;
    for (std::size_t begin = 0, end = 0; (end = text.find('\n', begin)) != std::string::npos;
         begin = end + 1) {
      ids.push_back(text.substr(begin, end - begin));
    }
    return ids;
  }

  std::string url_;
};

TEST_P(StoreKilledTest, WhatWasShownIsStoredOnce) {
  const std::string kind = GetParam();
  const std::string nowhere = "postgresql://kx@127.0.0.1:" + std::to_string(FreePort()) + "/db";
  const std::string server = kind == "postgresql" ? PostgresServer::Get().NewDatabase() : "";
  url_ = kind == "sqlite" ? "sqlite:" + File("results.db") : kind == "spool" ? nowhere : server;
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  std::set<std::string> shown;
  for (int i = 0; i < Kills; ++i) {
    const std::chrono::microseconds moment(std::uniform_int_distribution(0, 100000)(random));
    const From from = i % 2 == 0 ? From::FirstResult : From::Start;
    for (const std::string& id : Killed(from, moment)) EXPECT_TRUE(shown.insert(id).second) << id;
  }
  EXPECT_FALSE(shown.empty());

  const std::string database = kind == "spool" ? SpoolUrl() : url_;
  if (kind != "postgresql") {
    EXPECT_EQ(Text(database, "pragma integrity_check"), "ok");
  }
  for (const std::string& id : shown) EXPECT_TRUE(Stored(database, id)) << id;
  // At most one more for each kill: stored, and killed before that was said.
  const int stored = Count(database);
  EXPECT_LE(stored, static_cast<int>(shown.size()) + Kills);
  EXPECT_EQ(Number(database, "select count(distinct id) from results"), stored);
  EXPECT_EQ(Number(database, "select count(*) from records"),
            Number(database, "select sum(case verdict when 'fail' then 2 else 1 end) from results"));
  if (kind != "spool") {
    EXPECT_EQ(Number(database, "select sum(checks) from summary"), stored);
    return;
  }
  EXPECT_EQ(Waiting(), stored);
  const std::string target = "sqlite:" + File("target.db");
  Delivery delivery;
  ResultDatabase(target, true).Forward(options_.spool, true, delivery);
  EXPECT_EQ(Count(target), stored);
  EXPECT_EQ(Waiting(), 0);
}

INSTANTIATE_TEST_SUITE_P(Databases, StoreKilledTest, testing::Values("sqlite", "postgresql", "spool"),
                         [](const auto& database) { return std::string(database.param); });

}  // namespace
}  // namespace kxbench::results
