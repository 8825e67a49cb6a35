#pragma once

#include <cstdint>

/// The two clocks the measurement needs. The system's clocks stand behind it in operation; tests put a
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
