#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>

#include "simulator/DescriptionReader.h"
#include "simulator/Tester.h"
#include "simulator/TimeSource.h"

namespace simulator {

/// Name of a table test's row, for INSTANTIATE_TEST_SUITE_P: the row's own.
template <typename Row>
std::string RowName(const testing::TestParamInfo<Row>& row) {
  return row.param.name;
}

template <typename Row>
concept NamedRow = requires(const Row& row) {
  row.name;
};

/// How the test framework shows a row.
template <NamedRow Row>
void PrintTo(const Row& row, std::ostream* out) {
  *out << row.name;
}

/// A tester with a described device, its clock stopped, spoken to in channels, lines and readings.
class Bench : public testing::Test {
 protected:
  Bench() { time_.SetManual(true); }

  /// Connects the device and closes the auxiliary relays of the first `cards` cards.
  void Connect(const std::string& description, int cards = 1) {
    tester_.emplace(ParseDeviceDescription(description, "device"), time_);
    for (int card = 0; card < cards; ++card) CloseAuxiliaries(card);
  }

  void CloseAuxiliaries(int card) {
    for (const int line : {0, 1}) {
      Write(card, line, 128 + 48 + line);
      Write(card, line, 128 + 50 + line);
    }
  }

  void Write(int card, int line, std::int32_t value) { tester_->BusWrite(128 + 2 * card + line, 0, value); }
  void Close(int channel, int line) { Write((channel - 1) / 48, line, 128 + (channel - 1) % 48); }
  void Open(int channel, int line) { Write((channel - 1) / 48, line, (channel - 1) % 48); }
  void ResetLine(int card, int line) { Write(card, line, 64); }
  void Terminator(bool on) { tester_->RelaySet(0, 0, on ? 1 : 0); }
  void Wait(double seconds) { time_.Advance(seconds); }

  double Reading(int range = 1) { return tester_->AdxRead(10, range, 2); }
  double Volts() { return tester_->AdxRead(8, 2, 20); }

  /// The reading between two channels, whose relays are opened again.
  double Between(int channel0, int channel1, int range = 1) {
    Close(channel0, 0);
    Close(channel1, 1);
    const double reading = Reading(range);
    Open(channel0, 0);
    Open(channel1, 1);
    return reading;
  }

  /// The pending error's text; empty when there is none.
  std::string Error() const {
    const std::string* error = tester_->PendingError();
    return error != nullptr ? *error : std::string();
  }

  TimeSource time_;
  std::optional<Tester> tester_;
};

}  // namespace simulator
