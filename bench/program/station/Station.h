#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "bench/program/station/SerialPattern.h"
#include "bench/program/station/StationFace.h"
#include "bench/program/system/ExitStatus.h"

namespace kxbench {

/// What the person at a station does all day: serial number in, verdict out, next.
class Station {
 public:
  /// What the station works with; all of it outlives the object.
  struct Surroundings {
    /// Checks the device against the expectation and keeps the result. Throws what keeps it from being tried.
    std::function<StationVerdict(const std::string& expectation, const std::string& part,
                                 const std::string& serial)>
        check;
    /// The expectation of a part; none for a text that is no part's code.
    std::function<std::optional<std::string>(const std::string& code)> partOf;
    /// What stands in the store of earlier checks of a serial number, each in a few words, the newest first.
    std::function<std::vector<std::string>(const std::string& serial)> earlier;
    /// The program is to end.
    std::function<bool()> endAsked;
  };

  struct Options {
    std::string expectation;  ///< to begin with; empty: a part's code comes first
    std::string part;
    SerialPattern pattern;
    bool takesAhead = false;  ///< what was scanned during a check is checked without being confirmed
  };

  Station(Options options, Surroundings surroundings, StationFace& face);

  /// Runs until the user ends it.
  ExitStatus Run();

  const ShiftCounters& Counters() const { return counters_; }

 private:
  void Take(const StationEntry& entry);
  void Check(const std::string& serial);
  void Count(results::Verdict verdict);
  std::string Prompt() const;
  std::string RetestLine(const std::string& serial);

  Options options_;
  Surroundings surroundings_;
  StationFace& face_;
  ShiftCounters counters_;
  std::map<std::string, std::vector<std::string>> checked_;  ///< verdicts since the start, by serial number
  ExitStatus status_ = ExitStatus::NoFindings;
};

}  // namespace kxbench
