#include <new>

#include "bench/results/ResultDatabase.h"
#include "bench/results/ResultsModule.h"

namespace kxbench::results {

namespace {

/// What `work` throws, as a text.
template <typename Work>
std::string Failed(Work work) noexcept {
  try {
    work();
    return "";
  } catch (const std::bad_alloc&) {
    return "out of memory";  // short enough to need none
  } catch (const std::exception& error) {
    return error.what();
  } catch (...) {
    return "an exception of an unknown kind";
  }
}

class StoreAtTheBorder : public ModuleStore {
 public:
  explicit StoreAtTheBorder(std::unique_ptr<ResultStore> store) : store_(std::move(store)) {}
  std::string Store(const Result& result, StoreOutcome& outcome) noexcept override {
    return Failed([&] { outcome = store_->Store(result); });
  }
  std::string Earlier(const std::string& serial, std::size_t most,
                      std::vector<ResultStore::EarlierCheck>& checks) noexcept override {
    return Failed([&] { checks = store_->Earlier(serial, most); });
  }

 private:
  std::unique_ptr<ResultStore> store_;
};

class DatabaseAtTheBorder : public ModuleDatabase {
 public:
  DatabaseAtTheBorder(const std::string& url, bool make) : database_(url, make) {}
  std::string List(const ResultFilter& filter, std::size_t most,
                   const std::function<void(const ResultLine&)>& each) noexcept override {
    return Failed([&] { database_.List(filter, most, each); });
  }
  std::string Each(const ResultFilter& filter,
                   const std::function<bool(const Result&)>& each) noexcept override {
    return Failed([&] { database_.Each(filter, each); });
  }
  std::string Find(const std::string& id, std::optional<Result>& result) noexcept override {
    return Failed([&] { result = database_.Find(id); });
  }
  std::string Summarise(const ResultFilter& filter, ResultSummary& summary) noexcept override {
    return Failed([&] { summary = database_.Summarise(filter); });
  }
  std::string Forward(const std::filesystem::path& spool, bool all, Delivery& delivery) noexcept override {
    return Failed([&] { database_.Forward(spool, all, delivery); });
  }

 private:
  ResultDatabase database_;
};

}  // namespace

}  // namespace kxbench::results

void kxOpenResultStore(const std::string& url, const kxbench::results::StoreOptions& options,
                       std::unique_ptr<kxbench::results::ModuleStore>& store, std::string& failure) noexcept {
  using namespace kxbench::results;
  failure = Failed([&] { store = std::make_unique<StoreAtTheBorder>(OpenResultStore(url, options)); });
}

void kxOpenResultDatabase(const std::string& url, bool make,
                          std::unique_ptr<kxbench::results::ModuleDatabase>& database,
                          std::string& failure) noexcept {
  using namespace kxbench::results;
  failure = Failed([&] { database = std::make_unique<DatabaseAtTheBorder>(url, make); });
}
