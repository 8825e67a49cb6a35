#include <signal.h>
#include <sys/resource.h>

#include <fstream>

#include "bench/results/ResultDatabase.h"
#include "bench/results/Spool.h"
#include "tests/bench/results/CuttingProxy.h"
#include "tests/bench/results/StoreFixture.h"

namespace kxbench::results {
namespace {

/// A server that can be stopped, with a database of its own.
class SpoolTest : public StoreTest {
 protected:
  SpoolTest() { options_.retryAfter = std::chrono::milliseconds(0); }
  ~SpoolTest() override {
    if (paused_) Server().Resume();
    if (stopped_) Server().Start();
  }

  static PostgresServer& Server() { return PostgresServer::Get(); }
  void Stop() {
    Server().Stop();
    stopped_ = true;
  }
  void Start() {
    Server().Start();
    stopped_ = false;
  }
  void Pause() {
    Server().Pause();
    paused_ = true;
  }
  void Resume() {
    Server().Resume();
    paused_ = false;
  }

  Delivery Forward(const std::string& url, bool all = false) {
    Delivery delivery;
    ResultDatabase(url, true).Forward(options_.spool, all, delivery);
    return delivery;
  }

  /// The URL of the database through a proxy.
  std::string Through(const CuttingProxy& proxy) const {
    return Server().Url(url_.substr(url_.rfind('/') + 1), proxy.Port(), "kx");
  }

