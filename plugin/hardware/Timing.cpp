#include "plugin/hardware/Timing.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <chrono>
#endif

#include "text/Rounding.h"

namespace shorttest {
namespace {

Clock* replacement = nullptr;

}  // namespace

#ifdef _WIN32

std::int64_t SystemClock::Counter() {
  LARGE_INTEGER counter;
  QueryPerformanceCounter(&counter);
  return counter.QuadPart;
}

std::int64_t SystemClock::Frequency() {
  LARGE_INTEGER frequency;
  QueryPerformanceFrequency(&frequency);
  return frequency.QuadPart;
}

std::uint32_t SystemClock::TickCount() { return GetTickCount(); }

#else

std::int64_t SystemClock::Counter() {
  return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

std::int64_t SystemClock::Frequency() { return std::nano::den; }

std::uint32_t SystemClock::TickCount() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

#endif

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
