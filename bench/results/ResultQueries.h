#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bench/results/Result.h"

namespace kxbench::results {

/// Which results are meant. What is not given does not matter.
struct ResultFilter {
  std::optional<std::string> part = std::nullopt;
  std::optional<std::string> serial = std::nullopt;
  std::optional<std::string> station = std::nullopt;
  std::optional<Verdict> verdict = std::nullopt;
  std::string from = {};  ///< the first day or moment, "2026-03-14" or "2026-03-14T08:00:00.000Z"
  std::string to = {};    ///< the last day, or the first moment that is not meant any more; empty: no end
};

/// A line of the view `results`.
struct ResultLine {
  std::string id;
  std::string started;  ///< UTC, ISO 8601
  double seconds = 0;
  std::string verdict;
  std::string serial;
  std::string part;
  std::string operatorName;
  std::string station;
  std::string expectation;
  std::string sha256;
  std::optional<std::string>
      diagnosis;  ///< the faults in words, a line each; none where no diagnosis was made
};

/// What a part, a station or a day adds up to.
struct Total {
  std::string name;
  std::int64_t checks = 0;
  std::int64_t passes = 0;
  std::int64_t fails = 0;
  std::int64_t errors = 0;
  std::int64_t cancels = 0;
  std::int64_t devices = 0;      ///< serial numbers; a test without one is a device of its own
  std::int64_t firstPasses = 0;  ///< devices that passed their first test
  std::int64_t finalPasses = 0;  ///< devices that passed their last test
  double seconds = 0;            ///< of all checks together
  double longest = 0;            ///< seconds

  /// Between 0 and 1; none without a device.
  std::optional<double> FirstPassYield() const;
  std::optional<double> FinalYield() const;
  /// Seconds for each check; none without one.
  std::optional<double> SecondsPerCheck() const;
};

/// How often a fault was found.
struct FaultCount {
  std::string part;
  std::string kind;
  std::string channels;  ///< "1,14"
  std::string text;      ///< as one of the checks told it
  std::int64_t checks = 0;
};

/// A contact that comes back on one station and not on others: its adapter is to blame, not the harnesses.
struct SuspectContact {
  std::string part;
  std::string station;
  std::int32_t channel = 0;
  std::int64_t devices = 0;        ///< that had a fault at this contact here
  std::int64_t tested = 0;         ///< devices first tested here
  std::int64_t devicesOthers = 0;  ///< that had it at the other stations
  std::int64_t testedOthers = 0;
};

struct ResultSummary {
  Total all;
  std::vector<Total> parts;              ///< by name
  std::vector<Total> stations;           ///< by name
  std::vector<Total> days;               ///< ascending
  std::vector<FaultCount> faults;        ///< the most frequent first, at most MostListedFaults
  std::int64_t faultsInAll = 0;          ///< the checks of all of them together, of those not listed too
  std::vector<SuspectContact> suspects;  ///< the most devices first, at most MostListedSuspects
};
inline constexpr std::size_t MostListedFaults = 20;
inline constexpr std::size_t MostListedSuspects = 20;

}  // namespace kxbench::results
