#include <chrono>

#include "plugin/hardware/Timing.h"
#include "tests/support/Bench.h"

namespace shorttest::testkit {
namespace {

struct Target {
  const char* name;
  std::int64_t counter;
  std::int64_t frequency;
  double seconds;
  std::int64_t target;  // the first counter value at which the wait is over
};

class DelayTarget : public Bench, public ::testing::WithParamInterface<Target> {};

TEST_P(DelayTarget, IsTheNearestCountTiesToEven) {
  clock.counter = GetParam().counter;
  clock.frequency = GetParam().frequency;
  clock.counterStep = 1;
  DelaySeconds(GetParam().seconds);
  // The counter moves by one with every read, so it now stands one past the value that ended the wait. It
  // was read once for the start, so a target at the start itself ends with the read after it.
  const std::int64_t ended = clock.counter - 1;
  EXPECT_EQ(ended, std::max(GetParam().target, GetParam().counter + 1));
}

INSTANTIATE_TEST_SUITE_P(
    Counts, DelayTarget,
    ::testing::Values(Target{"Whole", 100, 1000, 0.025, 125}, Target{"Below", 100, 1000, 0.0254, 125},
                      Target{"Above", 100, 1000, 0.0256, 126}, Target{"TieDown", 100, 1000, 0.0045, 104},
                      Target{"TieUp", 101, 1000, 0.0045, 106}, Target{"TieOnHalves", 10, 4, 0.625, 12},
                      Target{"TieOnHalvesUp", 10, 4, 0.875, 14}, Target{"NegativeCounter", -10, 4, 0.625, -8},
                      Target{"NothingToWaitFor", 50, 1000, 0.0, 50},
                      Target{"OneMillisecondOfTenMegahertz", 7, 10'000'000, 0.001, 10'007}),
    [](const auto& row) { return row.param.name; });

class TimingTest : public Bench {};

TEST_F(TimingTest, SpinsOnTheCounterUntilTheTargetIsReached) {
  clock.counter = 1000;
  clock.frequency = 1'000'000;
  clock.counterStep = 300;
  DelaySeconds(0.001);  // 1000 is read for the start, then 1300, 1600, 1900 and 2200, which is enough
  EXPECT_EQ(clock.counterReads, 5);
  EXPECT_EQ(clock.frequencyReads, 1);
  EXPECT_EQ(clock.tickReads, 0);
}

TEST_F(TimingTest, EndsAtTheTargetItself) {
  clock.counter = 1000;
  clock.counterStep = 500;
  DelaySeconds(0.001);
  EXPECT_EQ(clock.counterReads, 3);
}

TEST_F(TimingTest, PerfCounterNowIsTheCounter) {
  clock.counter = 0x7FFF'0000'1234'5678;
  clock.counterStep = 0;
  EXPECT_EQ(PerfCounterNow(), 0x7FFF'0000'1234'5678);
}

TEST_F(TimingTest, SetClockHandsBackTheOneBefore) {
  FakeClock other;
  EXPECT_EQ(&ActiveClock(), &other);
  EXPECT_EQ(SetClock(&clock), &other);
  EXPECT_EQ(&ActiveClock(), &clock);
}

TEST(SystemClockTest, IsInForceUnlessReplaced) {
  EXPECT_EQ(SetClock(nullptr), nullptr);
  EXPECT_NE(dynamic_cast<SystemClock*>(&ActiveClock()), nullptr);
}

TEST(SystemClockTest, AMillisecondIsAtLeastAMillisecond) {
  const auto start = std::chrono::steady_clock::now();
  DelaySeconds(0.001);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1));
}

// The counter is read before and after each tick, so that a machine that is busy in between proves nothing.
TEST(SystemClockTest, TicksAreMillisecondsOfTheSameTime) {
  SystemClock system;
  ASSERT_GT(system.Frequency(), 0);
  const auto milliseconds = [&](std::int64_t from, std::int64_t to) {
    return 1000.0 * static_cast<double>(to - from) / static_cast<double>(system.Frequency());
  };
  const std::int64_t beforeFirst = system.Counter();
  const std::uint32_t first = system.TickCount();
  const std::int64_t behindFirst = system.Counter();
  DelaySeconds(0.02);
  const std::int64_t beforeSecond = system.Counter();
  const std::uint32_t second = system.TickCount();
  const std::int64_t behindSecond = system.Counter();

  constexpr double Resolution = 20.0;  // the system's ticks may be 16 ms apart
  const auto ticks = static_cast<std::int32_t>(second - first);
  EXPECT_GE(milliseconds(behindFirst, beforeSecond), 20.0);
  EXPECT_GE(ticks, milliseconds(behindFirst, beforeSecond) - Resolution);
  EXPECT_LE(ticks, milliseconds(beforeFirst, behindSecond) + Resolution);
}

}  // namespace
}  // namespace shorttest::testkit
