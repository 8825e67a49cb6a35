#pragma once

#include "bench/proof/SelfTestReadings.h"

namespace kxbench {

/// Measures `ways` and `wiredToShorted` of `readings`, of which the rest has been measured: what a wire
/// between two cards needs when a relay at each of its ends has a defect, or one of the cards has its lines
/// connected. Where there is none of that, nothing is measured.
void MeasureWays(const TestedCards& cards, const SelfTestProgress& progress, TesterReadings& readings);

}  // namespace kxbench
