#include <gtest/gtest.h>

#include "bench/proof/EscapeSearch.h"
#include "tests/bench/proof/ProofFixture.h"

namespace kxbench::proof {
namespace {

using testkit::Harness;
using testkit::Short;
using testkit::Voltage;

class ReasonOfAnEscape : public testkit::ProofBench {
 protected:
  ReasonOfAnEscape() { harness.Timeout = 20; }

  void ExpectEscape(const ProofFault& fault, EscapeReason reason) {
    ASSERT_FALSE(Finds(harness, fault));
    EXPECT_EQ(ReasonWord(Reason(harness, fault).reason), ReasonWord(reason));
  }

  TShortTestData harness = Harness(6, {{1, 4}, {2, 5}});
};

TEST_F(ReasonOfAnEscape, ExcludedPairs) {
  for (const auto& [a, b] : {std::pair{0, 1}, {0, 4}, {3, 1}, {3, 4}}) {
    harness.SetC(a, b, CellState::ExcludedPair, NoResistance);
  }
  ExpectEscape(Short(4, 5), EscapeReason::Excluded);
  EXPECT_TRUE(Finds(harness, Short(4, 6)));
}

TEST_F(ReasonOfAnEscape, UnknownPair) {
  harness.SetC(2, 5, CellState::Unknown, NoResistance);
  ExpectEscape(Short(3, 6), EscapeReason::Unknown);
}

TEST_F(ReasonOfAnEscape, StateThatDoesNotExist) {
  harness.SetC(2, 5, static_cast<CellState>(234), NoResistance);
  ExpectEscape(Short(3, 6), EscapeReason::Unknown);
}

TEST_F(ReasonOfAnEscape, SuspendedChannel) {
  harness.SuspendChannel(2, 5.0);
  ExpectEscape(Short(3, 6), EscapeReason::Suspended);
  ExpectEscape(Short(4, 3), EscapeReason::Suspended);
  ExpectEscape(Voltage(3, 12), EscapeReason::Suspended);
}

TEST_F(ReasonOfAnEscape, TwoSuspendedChannels) {
  harness.SuspendChannel(2, 5.0);
  harness.SuspendChannel(5, 5.0);
  ExpectEscape(Short(3, 6), EscapeReason::Suspended);
}

TEST_F(ReasonOfAnEscape, ErrorLimitOfNone) {
  harness.MaxError = 0;
  ExpectEscape(Short(4, 5), EscapeReason::ErrorLimit);
  ExpectEscape(Voltage(6, 12), EscapeReason::ErrorLimit);
}

TEST_F(ReasonOfAnEscape, ErrorLimitOfOneHidesNothing) {
  harness.MaxError = 1;
  EXPECT_TRUE(Finds(harness, Short(4, 5)));
  EXPECT_TRUE(Finds(harness, Voltage(6, 12)));
}

TEST_F(ReasonOfAnEscape, VoltageControlOff) {
  harness.U_Control = 0;
  ExpectEscape(Voltage(6, 12), EscapeReason::VoltageControlOff);
}

TEST_F(ReasonOfAnEscape, SeveralReasonsNameTheFirstThatIsNeeded) {
  harness.SetC(2, 5, CellState::ExcludedPair, NoResistance);
  harness.MaxError = 0;
  ExpectEscape(Short(3, 6), EscapeReason::Excluded);
}

TEST_F(ReasonOfAnEscape, ThresholdWithTheResistanceThatWouldBeFound) {
  netOhm = 0.1;
  const ProofFault fault = Short(4, 5, 9.95);  // and 0.1 Ohm of each net that it is measured through
  ExpectEscape(fault, EscapeReason::Threshold);
  const auto ohm = Reason(harness, fault).ohm;
  ASSERT_TRUE(ohm);
  EXPECT_NEAR(*ohm, 9.8, 0.01);
  EXPECT_EQ(RemedyFor(Reason(harness, fault)), "move the threshold: found once the fault has 9.79 Ohm");
}

TEST_F(ReasonOfAnEscape, ThresholdUnderAJoint) {
  ProofFault joint = testkit::FaultAt(FaultClass::HighResistance, {4});
  joint.ohm = 5;
  ExpectEscape(joint, EscapeReason::Threshold);
  EXPECT_NEAR(*Reason(harness, joint).ohm, 9.9, 0.01);
}

TEST_F(ReasonOfAnEscape, NetsOfNineOhmUnderAThresholdOfTen) {
  netOhm = 9;
  EXPECT_TRUE(Finds(harness, Short(4, 6))) << "9.1 Ohm";
  ExpectEscape(Short(4, 6, 9), EscapeReason::Threshold);
  EXPECT_NEAR(*Reason(harness, Short(4, 6, 9)).ohm, 1, 0.01);
}

TEST_F(ReasonOfAnEscape, ShortBetweenTheFarEndsOfNetsOfNineOhm) {
  netOhm = 9;
  ExpectEscape(Short(4, 5), EscapeReason::Limits);
  EXPECT_EQ(Reason(harness, Short(4, 5)).limit, FarEndLimit);
  EXPECT_TRUE(Finds(harness, Short(1, 2))) << "the near ends";
}

TEST_F(ReasonOfAnEscape, VoltagesThatTheProcedureCannotSee) {
  ExpectEscape(Voltage(1, 12), EscapeReason::Limits);
  EXPECT_EQ(Reason(harness, Voltage(1, 12)).limit, PositiveFirstLimit);
  ExpectEscape(Voltage(6, -12), EscapeReason::Limits);
  EXPECT_EQ(Reason(harness, Voltage(6, -12)).limit, NegativeLimit);
}

TEST_F(ReasonOfAnEscape, RelaysThatTheProcedureCannotSee) {
  ProofFault relay = testkit::FaultAt(FaultClass::Tester, {6});
  relay.line = 1;
  ExpectEscape(relay, EscapeReason::Limits);
  EXPECT_EQ(Reason(harness, relay).limit, NeverClosesLimit);
  relay.staysClosed = true;
  ASSERT_FALSE(Finds(harness, relay));
  EXPECT_EQ(Reason(harness, relay).limit, NeverOpensLimit);
}

TEST_F(ReasonOfAnEscape, ChannelOutsideTheRange) {
  ExpectEscape(Short(4, 20), EscapeReason::NotInExpectation);
}

TEST_F(ReasonOfAnEscape, SensitivityIsTheTurningPointOfTheCheck) {
  const auto finds = [this](const TShortTestData& expectation, const DeviceModel& device) {
    return Finds(expectation, device);
  };
  const DeviceModel device = IdealDevice(harness);
  EXPECT_NEAR(LargestJoint(4, harness, device, finds).value(), 9.9, 0.01);
  EXPECT_NEAR(SmallestInsulation(4, 6, harness, device, finds).value(), 9.9, 0.01);
  harness.SetC(3, 5, CellState::ExcludedPair, NoResistance);
  harness.SetC(0, 5, CellState::ExcludedPair, NoResistance);
  EXPECT_EQ(SmallestInsulation(4, 6, harness, device, finds), std::nullopt);
}

TEST(TurningPoint, IsFoundToAThousandth) {
  EXPECT_NEAR(TurningPoint(1e-3, 1e12, true, [](double ohm) { return ohm < 42; }).value(), 42, 0.05);
  EXPECT_NEAR(TurningPoint(1e-3, 1e12, false, [](double ohm) { return ohm > 42; }).value(), 42, 0.05);
  EXPECT_EQ(TurningPoint(1, 10, true, [](double) { return true; }), std::nullopt);
  EXPECT_EQ(TurningPoint(1, 10, true, [](double) { return false; }), std::nullopt);
}

}  // namespace
}  // namespace kxbench::proof
