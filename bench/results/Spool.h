#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "bench/results/Database.h"
#include "bench/results/Result.h"

namespace kxbench::results {

/// "spool.db" in the user's data folder. Throws std::runtime_error when the system knows none.
std::filesystem::path UsersSpool();

/// Results that wait for their database, in a file of the same schema.
class Spool {
 public:
  /// Opens the file; makes it, and its folder, where `missing` says so. Throws DatabaseError, or
  /// std::filesystem::filesystem_error.
  Spool(const std::filesystem::path& file, std::chrono::milliseconds patience, Database::Missing missing);

  /// Keeps a storable result for the database `target` (StoreUrl::shown). It is on the disk afterwards.
  void Keep(const Result& result, const std::string& target);

  /// The ids of what waits for `target`, the oldest first, at most `most`.
  std::vector<std::string> WaitingFor(const std::string& target, std::size_t most);

  struct Queue {
    std::string target;
    std::size_t results = 0;
  };
  /// How much waits for each target.
  std::vector<Queue> Queues();

  std::optional<Result> Find(const std::string& id);

  /// To be called once `id` is committed where it belongs.
  void Remove(const std::string& id);

  Database& Held() { return database_; }

 private:
  Database database_;
};

/// Delivers one of `ids` from the spool: the result is removed from it only once the server has committed it.
/// One that was delivered before is not delivered twice.
void Deliver(Spool& spool, Database& database, const std::string& id);

}  // namespace kxbench::results
