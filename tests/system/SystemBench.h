#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>

#include "plugin/check/ShorttestCheck.h"
#include "plugin/hardware/Timing.h"
#include "plugin/learn/ShorttestLearn.h"
#include "tests/support/FakeFramework.h"
#include "tests/support/FakeTestEnvironment.h"
#include "tests/support/FakeUserInterface.h"

namespace shorttest::testkit {

/// Time that moves only when it is read, and takes the simulated tester's time along.
class SimulatedTime : public Clock {
 public:
  SimulatedTime();
  ~SimulatedTime() override;
  SimulatedTime(const SimulatedTime&) = delete;
  SimulatedTime& operator=(const SimulatedTime&) = delete;

  std::int64_t Counter() override;
  std::int64_t Frequency() override { return 1000; }
  std::uint32_t TickCount() override;

 private:
  void Advance(int milliseconds);

  Clock* before_;
  std::int64_t milliseconds_ = 0;
};

/// The simulated tester with a device, a host and a user who does nothing unless told.
class SystemBench : public ::testing::Test {
 protected:
  SystemBench();
  ~SystemBench() override;

  /// Connects a device; fails the test when the description is unusable.
  void Connect(const std::string& description);

  /// Learns the connected device into `data`.
  void Learn(TShortTestData& data);

  /// Checks the connected device and returns the records, each ended by a line feed.
  std::string Check(const TShortTestData& data);

  /// Whether no relay of the tester is closed, no terminating resistor on, and no error text held back.
  static ::testing::AssertionResult TesterIsSafe();

  /// The progress function of Learn.
  static bool Progressed(double position);
  static inline int progressCalls = 0;
  static inline int stopFrom = 0;  ///< progress answers true from this call on; 0: never

  CallLog log;
  FakeUserInterface ui{log};
  FakeTestEnvironment environment{log};
  MessageRecorder host{log};
  SimulatedTime time;
};

/// Number of error records among the records of a check.
int Findings(const std::string& records);

}  // namespace shorttest::testkit
