#pragma once

#include <filesystem>
#include <string>

namespace kxbench::results {

/// Where results are stored, as `--results` names it.
struct StoreUrl {
  enum class Kind { Sqlite, Postgresql };
  Kind kind = Kind::Sqlite;
  std::filesystem::path file;  ///< of SQLite, absolute
  std::string connection;      ///< of PostgreSQL: what its library takes, password and all; never shown
  std::string shown;           ///< the URL without any password: for messages, and as the spool's key
};

/// Reads "sqlite:FILE", "postgresql://..." or "postgres://...". Throws std::runtime_error, in one line
/// without any password, for anything else.
StoreUrl ReadStoreUrl(const std::string& url);

/// Throws std::runtime_error, in one line without any password, for a server's URL that cannot be understood.
void CheckServerUrl(const StoreUrl& url);

/// `text` on one line, each password of `url` in it replaced by "***".
std::string WithoutSecrets(const std::string& text, const StoreUrl& url);

}  // namespace kxbench::results
