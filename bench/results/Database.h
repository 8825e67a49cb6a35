#pragma once

#include <soci/soci.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "bench/results/StoreUrl.h"

namespace kxbench::results {

/// A database that does not do what it was asked to. In one line, without any password.
class DatabaseError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A schema that is newer than this program.
class SchemaTooNew : public DatabaseError {
 public:
  using DatabaseError::DatabaseError;
};

/// An open database. What differs between SQLite and PostgreSQL is here; statements are the same for both.
class Database {
 public:
  /// How long to wait: for another program's lock, for an answer. None: as long as it takes.
  using Patience = std::optional<std::chrono::milliseconds>;

  enum class Missing { Make, Refuse };

  /// Connects; a file of SQLite that does not exist is made, or refused. Throws DatabaseError.
  Database(const StoreUrl& url, Patience patience, Missing missing);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  /// For prepared statements with bound values. What it throws goes through Explained.
  soci::session& Session() { return *session_; }

  /// Runs `work` in a transaction that writes; rolls back when it throws. Throws DatabaseError.
  void Change(const std::function<void()>& work);

  /// Runs `work`, which only reads, in a transaction that sees one state of the database. Throws
  /// DatabaseError.
  void Read(const std::function<void()>& work);

  /// Whether there is a table of that name.
  bool HasTable(const std::string& name);

  /// Inside Change: keeps others from changing the schema until the end of the transaction.
  void LockSchema();

  /// Makes calls that wait for the server fail now. May be called from another thread.
  void Interrupt();

  const StoreUrl& Url() const { return url_; }

 private:
  [[noreturn]] void Explain(const std::exception& error) const;
  void Do(const std::string& begin, const std::function<void()>& work);

  StoreUrl url_;
  int socket_ = -1;  ///< a second name of the connection's, which stays ours when the library closes its own
  std::unique_ptr<soci::session> session_;
};

}  // namespace kxbench::results
