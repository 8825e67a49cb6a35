#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/learning/MeasureRun.h"
#include "framework/kxcomponents.h"
#include "tests/bench/program/TemporaryFolder.h"
#include "tests/support/Bench.h"
#include "tests/support/FakeUserInterface.h"

namespace kxbench {
namespace {

using shorttest::testkit::FakeUserInterface;
using testing::ElementsAre;
using testing::IsEmpty;

/// A device at the bench, and an expectation of channels 1 to 5 with 1-5 connected and the rest open.
class MeasuringADevice : public shorttest::testkit::Bench {
 protected:
  void SetUp() override {
    SetApplication(&ui);
    clock.ticksStep = 500;
    for (std::int32_t i = 1; i < 5; ++i) {
      for (std::int32_t j = 0; j < i; ++j) expected.SetC(i, j, CellState::NotConnected, NoResistance);
    }
    expected.SetC(4, 0, CellState::Connected, NoResistance);
  }
  void TearDown() override {
    SetApplication(nullptr);
    EXPECT_TRUE(driver.AllRelaysOpen());
    EXPECT_EQ(ui.Dialogs(), 0);
    Bench::TearDown();
  }

  MeasureSummary Measure() {
    expected.SaveExpectationFile(File());
    const std::string before = folder.Read("harness.dat");
    MeasureSummary summary;
    MeasureDevice(File(), summary);
    EXPECT_EQ(folder.Read("harness.dat"), before) << "the expectation stays as it is";
    return summary;
  }

  std::string File() const { return (folder.Path() / "harness.dat").string(); }

  TemporaryFolder folder;
  FakeUserInterface ui{log};
  TShortTestData expected{1, 5};
};

TEST_F(MeasuringADevice, TellsItsNets) {
  driver.Wire(1, 5, 0.4);
  driver.Wire(2, 3, 0.7);
  const MeasureSummary summary = Measure();
  EXPECT_EQ(summary.end, MeasureEnd::Measured);
  EXPECT_THAT(summary.nets, ElementsAre(ElementsAre(1, 5), ElementsAre(2, 3)));
  EXPECT_THAT(summary.unconnected, ElementsAre(4));
  ASSERT_EQ(summary.resistances.size(), 2U) << "of what is connected or should be";
  EXPECT_EQ(summary.resistances[1].lower, 2);
  EXPECT_EQ(summary.resistances[1].higher, 3);
  EXPECT_EQ(summary.resistances[1].ohm, 0.7);
}

TEST_F(MeasuringADevice, LeavesPairsOutOfWhichTheExpectationSaysNothing) {
  driver.Wire(1, 5, 0.4);
  driver.Wire(2, 3, 0.7);
  expected.SetC(2, 1, CellState::Unknown, NoResistance);
  EXPECT_THAT(Measure().nets, ElementsAre(ElementsAre(1, 5)));
}

TEST_F(MeasuringADevice, LeavesSuspendedChannelsOut) {
  driver.Wire(1, 5, 0.4);
  driver.Wire(2, 3, 0.7);
  expected.SuspendChannel(2, 0.0);
  const MeasureSummary summary = Measure();
  EXPECT_EQ(summary.end, MeasureEnd::Measured);
  EXPECT_THAT(summary.nets, ElementsAre(ElementsAre(1, 5)));
  EXPECT_THAT(summary.unconnected, ElementsAre(2, 4));
}

TEST_F(MeasuringADevice, EndsAtAVoltage) {
  driver.Wire(1, 5, 0.4);
  driver.Live(4, 12.0);
  const MeasureSummary summary = Measure();
  EXPECT_EQ(summary.end, MeasureEnd::Charged);
  ASSERT_EQ(summary.charged.size(), 1U);
  EXPECT_EQ(summary.charged[0].channel, 4);
  EXPECT_EQ(summary.charged[0].volts, 12.0);
  EXPECT_THAT(summary.nets, IsEmpty());
}

TEST_F(MeasuringADevice, RefusesChannelsThatTheTesterLacks) {
  expected.SetVonBis(1, 500);
  expected.SaveExpectationFile(File());
  MeasureSummary summary;
  EXPECT_THROW(MeasureDevice(File(), summary), std::runtime_error);
}

}  // namespace
}  // namespace kxbench
