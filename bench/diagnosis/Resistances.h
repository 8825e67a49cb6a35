#pragma once

#include <vector>

#include "bench/diagnosis/Diagnosis.h"

namespace kxbench::diagnosis {

/// Resistances by pair of channels.
class ResistanceTable {
 public:
  explicit ResistanceTable(std::vector<PairResistance> resistances);

  /// The smallest resistance between a channel of `a` and one of `b`; none when none is known.
  std::optional<double> Smallest(const Net& a, const Net& b) const;

 private:
  std::vector<PairResistance> pairs_;  // a < b, ascending
};

/// Adds to opens and shorts what was measured across them, and to shorts the contacts that are closest.
void AddEvidence(const ResistanceTable& resistances, const std::map<Channel, wiring::Contact>& contacts,
                 Explanation& explanation);

/// The connected pairs whose resistance is more than a tenth of the lower threshold above the expected one,
/// where one is known.
std::vector<Fault> HighResistances(const Observation& observation, const Nets& measured);

}  // namespace kxbench::diagnosis
