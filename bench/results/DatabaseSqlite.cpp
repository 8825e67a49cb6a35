#include <soci/soci.h>
#include <soci/sqlite3/soci-sqlite3.h>

#include <memory>
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

using Connection = sqlite_api::sqlite3*;

void Execute(Connection connection, const char* statement) {
  if (sqlite3_exec(connection, statement, nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(connection));
  }
}

void Open(Connection& connection, const std::string& file, bool make, int patience) {
  const int flags = SQLITE_OPEN_READWRITE | (make ? SQLITE_OPEN_CREATE : 0);
  if (sqlite3_open_v2(file.c_str(), &connection, flags, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(connection));
  }
  sqlite3_busy_timeout(connection, patience);
  // Whatever is committed is on the disk. The log beside the file lets others read meanwhile; where the file
  // system cannot do that, the usual journal does.
  Execute(connection, "PRAGMA journal_mode = WAL");
  Execute(connection, "PRAGMA synchronous = FULL");
  Execute(connection, "PRAGMA foreign_keys = ON");
}

/// The library splits a connection's text at blanks and '=', which the names of files may hold. So it opens
/// nothing, and gets our connection.
class SqliteFactory : public soci::backend_factory {
 public:
  soci::details::session_backend* make_session(const soci::connection_parameters& parameters) const override {
    const std::string& text = parameters.get_connect_string();
    const std::size_t blank = text.find(' ');
    const int patience = std::stoi(text.substr(1, blank - 1));
    // The library lets its classes be used through their bases alone.
    const soci::backend_factory& library = *soci::factory_sqlite3();
    std::unique_ptr<soci::details::session_backend> session(
        library.make_session(soci::connection_parameters(library, ":memory:")));
    Connection& connection = static_cast<soci::sqlite3_session_backend*>(session.get())->conn_;
    sqlite3_close(connection);
    connection = nullptr;
    Open(connection, text.substr(blank + 1), text.front() == 'c', patience);
    return session.release();
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
