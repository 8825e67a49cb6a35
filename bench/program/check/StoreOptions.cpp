#include "bench/program/check/StoreOptions.h"

#include <filesystem>
#include <utility>
#include <vector>

#include "bench/program/check/ResultsModuleLoading.h"
#include "bench/program/system/Failure.h"
#include "text/Paths.h"

namespace kxbench {

namespace {

/// The module's store, with exceptions of our own.
class LoadedStore : public results::ResultStore {
 public:
  LoadedStore(const std::string& url, const results::StoreSettings& settings)
      : store_(module_.OpenStore(url, settings)) {}

  results::StoreOutcome Store(const results::Result& result) override {
    results::StoreOutcome outcome;
    Require(store_->Store(result, outcome));
    return outcome;
  }

  std::vector<EarlierCheck> Earlier(const std::string& serial, std::size_t most) override {
    std::vector<EarlierCheck> checks;
    Require(store_->Earlier(serial, most, checks));
    return checks;
  }

 private:
  static void Require(const std::string& failure) {
    if (!failure.empty()) throw Failure(failure);
  }

  LoadedResultsModule module_;
  std::unique_ptr<results::ModuleStore> store_;
};

}  // namespace

void StoreOptions::DeclareIn(OptionList& list) {
  list.Value("--results", "URL",
             "Database of results: sqlite:FILE or postgresql://[USER@]HOST[:PORT]/DATABASE", results);
  list.Value("--spool", "FILE",
             "Where results wait while the database does not answer (default: in the user's data "
             "folder)",
             spool);
}

std::unique_ptr<results::ResultStore> OpenResults(const StoreOptions& options) {
  if (!options.results) return nullptr;
  results::StoreSettings settings;
  if (options.spool) settings.spool = shorttest::AbsolutePath(*options.spool);
  return std::make_unique<LoadedStore>(*options.results, settings);
}

void RequireStorable(const std::string& what, const std::string& value) {
  try {
    results::CheckStorable(what, value);
  } catch (const std::runtime_error& error) {
    throw Failure(error.what());
  }
}

}  // namespace kxbench
