#include <gtest/gtest.h>

#include <stdexcept>

#include "bench/proof/DescribedDevice.h"
#include "bench/proof/DeviceModel.h"
#include "tests/bench/proof/ProofFixture.h"

namespace kxbench::proof {
namespace {

using testkit::FaultAt;
using testkit::Harness;

class IdealDeviceOf : public testkit::ProofBench {};

TEST_F(IdealDeviceOf, EveryExamplePasses) {
  for (const std::string name : {"trailer-adapter", "crossover-cable", "null-modem-cable", "atx-extension"}) {
    const TShortTestData data(std::string(EXAMPLES_FOLDER) + "/" + name + "/" + name + ".dat");
    EXPECT_FALSE(Finds(data, IdealDevice(data))) << name;
  }
}

TEST_F(IdealDeviceOf, TakesResistancesThatTheExpectationKnows) {
  TShortTestData harness = Harness(4, {{1, 2, 3}});
  harness.SetC(0, 1, CellState::Connected, 7.5);
  const DeviceModel device = IdealDevice(harness);
  ASSERT_EQ(device.resistors.size(), 2U);
  EXPECT_EQ(device.resistors[0].ohm, 7.5);
  EXPECT_EQ(device.resistors[1].ohm, UsualNetOhm);
}

TEST_F(IdealDeviceOf, AFileThatContradictsItselfDoesNotPass) {
  TShortTestData harness = Harness(3, {{1, 2}, {2, 3}});
  EXPECT_TRUE(Finds(harness, IdealDevice(harness)));
}

TEST(DeviceWithFault, HasItsContactsExchanged) {
  const TShortTestData harness = Harness(4, {{1, 2}, {3, 4}});
  const DeviceModel device = WithFault(IdealDevice(harness), FaultAt(FaultClass::Swapped, {2, 3}));
  EXPECT_EQ(DescriptionOf(device), "cards 1\nwire 1 3 0.1\nwire 2 4 0.1\n");
}

TEST(DeviceWithFault, LosesAContact) {
  const TShortTestData harness = Harness(4, {{1, 2}, {3, 4}});
  EXPECT_EQ(DescriptionOf(WithFault(IdealDevice(harness), FaultAt(FaultClass::Open, {2}))),
            "cards 1\nwire 3 4 0.1\n");
}

TEST(DeviceWithFault, HasAJointBeforeItsContact) {
  const TShortTestData harness = Harness(2, {{1, 2}});
  ProofFault joint = FaultAt(FaultClass::HighResistance, {2});
  joint.ohm = 15;
  EXPECT_EQ(DescriptionOf(WithFault(IdealDevice(harness), joint)),
            "cards 1\nnode n0\nwire 1 n0 0.1\nwire 2 n0 15\n");
}

TEST(DescriptionOfADevice, RefusesMoreChannelsThanTheLanguageKnows) {
  const TShortTestData harness = Harness(241, {{1, 241}});
  EXPECT_THROW(DescriptionOf(IdealDevice(harness)), std::length_error);
}

TEST(DescribedDevice, HasWiresAndInsulation) {
  const DeviceModel device =
      DescribedDevice(std::string(EXAMPLES_FOLDER) + "/trailer-adapter/good.device", 48);
  EXPECT_EQ(device.channels, 240U);
  EXPECT_EQ(device.resistors.size(), 7U + 240U);
}

TEST(DescribedDevice, RefusesAChargedOne) {
  EXPECT_THROW(
      DescribedDevice(std::string(EXAMPLES_FOLDER) + "/trailer-adapter/charged-capacitor.device", 48),
      std::runtime_error);
}

}  // namespace
}  // namespace kxbench::proof
