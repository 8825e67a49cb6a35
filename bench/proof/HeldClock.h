#pragma once

#include <cstdint>

#include "plugin/hardware/Timing.h"

namespace kxbench::proof {

/// A clock whose time passes only for who waits: the second look in a row, and each one after it, sees it a
/// millisecond later, so that a wait takes as long as it should and no time at all.
class HeldClock : public Clock {
 public:
  /// `tickStep_ms`: by how much a look at the ticks moves the time on, from 1.
  explicit HeldClock(std::uint32_t tickStep_ms) : tickStep_ms_(tickStep_ms) {}

  std::int64_t Counter() override {
    if (waiting_) ++now_ms_;
    waiting_ = true;
    return now_ms_;
  }
  std::int64_t Frequency() override { return 1000; }
  std::uint32_t TickCount() override {
    now_ms_ += tickStep_ms_;
    return static_cast<std::uint32_t>(now_ms_);
  }

  /// Something else than waiting happens: the next look is the first one again.
  void EndWait() { waiting_ = false; }

  double Seconds() const { return static_cast<double>(now_ms_) / 1000.0; }

 private:
  std::uint32_t tickStep_ms_;
  std::int64_t now_ms_ = 0;
  bool waiting_ = false;
};

}  // namespace kxbench::proof
