#include "plugin/hardware/Timing.h"

#include "plugin/hardware/SystemClock.h"
#include "text/Rounding.h"

namespace shorttest {
namespace {

Clock* replacement = nullptr;

}  // namespace

Clock& ActiveClock() {
  static SystemClock system;
  if (replacement != nullptr) return *replacement;
  return system;
}

Clock* SetClock(Clock* clock) {
  Clock* const before = replacement;
  replacement = clock;
  return before;
}

}  // namespace shorttest

std::int64_t PerfCounterNow() { return shorttest::ActiveClock().Counter(); }

void DelaySeconds(double seconds) {
  const double frequency = static_cast<double>(shorttest::ActiveClock().Frequency());
  const auto target = static_cast<std::int64_t>(
      shorttest::RoundToEven(static_cast<double>(PerfCounterNow()) + frequency * seconds));
  while (PerfCounterNow() < target) {
  }
}