  std::string url_ = Server().NewDatabase();
  bool stopped_ = false;
  bool paused_ = false;
};

TEST_F(SpoolTest, AResultWaitsWhileTheServerIsDownAndIsDeliveredOnce) {
  const auto store = Open(url_);
  store->Store(PassedCheck("SN 1"));
  Stop();
  const Result late = FailedCheck("SN 2");
  const StoreOutcome outcome = store->Store(late);
  EXPECT_FALSE(outcome.inDatabase);
  EXPECT_THAT(outcome.line, testing::HasSubstr("spool.db"));
  EXPECT_EQ(outcome.line.find('\n'), std::string::npos);
  EXPECT_EQ(Waiting(), 1);
  EXPECT_FALSE(store->Store(late).inDatabase);  // the same once more
  EXPECT_EQ(Waiting(), 1);

  Start();
  EXPECT_EQ(Forward(url_).delivered, 1U);
  EXPECT_EQ(Forward(url_).delivered, 0U);
  EXPECT_EQ(Waiting(), 0);
  EXPECT_EQ(Count(url_), 2);
  const std::optional<Result> stored = Stored(url_, late.id);
  ASSERT_TRUE(stored);
  EXPECT_EQ(stored->records.size(), 2U);
  EXPECT_EQ(stored->faults.size(), 1U);
  EXPECT_EQ(Number(url_, "select sum(checks) from summary"), 2);
  EXPECT_EQ(Number(SpoolUrl(), "select count(*) from records"), 0);
}

TEST_F(SpoolTest, TheNextRunDelivers) {
  Stop();
  EXPECT_FALSE(Open(url_)->Store(PassedCheck("SN 1")).inDatabase);
  EXPECT_FALSE(Open(url_)->Store(PassedCheck("SN 2")).inDatabase);
  Start();
  EXPECT_TRUE(Open(url_)->Store(PassedCheck("SN 3")).inDatabase);  // its end waits for the delivery
  EXPECT_EQ(Count(url_), 3);
  EXPECT_EQ(Waiting(), 0);
}

TEST_F(SpoolTest, TheSameProgramStoresAgainAfterTheServerWasRestarted) {
  const auto store = Open(url_);
  store->Store(PassedCheck("SN 1"));
  Stop();
  Start();
  store->Store(PassedCheck("SN 2"));  // finds its connection gone
  EXPECT_TRUE(store->Store(PassedCheck("SN 3")).inDatabase);
  Forward(url_);
  EXPECT_EQ(Count(url_), 3);
}

TEST_F(SpoolTest, AServerThatHangsHoldsNobodyUpForLongerThanItMay) {
  options_.timeout = std::chrono::milliseconds(300);
  const auto store = Open(url_);
  store->Store(PassedCheck("SN 1"));
  Pause();
  const StoreOutcome outcome = store->Store(PassedCheck("SN 2"));
  EXPECT_FALSE(outcome.inDatabase);
  EXPECT_THAT(outcome.line, testing::HasSubstr("no answer within 300 ms"));
  EXPECT_FALSE(Open(url_)->Store(PassedCheck("SN 3")).inDatabase);
  Resume();
  Forward(url_);
  EXPECT_EQ(Count(url_), 3);
  EXPECT_EQ(Waiting(), 0);
}

TEST_F(SpoolTest, AServerThatDidNotAnswerIsLeftAloneForAWhile) {
  options_.timeout = std::chrono::milliseconds(300);
  options_.retryAfter = std::chrono::hours(1);
  const auto store = Open(url_);
  Pause();
  EXPECT_FALSE(store->Store(PassedCheck("SN 1")).inDatabase);
  Resume();
  EXPECT_FALSE(store->Store(PassedCheck("SN 2")).inDatabase);
}

TEST_F(SpoolTest, ATableThatIsLockedIsASlowServer) {
  options_.timeout = std::chrono::milliseconds(300);
  const auto store = Open(url_);
  Database other(ReadStoreUrl(url_), std::nullopt, Database::Missing::Refuse);
  other.Change([&] {
    other.Session() << "lock table stored_results";
    EXPECT_FALSE(store->Store(PassedCheck("SN 1")).inDatabase);
  });
  Forward(url_);
  EXPECT_EQ(Count(url_), 1);
}

TEST_F(SpoolTest, AConnectionCutBeforeTheCommitLosesNothing) {
  CuttingProxy proxy(Server().Port());
  const std::string url = Through(proxy);
  const auto store = Open(url);
  store->Store(PassedCheck("SN 1"));
  proxy.CutAt("COMMIT", CuttingProxy::Cut::Before);
  EXPECT_FALSE(store->Store(FailedCheck("SN 2")).inDatabase);
  EXPECT_TRUE(proxy.HasCut());
  EXPECT_EQ(Count(url_), 1);
  EXPECT_EQ(Forward(url).delivered, 1U);
  EXPECT_EQ(Count(url_), 2);
}

TEST_F(SpoolTest, AConnectionCutAfterTheCommitStoresNothingTwice) {
  CuttingProxy proxy(Server().Port());
  const std::string url = Through(proxy);
  const auto store = Open(url);
  store->Store(PassedCheck("SN 1"));
  proxy.CutAt("COMMIT", CuttingProxy::Cut::After);
  EXPECT_FALSE(store->Store(FailedCheck("SN 2")).inDatabase);
  EXPECT_TRUE(proxy.HasCut());
  EXPECT_EQ(Count(url_), 2);
  EXPECT_EQ(Waiting(), 1);
  EXPECT_EQ(Forward(url).delivered, 1U);
  EXPECT_EQ(Count(url_), 2);
  EXPECT_EQ(Number(url_, "select count(*) from records"), 3);
  EXPECT_EQ(Number(url_, "select count(*) from faults"), 1);
  EXPECT_EQ(Number(url_, "select sum(checks) from summary"), 2);
  EXPECT_EQ(Waiting(), 0);
}

TEST_F(SpoolTest, AConnectionCutInTheMiddleOfAResultLosesNothing) {
  CuttingProxy proxy(Server().Port());
  const std::string url = Through(proxy);
  for (const char* word : {"stored_results", "stored_records", "stored_faults", "day_totals", "begin"}) {
    options_.spool = folder_.Path() / word;  // one that is empty: its delivery could be what is cut
    const auto store = Open(url);
    proxy.CutAt(word, CuttingProxy::Cut::Before);
    EXPECT_FALSE(store->Store(FailedCheck("SN 1")).inDatabase) << word;
    EXPECT_TRUE(proxy.HasCut()) << word;
    EXPECT_EQ(Forward(url).delivered, 1U) << word;
  }
  EXPECT_EQ(Count(url_), 5);
  EXPECT_EQ(Number(url_, "select count(*) from records"), 10);
}

TEST_F(SpoolTest, AServerThatIsFullIsNoReasonToLoseAResult) {
  std::vector<std::unique_ptr<Database>> others;
  const auto store = Open(url_);
  try {
    while (others.size() < 100) {
      others.push_back(std::make_unique<Database>(ReadStoreUrl(url_ + "?user=station"), std::nullopt,
                                                  Database::Missing::Refuse));
    }
    FAIL() << "it takes any number of connections";
  } catch (const DatabaseError&) {
  }
  const auto another = OpenResultStore(url_ + "?user=station", options_);
  EXPECT_FALSE(another->Store(PassedCheck("SN 1")).inDatabase);
  EXPECT_TRUE(store->Store(PassedCheck("SN 2")).inDatabase);
}

TEST_F(SpoolTest, ResultsOfAnotherDatabaseStayUnlessAllAreMeant) {
  Stop();
  Open(url_)->Store(PassedCheck("SN 1"));
  Start();
  const std::string other = Server().NewDatabase();
  const Delivery none = Forward(other);
  EXPECT_EQ(none.delivered, 0U);
  ASSERT_EQ(none.left.size(), 1U);
  EXPECT_EQ(none.left[0].target, url_);
  EXPECT_EQ(none.left[0].results, 1U);
  EXPECT_EQ(Forward(other, true).delivered, 1U);
  EXPECT_EQ(Count(other), 1);
}

TEST_F(SpoolTest, AResultThatIsRefusedDoesNotHoldUpTheOthers) {
  Open(url_);
  Stop();
  Result refused = PassedCheck("SN 1", 1);
  refused.part = "refused";
  Open(url_)->Store(refused);
  Open(url_)->Store(PassedCheck("SN 2", 2));
  Start();
  {
    Database owner(ReadStoreUrl(url_), std::nullopt, Database::Missing::Refuse);
    owner.Session() << "alter table stored_results add check (part <> 'refused')";
  }
  EXPECT_THROW(Forward(url_), DatabaseError);
  EXPECT_EQ(Count(url_), 1);
  EXPECT_EQ(Waiting(), 1);
}

TEST_F(SpoolTest, NoPasswordIsShownOrStored) {
  Stop();
  const std::string secret = "very%25secret";
  const std::string url = Server().Url("postgres", Server().Port(), "guarded:" + secret);
  const auto store = Open(url);
  const StoreOutcome outcome = store->Store(PassedCheck("SN 1"));
  EXPECT_FALSE(outcome.inDatabase);
  EXPECT_THAT(outcome.line, testing::Not(testing::HasSubstr("secret")));
  EXPECT_THAT(outcome.line, testing::HasSubstr("guarded:***@"));
  EXPECT_THAT(Text(SpoolUrl(), "select target from waiting"), testing::Not(testing::HasSubstr("secret")));
  for (const auto& file : std::filesystem::directory_iterator(folder_.Path())) {
    EXPECT_THAT(folder_.Read(file.path().filename().string()), testing::Not(testing::HasSubstr("secret")));
  }
  Start();
  // Logged in with another password, and without rights.
  for (const std::string& user : {std::string("guarded:other-secret"), "guarded:" + secret}) {
    const std::string line =
        Open(Server().Url("postgres", Server().Port(), user))->Store(PassedCheck("SN")).line;
    EXPECT_THAT(line, testing::Not(testing::HasSubstr("secret")));
  }
}

TEST_F(StoreTest, APasswordFileIsUsed) {
  PostgresServer& server = PostgresServer::Get();
  const std::string file =
      folder_.Write("pgpass", "127.0.0.1:" + std::to_string(server.Port()) + ":*:guarded:very%secret\n");
  std::filesystem::permissions(file, std::filesystem::perms::owner_read);
  setenv("PGPASSFILE", file.c_str(), 1);
  EXPECT_EQ(Number(server.Url("postgres", server.Port(), "guarded"), "select 1"), 1);
  unsetenv("PGPASSFILE");
}

TEST_F(SpoolTest, RightsToReadAndWriteSuffice) {
  Open(url_);
  {
    Database owner(ReadStoreUrl(url_), std::nullopt, Database::Missing::Refuse);
    owner.Session() << "grant select, insert, update on all tables in schema public to station";
  }
  const std::string station = Server().Url(url_.substr(url_.rfind('/') + 1), Server().Port(), "station");
  EXPECT_TRUE(Open(station)->Store(FailedCheck("SN 1")).inDatabase);
  EXPECT_TRUE(Open(station)->Store(PassedCheck("SN 1", 1)).inDatabase);
  EXPECT_EQ(Count(station), 2);
}

/// What a file may grow to, for this process. Restored by its destructor.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &before_);
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before_); }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit before_{};
};

