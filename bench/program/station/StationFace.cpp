#include "bench/program/station/StationFace.h"

namespace kxbench {

std::string StationWord(results::Verdict verdict) {
  switch (verdict) {
    case results::Verdict::Pass:
      return "PASS";
    case results::Verdict::Fail:
      return "FAIL";
    case results::Verdict::Cancelled:
      return "CANCELLED";
    case results::Verdict::Error:
      break;
  }
  return "ERROR";
}

std::string CounterLine(const ShiftCounters& counters) {
  const std::int64_t all = counters.passed + counters.failed + counters.errors + counters.cancelled;
  std::string line = "checked " + std::to_string(all) + ": " + std::to_string(counters.passed) + " PASS, " +
                     std::to_string(counters.failed) + " FAIL";
  if (counters.errors > 0) line += ", " + std::to_string(counters.errors) + " ERROR";
  if (counters.cancelled > 0) line += ", " + std::to_string(counters.cancelled) + " cancelled";
  if (counters.retests > 0) {
    line += "; " + std::to_string(counters.retests) + (counters.retests == 1 ? " retest" : " retests");
  }
  return line;
}

}  // namespace kxbench
