#include <gtest/gtest.h>

#include "simulator/TimeSource.h"

namespace simulator {
namespace {

TEST(TimeSource, RunsByItself) {
  const TimeSource time;
  const double start = time.Seconds();
  while (time.Seconds() == start) {
  }
  EXPECT_GT(time.Seconds(), start);
}

TEST(TimeSource, StoppedMovesOnlyWhenTold) {
  TimeSource time;
  time.SetManual(true);
  const double start = time.Seconds();
  EXPECT_EQ(time.Seconds(), start);
  time.Advance(2.5);
  EXPECT_EQ(time.Seconds(), start + 2.5);
}

// Counted from the start of the system, a step would be rounded to what a double holds beside weeks of
// seconds.
TEST(TimeSource, StepsAreExactHoweverLongTheSystemRuns) {
  TimeSource time;
  time.SetManual(true);
  const double start = time.Seconds();
  time.Advance(0.1);
  EXPECT_NEAR(time.Seconds() - start, 0.1, 1e-15);
}

TEST(TimeSource, NeverRunsBackwards) {
  TimeSource time;
  double last = time.Seconds();
  const auto expectLater = [&] {
    EXPECT_GE(time.Seconds(), last);
    last = time.Seconds();
  };
  time.SetManual(true);
  expectLater();
  time.Advance(1000.0);
  expectLater();
  time.SetManual(false);
  expectLater();
  time.Advance(1000.0);
  expectLater();
  time.SetManual(true);
  expectLater();
}

}  // namespace
}  // namespace simulator
