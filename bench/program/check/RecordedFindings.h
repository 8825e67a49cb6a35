#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bench/diagnosis/Nets.h"
#include "bench/program/host/Record.h"

namespace kxbench {

struct RecordedBreak {
  diagnosis::Channel lower;
  diagnosis::Channel higher;
  std::optional<double> ohm;  ///< none where nothing was measured
};

/// "Kurzschluss zwischen (net) und (others)", sent once for each channel of the net that lies below the first
/// of the others and is connected with them.
struct RecordedShort {
  diagnosis::Net net;
  diagnosis::Net others;
  std::optional<double> ohm;
  std::size_t times = 1;
};

struct RecordedVoltage {
  diagnosis::Channel channel;
  double volts;
};

/// The findings of one check, out of its records.
struct RecordedFindings {
  std::vector<RecordedBreak> breaks;  ///< in their order
  std::vector<RecordedShort> shorts;  ///< each once
  std::vector<RecordedVoltage> voltages;
  bool aborted = false;   ///< at the limit of findings
  bool finished = false;  ///< the last record of a check is there
};

/// Reads them. Throws Failure for a record that cannot be understood.
RecordedFindings FindingsIn(const std::vector<Record>& records);

}  // namespace kxbench
