#pragma once

#include <cstdint>

/// The two clocks the measurement needs. In operation these are the system's clocks; tests put a
/// clock of their own in their place, so that a wait of five seconds takes none.
class Clock {
 public:
  virtual ~Clock() = default;

  /// Current value of the high-resolution counter. Never runs backwards.
  virtual std::int64_t Counter() = 0;

  /// Counts per second of the high-resolution counter; greater than 0.
  virtual std::int64_t Frequency() = 0;

  /// Milliseconds since the system started. Wraps to 0 after 2^32 ms (49.7 days).
  virtual std::uint32_t TickCount() = 0;
};

namespace shorttest {

/// The system's clocks: the performance counter and the tick count on Windows, the monotonic clock elsewhere.
class SystemClock : public Clock {
 public:
  std::int64_t Counter() override;
  std::int64_t Frequency() override;
  std::uint32_t TickCount() override;
};

/// The clock in force: the system's, or the one set by SetClock.
Clock& ActiveClock();

/// Puts another clock in place of the system's (null gives the system's back) and returns the one that was
/// set before, null for the system's. The caller keeps ownership. For tests.
Clock* SetClock(Clock* clock);

}  // namespace shorttest

/// Current value of the high-resolution counter.
std::int64_t PerfCounterNow();

/// Waits `seconds` by spinning on the high-resolution counter: no sleep and no message processing, so that a
/// settling time of a millisecond is a millisecond.
void DelaySeconds(double seconds);
