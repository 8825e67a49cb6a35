#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "plugin/data/ShorttestData.h"

namespace shorttest {

/// Ohm in a kOhm: the upper threshold is stored in Ohm and edited in kOhm.
inline constexpr double OhmPerKiloOhm = 1000.0;

/// A relay of a card, both counted from 1.
struct TerminatingRelay {
  std::int32_t card;
  std::int32_t relay;
};

/// The parameters of a test as the dialog's controls show them.
struct ShownParameters {
  std::int32_t voltageControl;
  std::int32_t timeoutMs;
  std::int32_t maxError;
  std::int32_t thresholdPosition;       ///< Ohm, rounded
  std::string thresholdText;            ///< Ohm
  std::int32_t upperThresholdMinimum;   ///< kOhm; the upper threshold is not stepped below the lower one
  std::int32_t upperThresholdPosition;  ///< kOhm, rounded
  std::string upperThresholdText;       ///< kOhm; empty when it is not above the lower threshold
  std::optional<TerminatingRelay> terminatingRelay;  ///< no value: both edits are empty
};

/// Converts the parameters. Positions are rounded to the nearest integer, ties to even, and limited to 32
/// bits.
ShownParameters ShowParameters(const TShortTestData& data);

/// Smallest position of the upper threshold (kOhm) for a lower threshold in Ohm: rounded down.
std::int32_t UpperThresholdMinimum(double ohm);

}  // namespace shorttest
