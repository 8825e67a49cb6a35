#pragma once

#include <chrono>

namespace simulator {

/// The time in which capacitances discharge: the system's steady clock, or a clock that only Advance moves.
class TimeSource {
 public:
  /// Seconds since some fixed moment. Never runs backwards.
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
  double Running() const {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count() + offset_;
  }

  bool manual_ = false;
  double stopped_ = 0.0;
  double offset_ = 0.0;
};

}  // namespace simulator
