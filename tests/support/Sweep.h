#pragma once

namespace shorttest::testkit {

/// How far a sweep over many places goes on each time. Under sanitizers, which make every step ten times
/// slower, a sweep takes a sample: whole it runs in the other builds. A prime number, to meet every kind of
/// place.
#if defined(SHORTTEST_SANITIZED)
inline constexpr int SweepStep = 7;
#else
inline constexpr int SweepStep = 1;
#endif

}  // namespace shorttest::testkit
