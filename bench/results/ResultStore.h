#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>

#include "bench/results/Result.h"

namespace kxbench::results {

/// Where a result is now.
struct StoreOutcome {
  bool inDatabase = true;  ///< false: in the spool, from which it is delivered later
  std::string line;  ///< what to tell the user, one line without a line break; empty when there is nothing
};

struct StoreSettings {
  /// The file that keeps results while the server does not answer. Empty: "spool.db" in the user's data
  /// folder.
  std::filesystem::path spool;

  /// How long a server may take for everything that storing one result needs, before the spool takes it.
  std::chrono::milliseconds timeout{2000};

  /// How long a server that did not answer in time is left alone, so that it does not hold up every check.
  std::chrono::milliseconds retryAfter{30000};
};

/// Keeps results in a database. One object serves one thread. It has a thread of its own that talks to the
/// database, so it is made after the process was split in two (EnterGuard) and is not carried across a fork.
class ResultStore {
 public:
  ResultStore() = default;
  virtual ~ResultStore() = default;
  ResultStore(const ResultStore&) = delete;
  ResultStore& operator=(const ResultStore&) = delete;

  /// Keeps the result: it survives the end of the program and of the system once this has returned. A result
  /// whose id is stored already changes nothing. Delivers what the spool holds for this database first, as
  /// far as time allows. Throws std::runtime_error, in one line, when neither database nor spool can hold it.
  virtual StoreOutcome Store(const Result& result) = 0;

  /// What stands in the database of checks of this serial number, the newest first, at most `most`; those in
  /// the spool included. Throws std::runtime_error when neither can be asked.
  struct EarlierCheck {
    std::string id;
    std::string started;  ///< UTC, ISO 8601
    Verdict verdict = Verdict::Error;
    std::vector<std::string> faults;  ///< their texts
  };
  virtual std::vector<EarlierCheck> Earlier(const std::string& serial, std::size_t most) = 0;
};

/// Opens the database that `url` names: "sqlite:FILE" (made when it does not exist) or "postgresql://...". A
/// server that does not answer is no error here: results go to the spool. Throws std::runtime_error, in one
/// line without any password, for a URL that is none, a database whose schema is newer than this program's,
/// and a file that is no database or cannot be written.
std::unique_ptr<ResultStore> OpenResultStore(const std::string& url, const StoreSettings& settings);

/// Throws std::runtime_error when a database could not hold `value` as it is: it is not UTF-8, holds a NUL
/// character, or is longer than MostStorableBytes. `what` names it: "--serial".
void CheckStorable(const std::string& what, const std::string& value);
inline constexpr std::size_t MostStorableBytes = 1000;  ///< databases limit the entries of their indexes

}  // namespace kxbench::results
