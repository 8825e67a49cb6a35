#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "bench/results/Database.h"
#include "bench/results/ResultQueries.h"
#include "bench/results/ResultsModule.h"

namespace kxbench::results {

/// A database of results that is asked: what ModuleDatabase offers, with exceptions for failures.
class ResultDatabase {
 public:
  /// Throws std::runtime_error, in one line without any password.
  ResultDatabase(const std::string& url, bool make);

  /// The newest first, at most `most`.
  void List(const ResultFilter& filter, std::size_t most, const std::function<void(const ResultLine&)>& each);

  void Each(const ResultFilter& filter, const std::function<bool(const Result&)>& each);

  std::optional<Result> Find(const std::string& id);

  ResultSummary Summarise(const ResultFilter& filter);

  /// What was delivered before a failure stands in `delivery`.
  void Forward(const std::filesystem::path& spool, bool all, Delivery& delivery);

 private:
  void Select(const ResultFilter& filter, std::size_t most,
              const std::function<void(const ResultLine&)>& each);

  Database database_;
};

}  // namespace kxbench::results
