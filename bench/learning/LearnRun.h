#pragma once

#include "bench/learning/LearnModule.h"
#include "plugin/data/ShorttestData.h"

namespace kxbench {

/// The data to learn into: what the file holds, or a new matrix, with what the request says changed. Throws
/// std::invalid_argument when there is neither a file nor a range, and what reading the file throws.
TShortTestData PrepareData(const LearnRequest& request);

/// Learns the connected device and saves the file. A cancel, or anything thrown, leaves the file as it was.
/// Every relay is open at the end. Throws std::runtime_error and what hardware, data and user interface
/// throw.
void LearnFile(const LearnRequest& request, LearnSummary& summary);

/// Enters into `summary` what `data` holds: range, nets, suspended and unconnected channels.
void DescribeLearned(const TShortTestData& data, LearnSummary& summary);

}  // namespace kxbench
