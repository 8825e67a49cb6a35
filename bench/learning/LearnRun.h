#pragma once

#include <stdexcept>

#include "bench/learning/LearnModule.h"
#include "plugin/data/ShorttestData.h"

namespace kxbench {

/// An expectation file that exists and is not whole. Its text says in one clause what is wrong.
class DamagedExpectation : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The data to learn into: what the file holds, or a new matrix, with what the request says changed. Throws
/// std::invalid_argument when there is neither a file nor a range, DamagedExpectation when what the file
/// holds must not be built upon, and what reading it throws.
TShortTestData PrepareData(const LearnRequest& request);

/// Learns the connected device, reports what will change in the file, and saves it. A cancel, or anything
/// thrown, leaves the file as it was. Every relay is open at the end. Throws std::runtime_error and what
/// hardware, data and user interface throw.
void LearnFile(const LearnRequest& request, LearnSummary& summary);

/// Enters into `summary` what `data` holds: range, nets, suspended and unconnected channels.
void DescribeLearned(const TShortTestData& data, LearnSummary& summary);

}  // namespace kxbench
