#pragma once

#include <vector>

#include "bench/diagnosis/Fault.h"
#include "bench/diagnosis/Overlap.h"

namespace kxbench::diagnosis {

/// The explanations of one component by two faults that hide each other, each giving the measured nets
/// exactly: a break and a short circuit, or an exchange of two contacts and one more fault. At most
/// MaxExplanations; none when there is none.
/// REQUIRES: no single fault explains the component.
std::vector<Explanation> FaultPairs(const Overlap& component);

}  // namespace kxbench::diagnosis
