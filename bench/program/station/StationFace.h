#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bench/results/Result.h"

namespace kxbench {

/// What a station has checked since it was started.
struct ShiftCounters {
  std::int64_t passed = 0;
  std::int64_t failed = 0;
  std::int64_t errors = 0;
  std::int64_t cancelled = 0;
  std::int64_t retests = 0;  ///< checks of a serial number that was checked before
};

/// How a check ended, as a station shows it.
struct StationVerdict {
  results::Verdict verdict = results::Verdict::Error;
  std::string serial;
  std::string part;
  std::vector<std::string> lines;  ///< the faults in words; why there is no verdict
  std::string retest;   ///< how often this serial number was checked before, and with what; may be empty
  std::string drawing;  ///< SVG with the faults marked; may be empty
};

/// What was scanned or typed.
struct StationEntry {
  std::string text;
  bool ahead = false;  ///< during a check, when its device was not the one connected
};

/// Where the person at a station looks and types. What is typed while a check runs is neither lost nor does
/// it cancel the check.
class StationFace {
 public:
  StationFace() = default;
  virtual ~StationFace() = default;
  StationFace(const StationFace&) = delete;
  StationFace& operator=(const StationFace&) = delete;

  /// Waits for the next serial number or code of a part; `prompt` says what is expected. None: the station
  /// is to end.
  virtual std::optional<StationEntry> Next(const std::string& prompt) = 0;

  /// Puts a text into the field as if it had been typed, for the user to confirm.
  virtual void Offer(const std::string& text) = 0;

  /// One line on what was not accepted, or has happened.
  virtual void Say(const std::string& line) = 0;

  /// A check begins; `retest` as in StationVerdict.
  virtual void Checking(const std::string& serial, const std::string& retest) = 0;

  /// It has ended, and its result is kept.
  virtual void Show(const StationVerdict& verdict, const ShiftCounters& counters) = 0;
};

/// "PASS", "FAIL", "ERROR", "CANCELLED".
std::string StationWord(results::Verdict verdict);

/// "checked 12: 10 PASS, 2 FAIL; 1 retest"
std::string CounterLine(const ShiftCounters& counters);

}  // namespace kxbench
