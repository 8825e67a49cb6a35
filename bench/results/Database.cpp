#include "bench/results/Database.h"

#include "bench/results/DatabaseBackends.h"

namespace kxbench::results {

namespace {

bool IsServer(const StoreUrl& url) { return url.kind == StoreUrl::Kind::Postgresql; }

}  // namespace

Database::Database(const StoreUrl& url, Patience patience, Missing missing) : url_(url) {
  try {
    if (!IsServer(url)) {
      session_ = std::make_unique<soci::session>(SqliteFiles(),
                                                 SqliteConnection(url, missing == Missing::Make, patience));
      return;
    }
    session_ = std::make_unique<soci::session>(PostgresqlServers(), PostgresqlConnection(url, patience));
    socket_ = SecondSocket(*session_);
    if (!patience) return;
    const std::string limit = std::to_string(patience->count());
    std::string set;
    for (const std::string name : {"statement_timeout", "lock_timeout"}) {
      *session_ << "select set_config(:name, :value, false)", soci::use(name), soci::use(limit),
          soci::into(set);
    }
  } catch (const std::exception& error) {
    if (socket_ >= 0) CloseSocket(socket_);
    Explain(error);
  }
}

Database::~Database() {
  if (socket_ >= 0) CloseSocket(socket_);
}

void Database::Explain(const std::exception& error) const {
  throw DatabaseError(url_.shown + ": " + WithoutSecrets(error.what(), url_));
}

void Database::Do(const std::string& begin, const std::function<void()>& work) {
  try {
    *session_ << begin;
    try {
      work();
      session_->commit();
    } catch (...) {
      try {
        session_->rollback();
      } catch (const std::exception&) {
        // The connection is gone, and the transaction with it; what matters is the first failure.
      }
      throw;
    }
  } catch (const DatabaseError&) {
    throw;
  } catch (const std::exception& error) {
    Explain(error);
  }
}

void Database::Change(const std::function<void()>& work) {
  // One of SQLite that began as a reader could not go on as a writer when another program wrote meanwhile.
  Do(IsServer(url_) ? "begin" : "begin immediate", work);
}

void Database::Read(const std::function<void()>& work) {
  Do(IsServer(url_) ? "begin isolation level repeatable read read only" : "begin", work);
}

bool Database::HasTable(const std::string& name) {
  int count = 0;
  if (IsServer(url_)) {
    *session_ << "select count(*) from pg_class where oid = to_regclass(:name)", soci::use(name),
        soci::into(count);
  } else {
    *session_ << "select count(*) from sqlite_master where type = 'table' and name = :name", soci::use(name),
        soci::into(count);
  }
  return count > 0;
}

void Database::LockSchema() {
  // A transaction of SQLite that writes is alone anyway. The number is any that others are unlikely to use.
  if (IsServer(url_)) *session_ << "select pg_advisory_xact_lock(7135280417)";
}

void Database::Interrupt() {
  if (socket_ >= 0) ShutDownSocket(socket_);
}

}  // namespace kxbench::results
