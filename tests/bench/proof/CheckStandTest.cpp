#include <gtest/gtest.h>

#include "bench/proof/CheckStand.h"
#include "tests/bench/proof/ProofFixture.h"

namespace kxbench::proof {
namespace {

using testkit::Harness;

using CheckOnTheStand = testkit::ProofBench;

TEST_F(CheckOnTheStand, SendsTheRecordsOfTheCheck) {
  const TShortTestData harness = Harness(4, {{1, 3}, {2, 4}});
  const DeviceModel shorted = WithFault(IdealDevice(harness), testkit::Short(3, 4));
  EXPECT_EQ(stand.Check(harness, shorted).records,
            (std::vector<std::string>{"Verbindungstest|2|2||2||",
                                      "Kurzschluss zwischen (1, 3) und (2, 4)|10|0.1|Ohm|100000000000001|0|",
                                      "Kurzschlusstest|0|1||0||"}));
}

TEST_F(CheckOnTheStand, CountsTheWaitsThatARealTesterNeeds) {
  // Connection pass: two relays open. Voltages: one for each channel but the first. Isolation: each channel's
  // net leaves the bundle, and the channel leaves line 0.
  const TShortTestData harness = Harness(3, {{1, 2}});
  const int releases = 2 + 2 + (2 + 1) + (2 + 1) + (1 + 1);
  EXPECT_DOUBLE_EQ(stand.Check(harness, IdealDevice(harness)).seconds, releases / 1000.0);
}

TEST_F(CheckOnTheStand, SaysWhyACheckCannotBeCarriedOut) {
  TShortTestData harness = Harness(2, {{1, 2}});
  harness.Schwelle = 0;
  EXPECT_NE(stand.Check(harness, IdealDevice(harness)).failure, "");
  harness.Schwelle = 10;
  EXPECT_EQ(stand.Check(harness, IdealDevice(harness)).failure, "");
}

TEST_F(CheckOnTheStand, WaitsForACapacitorWithoutTime) {
  TShortTestData harness = Harness(4, {{1, 2}, {3, 4}});
  harness.Timeout = 5000;
  ProofFault fault = testkit::Voltage(3, 12);
  EXPECT_TRUE(Finds(harness, fault)) << "a source that stays";
  fault.tauSeconds = 0.5;
  EXPECT_FALSE(Finds(harness, fault)) << "1.4 seconds";
  fault.tauSeconds = 2.0;
  EXPECT_TRUE(Finds(harness, fault)) << "5.7 seconds";
}

}  // namespace
}  // namespace kxbench::proof
