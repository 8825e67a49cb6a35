#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "bench/proof/CheckStand.h"
#include "bench/proof/EscapeSearch.h"
#include "bench/proof/FaultPlan.h"
#include "plugin/data/ShorttestData.h"

namespace kxbench::proof::testkit {

/// An expectation over the channels 1 to `channels`, everything open, with the nets given.
inline TShortTestData Harness(std::int32_t channels, const std::vector<std::vector<Channel>>& nets) {
  TShortTestData data(1, channels);
  for (std::int32_t i = 0; i < channels; ++i) {
    for (std::int32_t j = 0; j < i; ++j) data.SetC(i, j, CellState::NotConnected, NoResistance);
  }
  for (const auto& net : nets) {
    for (const Channel a : net) {
      for (const Channel b : net) {
        if (a < b) data.SetC(a - 1, b - 1, CellState::Connected, NoResistance);
      }
    }
  }
  return data;
}

inline ProofFault Short(Channel a, Channel b, double ohm = 0.1) {
  ProofFault fault;
  fault.kind = FaultClass::Short;
  fault.channels = {a, b};
  fault.ohm = ohm;
  return fault;
}

inline ProofFault FaultAt(FaultClass kind, std::vector<Channel> channels) {
  ProofFault fault;
  fault.kind = kind;
  fault.channels = std::move(channels);
  return fault;
}

inline ProofFault Voltage(Channel channel, double volts) {
  ProofFault fault = FaultAt(FaultClass::Voltage, {channel});
  fault.volts = volts;
  return fault;
}

inline bool HasFinding(const CheckOutcome& outcome) {
  for (const std::string& record : outcome.records) {
    if (record.starts_with("fehlende") || record.starts_with("Kurzschluss zw") ||
        record.starts_with("Spannung")) {
      return true;
    }
  }
  return false;
}

/// Checks simulated devices.
class ProofBench : public ::testing::Test {
 protected:
  bool Finds(const TShortTestData& expectation, const DeviceModel& device) {
    return HasFinding(stand.Check(expectation, device));
  }
  bool Finds(const TShortTestData& expectation, const ProofFault& fault) {
    return Finds(expectation, WithFault(IdealDevice(expectation, netOhm), fault));
  }
  Escape Reason(const TShortTestData& expectation, const ProofFault& fault) {
    return ReasonOf(
        fault, expectation, IdealDevice(expectation, netOhm),
        [this](const TShortTestData& changed, const DeviceModel& device) { return Finds(changed, device); });
  }

  CheckStand stand;
  double netOhm = UsualNetOhm;
};

}  // namespace kxbench::proof::testkit
