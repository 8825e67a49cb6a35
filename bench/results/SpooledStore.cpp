#include <algorithm>
#include <stdexcept>
#include <utility>

#include "bench/results/DatabaseThread.h"
#include "bench/results/EarlierChecks.h"
#include "bench/results/ResultStore.h"
#include "bench/results/ResultWriter.h"
#include "bench/results/Spool.h"
#include "bench/results/StorableText.h"
#include "text/Paths.h"

namespace kxbench::results {

namespace {

using Clock = std::chrono::steady_clock;
using End = DatabaseThread::Outcome::End;

/// The database, and the spool for when it does not answer.
class SpooledStore : public ResultStore {
 public:
  SpooledStore(const StoreUrl& url, const StoreSettings& settings, std::filesystem::path spoolFile)
      : url_(url),
        settings_(settings),
        spoolFile_(std::move(spoolFile)),
        thread_(url, settings.timeout, spoolFile_) {
    const DatabaseThread::Outcome outcome = AskDatabase([](Database&) {});
    if (outcome.end == End::Done) {
      thread_.DeliverSpool();
      return;
    }
    // A server may come back; a file that cannot be opened stays so.
    const bool locked = outcome.failure.find("locked") != std::string::npos;
    const bool hopeless = url.kind == StoreUrl::Kind::Sqlite && outcome.end == End::Failed && !locked;
    if (outcome.schemaTooNew || hopeless) throw std::runtime_error(outcome.failure);
    OpenSpool();  // what cannot be stored is better known before the check
  }

  StoreOutcome Store(const Result& result) override {
    const Result storable = StorableResult(result);
    const DatabaseThread::Outcome outcome = AskDatabase([storable](Database& database) {
      database.Change([&] { WriteResult(database, storable, Keep::ForGood); });
    });
    StoreOutcome stored;
    if (outcome.end == End::Done) {
      const std::string failure = thread_.TakeDeliveryFailure();
      if (!failure.empty()) stored.line = "what waits in the spool is not delivered: " + failure;
      thread_.DeliverSpool();
      return stored;
    }
    try {
      OpenSpool().Keep(storable, url_.shown);
    } catch (const std::exception& error) {
      throw std::runtime_error("error: result not stored: " + outcome.failure + "; " + error.what());
    }
    stored.inDatabase = false;
    stored.line = "the result waits in " + shorttest::Utf8FromPath(spoolFile_) +
                  " (the next run delivers it, or kxbench results forward): " + outcome.failure;
    return stored;
  }

  std::vector<EarlierCheck> Earlier(const std::string& serial, std::size_t most) override {
    const auto found = std::make_shared<std::vector<EarlierCheck>>();
    const DatabaseThread::Outcome outcome = AskDatabase(
        [found, serial, most](Database& database) { *found = ReadEarlierChecks(database, serial, most); });
    std::vector<EarlierCheck> earlier;
    if (outcome.end == End::Done) earlier = *found;
    std::error_code error;
    if (outcome.end != End::Done || std::filesystem::exists(spoolFile_, error)) {
      for (EarlierCheck& check : ReadEarlierChecks(OpenSpool().Held(), serial, most)) {
        const auto same = [&](const EarlierCheck& other) { return other.id == check.id; };
        if (std::none_of(earlier.begin(), earlier.end(), same)) earlier.push_back(std::move(check));
      }
    }
    std::stable_sort(earlier.begin(), earlier.end(),
                     [](const EarlierCheck& a, const EarlierCheck& b) { return a.started > b.started; });
    if (earlier.size() > most) earlier.resize(most);
    return earlier;
  }

 private:
  /// Leaves a database alone that did not answer a moment ago.
  DatabaseThread::Outcome AskDatabase(DatabaseThread::Task task) {
    if (thread_.IsStuck() || Clock::now() < askAgain_) return lastFailure_;
    DatabaseThread::Outcome outcome = thread_.Run(std::move(task), settings_.timeout);
    if (outcome.end == End::Late) askAgain_ = Clock::now() + settings_.retryAfter;
    if (outcome.end != End::Done) lastFailure_ = outcome;
    return outcome;
  }

  Spool& OpenSpool() {
    if (!spool_) spool_ = std::make_unique<Spool>(spoolFile_, settings_.timeout, Database::Missing::Make);
    return *spool_;
  }

  StoreUrl url_;
  StoreSettings settings_;
  std::filesystem::path spoolFile_;
  std::unique_ptr<Spool> spool_;
  Clock::time_point askAgain_{};
  DatabaseThread::Outcome lastFailure_;
  DatabaseThread thread_;
};

}  // namespace

std::unique_ptr<ResultStore> OpenResultStore(const std::string& url, const StoreSettings& settings) {
  const StoreUrl read = ReadStoreUrl(url);
  CheckServerUrl(read);
  return std::make_unique<SpooledStore>(read, settings,
                                        settings.spool.empty() ? UsersSpool() : settings.spool);
}

}  // namespace kxbench::results
