#pragma once

#include <cstdint>

#include "plugin/hardware/Clock.h"

namespace shorttest {

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
