#pragma once

#include <cstdint>

#include "plugin/hardware/Timing.h"
#include "tests/support/CallLog.h"

namespace shorttest::testkit {

/// A clock that moves only when it is read, or when the test moves it, and stands in for the system's as long
/// as it lives. With a log, the time spent between two calls appears there as "wait N us".
class FakeClock : public Clock {
 public:
  explicit FakeClock(CallLog* log = nullptr) : log_(log), before_(SetClock(this)) {
    if (log_ != nullptr) log_->WatchClock([this] { return TakeWaitMicroseconds(); });
  }
  ~FakeClock() override {
    SetClock(before_);
    if (log_ != nullptr) log_->WatchClock(nullptr);
  }
  FakeClock(const FakeClock&) = delete;
  FakeClock& operator=(const FakeClock&) = delete;

  /// What the next read returns, and by how much every read moves it on.
  std::int64_t counter = 1'000'000;
  std::int64_t counterStep = 250;
  std::int64_t frequency = 1'000'000;  ///< counts per second
  std::uint32_t ticks = 5'000;         ///< ms
  std::uint32_t ticksStep = 0;         ///< ms per read of the ticks

  std::int64_t counterReads = 0;
  std::int64_t frequencyReads = 0;
  std::int64_t tickReads = 0;

  std::int64_t Counter() override {
    ++counterReads;
    if (!waiting_) firstRead_ = counter;
    waiting_ = true;
    lastRead_ = counter;
    counter += counterStep;
    return lastRead_;
  }
  std::int64_t Frequency() override {
    ++frequencyReads;
    return frequency;
  }
  std::uint32_t TickCount() override {
    ++tickReads;
    const std::uint32_t now = ticks;
    ticks += ticksStep;  // wraps, as the system's does
    return now;
  }

 private:
  std::int64_t TakeWaitMicroseconds() {
    if (!waiting_) return 0;
    waiting_ = false;
    return (lastRead_ - firstRead_) * 1'000'000 / frequency;
  }

  CallLog* log_;
  Clock* before_;
  bool waiting_ = false;
  std::int64_t firstRead_ = 0;
  std::int64_t lastRead_ = 0;
};

}  // namespace shorttest::testkit
