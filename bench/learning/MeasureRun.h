#pragma once

#include "bench/learning/MeasureModule.h"
#include "plugin/data/ShorttestData.h"

namespace kxbench {

/// Measures the connected device with a copy of what the expectation file holds. Every relay is open at the
/// end. Throws std::runtime_error and what hardware, data and user interface throw.
void MeasureDevice(const std::string& file, MeasureSummary& summary);

/// Enters into `summary` what was measured. REQUIRES: both matrices have the same range.
void DescribeMeasured(const TShortTestData& expected, const TShortTestData& measured,
                      MeasureSummary& summary);

}  // namespace kxbench
