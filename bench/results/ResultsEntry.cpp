#include "bench/results/ResultDatabase.h"
#include "bench/results/ResultsModule.h"
#include "text/FailureText.h"

namespace kxbench::results {

namespace {

using shorttest::FailureText;

class StoreAtTheBorder : public ModuleStore {
 public:
  explicit StoreAtTheBorder(std::unique_ptr<ResultStore> store) : store_(std::move(store)) {}
  std::string Store(const Result& result, StoreOutcome& outcome) noexcept override {
    return FailureText([&] { outcome = store_->Store(result); });
  }
  std::string Earlier(const std::string& serial, std::size_t most,
                      std::vector<ResultStore::EarlierCheck>& checks) noexcept override {
    return FailureText([&] { checks = store_->Earlier(serial, most); });
  }

 private:
  std::unique_ptr<ResultStore> store_;
};

class DatabaseAtTheBorder : public ModuleDatabase {
 public:
  DatabaseAtTheBorder(const std::string& url, bool make) : database_(url, make) {}
  std::string List(const ResultFilter& filter, std::size_t most,
                   const std::function<void(const ResultLine&)>& each) noexcept override {
    return FailureText([&] { database_.List(filter, most, each); });
  }
  std::string Each(const ResultFilter& filter,
                   const std::function<bool(const Result&)>& each) noexcept override {
    return FailureText([&] { database_.Each(filter, each); });
  }
  std::string Find(const std::string& id, std::optional<Result>& result) noexcept override {
    return FailureText([&] { result = database_.Find(id); });
  }
  std::string Summarise(const ResultFilter& filter, ResultSummary& summary) noexcept override {
    return FailureText([&] { summary = database_.Summarise(filter); });
  }
  std::string Forward(const std::filesystem::path& spool, bool all, Delivery& delivery) noexcept override {
    return FailureText([&] { database_.Forward(spool, all, delivery); });
  }

 private:
  ResultDatabase database_;
};

}  // namespace

}  // namespace kxbench::results

void kxOpenResultStore(const std::string& url, const kxbench::results::StoreSettings& settings,
                       std::unique_ptr<kxbench::results::ModuleStore>& store, std::string& failure) noexcept {
  using namespace kxbench::results;
  failure = shorttest::FailureText(
      [&] { store = std::make_unique<StoreAtTheBorder>(OpenResultStore(url, settings)); });
}

void kxOpenResultDatabase(const std::string& url, bool make,
                          std::unique_ptr<kxbench::results::ModuleDatabase>& database,
                          std::string& failure) noexcept {
  using namespace kxbench::results;
  failure = shorttest::FailureText([&] { database = std::make_unique<DatabaseAtTheBorder>(url, make); });
}
