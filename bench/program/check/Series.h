#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "bench/program/host/OptionList.h"
#include "bench/results/Result.h"

namespace kxbench {

/// The same check again and again, while somebody moves the harness.
struct SeriesOptions {
  std::optional<std::int64_t> repeat;  ///< how many checks; none: one, or with untilFault any number
  bool untilFault = false;             ///< the first check with findings is the last

  void DeclareIn(OptionList& list);
  bool Any() const { return repeat || untilFault; }
};

/// What a series of checks has found. A series is one result: its first check with findings or, without any,
/// its last one.
class Series {
 public:
  /// Seconds since any fixed moment.
  using Seconds = std::function<double()>;

  Series(SeriesOptions options, Seconds seconds);

  /// Another check is due.
  bool GoesOn() const;

  /// A check has come to its end; `faults` are what it found, in words; none: nothing.
  void Ended(const std::vector<std::string>& faults);

  /// For a check that ended as `result` says and is not counted yet: whether it is the series' result. Enters
  /// what the series knows of it then.
  bool Settles(results::Result& result);

  std::int64_t Checks() const { return checks_; }
  std::int64_t Faulty() const { return faulty_; }

  /// "check 17, after 6.83 s"
  std::string Place() const;

  /// The lines that end a series: how many checks, which contacts and when, and what it cannot see.
  std::string Summary() const;

 private:
  SeriesOptions options_;
  Seconds seconds_;
  double began_;
  double ended_ = 0;  ///< the last check, since the series began
  std::int64_t checks_ = 0;
  std::int64_t faulty_ = 0;
  std::string first_;  ///< Place() of the first check with findings
  std::vector<std::pair<std::string, std::int64_t>>
      faults_;  ///< and in how many checks, in order of appearance
  std::optional<std::chrono::sys_time<std::chrono::milliseconds>> started_;
  bool settled_ = false;
};

}  // namespace kxbench
