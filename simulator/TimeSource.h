#pragma once

#include <chrono>

namespace simulator {

/// The time in which capacitances discharge: the system's steady clock, or a clock that only Advance moves.
class TimeSource {
 public:
  /// Seconds since the clock was made, plus what it was advanced by. Never runs backwards.
  double Seconds() const { return manual_ ? stopped_ : Running(); }

  /// Stops the clock where it stands (true), or lets it run on from there (false).
  void SetManual(bool manual) {
    if (manual == manual_) return;
    stopped_ = manual ? Running() : stopped_;
    offset_ += manual ? 0.0 : stopped_ - Running();
    manual_ = manual;
  }

  /// Moves the clock on by `seconds`, stopped or not. REQUIRES: seconds >= 0.
  void Advance(double seconds) { (manual_ ? stopped_ : offset_) += seconds; }

 private:
  using Clock = std::chrono::steady_clock;

  double Running() const { return std::chrono::duration<double>(Clock::now() - start_).count() + offset_; }

  // Counted from here and not from the system's start: after weeks of that a double knows a moment to 0.1 ns
  // only, which shows in the last digit of a voltage that falls quickly.
  Clock::time_point start_ = Clock::now();
  bool manual_ = false;
  double stopped_ = 0.0;
  double offset_ = 0.0;
};

}  // namespace simulator
