#pragma once

#include <vector>

#include "simulator/Branch.h"

namespace simulator {

/// Volts of node 0 against node 1 while `ampere` flow into the circuit at node 0 and out at node 1; with
/// 1 ampere and no sources, the resistance in Ohm.
///
/// Nodal analysis with node 1 as reference, solved by a sparse LDLT factorisation. Conductances may differ by
/// fifteen orders of magnitude (a joint of 1 mOhm beside an insulation of 1 TOhm).
/// Throws std::runtime_error when the circuit cannot be solved all the same.
/// REQUIRES: the branches connect all nodes, which are numbered without gaps.
double VoltageAcross(const std::vector<Branch>& branches, double ampere);

}  // namespace simulator
