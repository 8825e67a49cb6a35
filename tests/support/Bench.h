#pragma once

#include <gtest/gtest.h>

#include "plugin/hardware/Bus.h"
#include "tests/support/CallLog.h"
#include "tests/support/ExpectedCalls.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeDriver.h"

namespace shorttest::testkit {

/// A test at a bench with a fake tester and a fake clock. Whatever a test does, the driver's texts must all
/// have been given back at its end.
class Bench : public ::testing::Test {
 protected:
  void TearDown() override {
    EXPECT_EQ(driver.OutstandingTexts(), 0);
    EXPECT_EQ(driver.ForeignFrees(), 0);
  }

  CallLog log;
  FakeClock clock{&log};
  FakeDriver driver{log};
};

/// Runs `action` and returns the message of the TShortTestHWException that it throws; "" when it throws none.
template <typename Action>
std::string HardwareErrorOf(Action action) {
  try {
    action();
  } catch (const TShortTestHWException& error) {
    return error.what();
  }
  return "";
}

}  // namespace shorttest::testkit
