#include <soci/soci.h>
#include <soci/sqlite3/soci-sqlite3.h>

#include <stdexcept>
#include <string>

#include "bench/results/DatabaseBackends.h"
#include "text/Paths.h"

namespace kxbench::results {

namespace {

using sqlite_api::sqlite3_busy_timeout;
using sqlite_api::sqlite3_close;
using sqlite_api::sqlite3_errmsg;
using sqlite_api::sqlite3_exec;
using sqlite_api::sqlite3_open_v2;

/// The library's own session splits its connection text at blanks and '=', which file names may hold, and
/// starts transactions that find out only when they write that another program does too.
class SqliteSession : public soci::sqlite3_session_backend {
 public:
  explicit SqliteSession(const soci::connection_parameters& parameters)
      : sqlite3_session_backend(soci::connection_parameters(soci::sqlite3, ":memory:")) {
    const std::string& text = parameters.get_connect_string();
    const std::size_t blank = text.find(' ');
    const int patience = std::stoi(text.substr(1, blank - 1));
    Open(text.substr(blank + 1), text.front() == 'c', patience);
  }

  void begin() override { Execute("BEGIN IMMEDIATE", "cannot begin a transaction: "); }

 private:
  void Open(const std::string& file, bool make, int patience) {
    sqlite3_close(conn_);
    conn_ = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | (make ? SQLITE_OPEN_CREATE : 0);
    if (sqlite3_open_v2(file.c_str(), &conn_, flags, nullptr) != SQLITE_OK) Fail("");
    sqlite3_busy_timeout(conn_, patience);
    // Whatever is committed is on the disk. The log beside the file lets others read meanwhile; where the
    // file system cannot do that, the usual journal does.
    Execute("PRAGMA journal_mode = WAL", "");
    Execute("PRAGMA synchronous = FULL", "");
    Execute("PRAGMA foreign_keys = ON", "");
  }

  void Execute(const char* statement, const char* what) {
    if (sqlite3_exec(conn_, statement, nullptr, nullptr, nullptr) != SQLITE_OK) Fail(what);
  }

  [[noreturn]] void Fail(const char* what) {
    const std::string reason = sqlite3_errmsg(conn_);
    sqlite3_close(conn_);
    conn_ = nullptr;
    throw std::runtime_error(what + reason);
  }
};

class SqliteFactory : public soci::backend_factory {
 public:
  SqliteSession* make_session(const soci::connection_parameters& parameters) const override {
    return new SqliteSession(parameters);
  }
};

}  // namespace

const soci::backend_factory& SqliteFiles() {
  static const SqliteFactory factory;
  return factory;
}

std::string SqliteConnection(const StoreUrl& url, bool make,
                             std::optional<std::chrono::milliseconds> patience) {
  constexpr std::chrono::milliseconds Longest{60000};
  return (make ? "c" : "w") + std::to_string(patience.value_or(Longest).count()) + " " +
         shorttest::Utf8FromPath(url.file);
}

}  // namespace kxbench::results
