#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "bench/proof/ProofFault.h"
#include "plugin/data/ShorttestData.h"

namespace kxbench::proof {

/// Of swapped and of misplaced contacts no more than this many are simulated.
inline constexpr std::size_t LargestSample = 20000;

struct PlanOptions {
  std::uint64_t seed = 1;     ///< of the samples
  bool testerFaults = false;  ///< the tester's relays, too
  std::size_t largestSample = LargestSample;
};

/// What a proof simulates.
struct FaultPlan {
  std::vector<ProofFault> faults;            ///< by class, then by channels
  std::vector<ProofFault> mustPass;          ///< capacitors that discharge within half of the waiting time
  std::map<FaultClass, std::size_t> totals;  ///< faults of each class that there are, sampled or not
};

/// Every single fault of the device that `expectation` describes. Channels that belong to no net are nets of
/// their own, suspended ones among them. Of a net the highest contact stands for the others: it is farthest
/// from the one that a check measures the net from.
FaultPlan PlanFaults(const TShortTestData& expectation, const PlanOptions& options);

}  // namespace kxbench::proof
