#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>

#include "plugin/hardware/Timing.h"

// The clock is the system's own: its counter, the counter's frequency, its milliseconds since the start.

namespace {

std::int64_t SystemCounter() {
  LARGE_INTEGER counter{};
  QueryPerformanceCounter(&counter);
  return counter.QuadPart;
}

TEST(ClockOnWindows, CountsWithThePerformanceCounter) {
  shorttest::SystemClock clock;
  for (int n = 0; n < 1000; ++n) {
    const std::int64_t before = SystemCounter();
    const std::int64_t now = clock.Counter();
    const std::int64_t after = SystemCounter();
    ASSERT_LE(before, now);
    ASSERT_LE(now, after);
  }
}

TEST(ClockOnWindows, HasTheCountersFrequency) {
  shorttest::SystemClock clock;
  LARGE_INTEGER frequency{};
  QueryPerformanceFrequency(&frequency);
  EXPECT_EQ(clock.Frequency(), frequency.QuadPart);
}

TEST(ClockOnWindows, TicksWithTheSystem) {
  shorttest::SystemClock clock;
  const std::uint32_t before = GetTickCount();
  const std::uint32_t now = clock.TickCount();
  const std::uint32_t after = GetTickCount();
  // Differences, because the count starts again after 49 days.
  EXPECT_LE(now - before, after - before);
}

}  // namespace