TEST_F(StoreTest, AResultThatNeitherTakesIsAnError) {
  const std::string url = "sqlite:" + File("results.db");
  const auto store = Open(url);
  store->Store(PassedCheck("SN 1"));
  Result large = PassedCheck("SN 2");
  large.error = std::string(3000000, 'x');
  {
    const FullDisk full(400000);
    try {
      store->Store(large);
      FAIL() << "it was stored";
    } catch (const std::runtime_error& error) {
      EXPECT_THAT(error.what(), testing::StartsWith("error: result not stored: "));
      EXPECT_THAT(error.what(), testing::HasSubstr("results.db"));
      EXPECT_THAT(error.what(), testing::HasSubstr("spool.db"));
    }
  }
  EXPECT_EQ(Count(url), 1);
  EXPECT_EQ(Text(url, "pragma integrity_check"), "ok");
  EXPECT_TRUE(store->Store(large).inDatabase);  // there is room again
  EXPECT_EQ(Count(url), 2);
}

TEST_F(StoreTest, AFileThatIsLockedLeavesTheResultToTheSpool) {
  const std::string url = "sqlite:" + File("results.db");
  options_.timeout = std::chrono::milliseconds(300);
  const auto impatient = Open(url);
  Database other(ReadStoreUrl(url), std::nullopt, Database::Missing::Refuse);
  other.Change([&] { EXPECT_FALSE(impatient->Store(PassedCheck("SN 1")).inDatabase); });
  EXPECT_EQ(Waiting(), 1);
  Delivery delivery;
  ResultDatabase(url, true).Forward(options_.spool, false, delivery);
  EXPECT_EQ(Count(url), 1);
}

TEST_F(StoreTest, ASpoolOfANewerProgramIsLeftAlone) {
  const std::string nowhere = "postgresql://kx@127.0.0.1:" + std::to_string(FreePort()) + "/db";
  Open(nowhere)->Store(PassedCheck("SN 1"));
  {
    Database spool(ReadStoreUrl(SpoolUrl()), std::nullopt, Database::Missing::Refuse);
    spool.Session() << "update schema_version set version = 1000";
  }
  EXPECT_THROW(Open(nowhere), std::runtime_error);
  EXPECT_EQ(Waiting(), 1);
}

TEST_F(StoreTest, WhatIsNoDatabaseIsRefusedBeforeAnythingIsChecked) {
  const std::string url = "sqlite:" + folder_.Write("letter.txt", std::string(5000, 'a'));
  EXPECT_THROW(Open(url), std::runtime_error);
  EXPECT_THROW(Open("sqlite:" + File("no/such/folder/results.db")), std::runtime_error);
  EXPECT_THROW(Open("postgresql://kx@host/db?nonsense=1"), std::runtime_error);
  EXPECT_FALSE(std::filesystem::exists(options_.spool));
}

}  // namespace
}  // namespace kxbench::results
