#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "bench/proof/NetworkTester.h"
#include "simulator/DescriptionReader.h"
#include "simulator/Tester.h"
#include "tests/bench/proof/ProofFixture.h"

namespace kxbench::proof {
namespace {

using testkit::FaultAt;
using testkit::Harness;
using testkit::Short;

/// Both testers at once: every call goes to both, and every reading must be the same.
class TwinTester : public Driver {
 public:
  TwinTester(const DeviceModel& device, HeldClock& clock)
      : clock_(clock),
        network_(device, clock),
        plain_(simulator::ParseDeviceDescription(DescriptionOf(device), "device"), StoppedTime()) {}

  void BusWrite(std::int32_t address, std::int32_t value) override {
    Catch();
    network_.BusWrite(address, value);
    plain_.BusWrite(address, 0, value);
  }
  void RelaySet(std::int32_t card, std::int32_t relay, std::int32_t state) override {
    Catch();
    network_.RelaySet(card, relay, state);
    plain_.RelaySet(card, relay, state);
  }
  std::int32_t MsuWriteRelay(std::int32_t relay) override { return network_.MsuWriteRelay(relay); }
  double AdxRead(std::int32_t function, std::int32_t range) override {
    Catch();
    const double reading = network_.AdxRead(function, range);
    const double plain = plain_.AdxRead(function, range, function == 8 ? 20 : 2);
    EXPECT_NEAR(reading, plain, 1e-9 * std::max(1.0, std::abs(plain))) << "function " << function;
    ++readings;
    return reading;
  }
  std::optional<std::string> PendingError() const override { return network_.PendingError(); }
  bool HasPendingError() const override {
    EXPECT_EQ(network_.HasPendingError(), plain_.PendingError() != nullptr);
    return network_.HasPendingError();
  }
  void DeletePendingError() override {
    network_.DeletePendingError();
    plain_.DeletePendingError();
  }

  int readings = 0;

 private:
  const simulator::TimeSource& StoppedTime() {
    time_.SetManual(true);
    return time_;
  }
  /// Takes the simulator's time along with the held one.
  void Catch() {
    time_.Advance(clock_.Seconds() - caught_);
    caught_ = clock_.Seconds();
  }

  HeldClock& clock_;
  simulator::TimeSource time_;
  double caught_ = 0;
  NetworkTester network_;
  simulator::Tester plain_;
};

class NetworkTesterReads : public testkit::ProofBench {
 protected:
  void ExpectTheSame(const TShortTestData& expectation, const DeviceModel& device) {
    HeldClock clock(CheckStand::TickStep_ms(expectation));
    TwinTester twin(device, clock);
    const CheckOutcome outcome = stand.CheckWith(expectation, clock, twin);
    EXPECT_EQ(outcome.failure, "");
    EXPECT_GT(twin.readings, 0);
    EXPECT_EQ(outcome.records, stand.Check(expectation, device).records);
  }
};

TEST_F(NetworkTesterReads, WhatTheSimulatorReadsOfEveryFault) {
  TShortTestData harness = Harness(8, {{1, 4, 7}, {2, 5}});
  harness.Timeout = 20;
  PlanOptions options;
  options.testerFaults = true;
  const FaultPlan plan = PlanFaults(harness, options);
  for (const ProofFault& fault : plan.faults) {
    SCOPED_TRACE(FaultWords(fault));
    ExpectTheSame(harness, WithFault(IdealDevice(harness), fault));
  }
  for (const ProofFault& fault : plan.mustPass) {
    SCOPED_TRACE(FaultWords(fault));
    ExpectTheSame(harness, WithFault(IdealDevice(harness), fault));
  }
}

// Small numbers of nodes give every shape: loops, chains, parts that hang on one node, parts side by side.
TEST_F(NetworkTesterReads, WhatTheSimulatorReadsOfRandomNetworks) {
  std::mt19937_64 random(1);
  const TShortTestData harness = Harness(12, {{1, 2, 3}, {4, 5, 6, 7}, {8, 9}});
  for (int round = 0; round < 60; ++round) {
    SCOPED_TRACE(round);
    DeviceModel device = IdealDevice(harness);
    for (std::uint64_t i = random() % 12; i > 0; --i) {
      const std::size_t a = random() % 12;
      const std::size_t b = random() % 3 == 0 ? device.nodes - 1 : random() % 12;
      const double ohm =
          random() % 8 == 0 ? 0.0 : std::pow(10.0, static_cast<double>(random() % 60) / 10 - 2);
      if (a != b) device.resistors.push_back({a, b, ohm});
    }
    if (random() % 3 == 0) device.contactOhm = 0.25;
    if (random() % 2 == 0) device.sources.push_back({random() % 12, 5, 0.01, 100});
    ExpectTheSame(harness, device);
  }
}

TEST_F(NetworkTesterReads, WhatTheSimulatorReadsOfAnInsulatedDevice) {
  const TShortTestData harness = Harness(6, {{1, 4}, {2, 5}});
  DeviceModel device = IdealDevice(harness);
  const std::size_t housing = device.nodes++;
  for (std::size_t channel = 0; channel < 6; ++channel) device.resistors.push_back({channel, housing, 50e6});
  device.sources.push_back({3, 12, std::numeric_limits<double>::infinity(), 0.1});
  ExpectTheSame(harness, device);
}

TEST_F(NetworkTesterReads, CardsThatTheSimulatorDoesNotHave) {
  const TShortTestData harness = Harness(300, {{1, 300}, {241, 299}});
  EXPECT_FALSE(Finds(harness, IdealDevice(harness)));
  EXPECT_TRUE(Finds(harness, Short(299, 300)));
  EXPECT_TRUE(Finds(harness, FaultAt(FaultClass::Open, {299})));
}

TEST(NetworkTester, KnowsTheCardsThatItHas) {
  DeviceModel device;
  device.channels = device.nodes = 48;
  HeldClock clock(1);
  NetworkTester tester(device, clock);
  tester.BusWrite(128, 128);
  EXPECT_FALSE(tester.HasPendingError());
  tester.BusWrite(130, 128);
  EXPECT_EQ(tester.PendingError(), "relay card 2 does not answer");
}

}  // namespace
}  // namespace kxbench::proof
