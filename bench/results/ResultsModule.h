#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bench/results/ResultQueries.h"
#include "bench/results/ResultStore.h"

/// The entries of the results module (`libkxresults.so`, `kxresults.dll`): the database's libraries bring a
/// dozen others along, so the program loads the module only where results are stored or asked for. Nothing
/// throws across its border: a failure is a text, empty where there is none.

#ifdef _WIN32
#define KX_RESULTS_MODULE_API __declspec(dllexport)
#else
#define KX_RESULTS_MODULE_API __attribute__((visibility("default")))
#endif

namespace kxbench::results {

/// ResultStore, as it crosses the border.
class ModuleStore {
 public:
  ModuleStore() = default;
  virtual ~ModuleStore() = default;
  ModuleStore(const ModuleStore&) = delete;
  ModuleStore& operator=(const ModuleStore&) = delete;

  virtual std::string Store(const Result& result, StoreOutcome& outcome) noexcept = 0;
  virtual std::string Earlier(const std::string& serial, std::size_t most,
                              std::vector<ResultStore::EarlierCheck>& checks) noexcept = 0;
};

/// What was delivered from a spool, and what is left in it for other databases.
struct Delivery {
  std::size_t delivered = 0;
  struct Left {
    std::string target;
    std::size_t results = 0;
  };
  std::vector<Left> left;
};

/// A database that is asked.
class ModuleDatabase {
 public:
  ModuleDatabase() = default;
  virtual ~ModuleDatabase() = default;
  ModuleDatabase(const ModuleDatabase&) = delete;
  ModuleDatabase& operator=(const ModuleDatabase&) = delete;

  /// The newest first, at most `most`; `each` throws nothing.
  virtual std::string List(const ResultFilter& filter, std::size_t most,
                           const std::function<void(const ResultLine&)>& each) noexcept = 0;

  /// All that is known of each result, the oldest first; `each` throws nothing, and says whether to go on.
  virtual std::string Each(const ResultFilter& filter,
                           const std::function<bool(const Result&)>& each) noexcept = 0;

  /// All that is known of the result whose id is, or begins with, `id`; several matches are a failure.
  virtual std::string Find(const std::string& id, std::optional<Result>& result) noexcept = 0;

  /// Of a filter's moments the days count; serial number and verdict do not.
  virtual std::string Summarise(const ResultFilter& filter, ResultSummary& summary) noexcept = 0;

  /// Delivers what the spool holds for this database; everything that it holds, where `all` is said.
  virtual std::string Forward(const std::filesystem::path& spool, bool all, Delivery& delivery) noexcept = 0;
};

}  // namespace kxbench::results

extern "C" {

/// OpenResultStore.
KX_RESULTS_MODULE_API void kxOpenResultStore(const std::string& url,
                                             const kxbench::results::StoreSettings& settings,
                                             std::unique_ptr<kxbench::results::ModuleStore>& store,
                                             std::string& failure) noexcept;

/// Opens a database to ask it. A file of SQLite must exist, but for Forward (`make`).
KX_RESULTS_MODULE_API void kxOpenResultDatabase(const std::string& url, bool make,
                                                std::unique_ptr<kxbench::results::ModuleDatabase>& database,
                                                std::string& failure) noexcept;

}  // extern "C"

using KxOpenResultStore = void (*)(const std::string& url, const kxbench::results::StoreSettings& settings,
                                   std::unique_ptr<kxbench::results::ModuleStore>& store,
                                   std::string& failure);
using KxOpenResultDatabase = void (*)(const std::string& url, bool make,
                                      std::unique_ptr<kxbench::results::ModuleDatabase>& database,
                                      std::string& failure);
inline constexpr char KxOpenResultStoreName[] = "kxOpenResultStore";
inline constexpr char KxOpenResultDatabaseName[] = "kxOpenResultDatabase";
