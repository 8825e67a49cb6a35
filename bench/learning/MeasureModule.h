#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bench/learning/LearnModule.h"

/// The second entry of the learn module: measures the connected device as learning does, and saves nothing.

namespace kxbench {

/// Resistance between two channels that are connected, or should be.
struct MeasuredResistance {
  std::int32_t lower;  ///< channel numbers
  std::int32_t higher;
  double ohm;
};

enum class MeasureEnd {
  Measured,
  Charged,    ///< a channel carries a voltage: see `charged`; the nets are not given
  Cancelled,  ///< by the user
  Failed,     ///< see `failure`
};

struct MeasureSummary {
  MeasureEnd end = MeasureEnd::Failed;
  std::string failure;  ///< one line or more, UTF-8

  /// Channels in use of the expectation, ascending in each net: what is connected, as far as the expectation
  /// says of the pairs whether they should be. Excluded and unknown pairs connect nothing by themselves.
  std::vector<std::vector<std::int32_t>> nets;
  std::vector<std::int32_t> unconnected;
  std::vector<SuspendedChannel> charged;  ///< channels that carry a voltage and that the file has in use
  std::vector<MeasuredResistance> resistances;
};

}  // namespace kxbench

extern "C" {

/// Measures the device against the channels, thresholds, excluded pairs and suspended channels of the
/// expectation file `file` (UTF-8), which stays as it is. Shows its progress and asks its questions through
/// Application(). Every relay is open when it returns. Never throws.
KX_LEARN_MODULE_API void kxMeasure(const std::string& file, kxbench::MeasureSummary& summary);

}  // extern "C"

using KxMeasure = void (*)(const std::string& file, kxbench::MeasureSummary& summary);
inline constexpr char KxMeasureName[] = "kxMeasure";
