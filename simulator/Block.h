#pragma once

#include <vector>

#include "simulator/Branch.h"

namespace simulator {

/// The branches that a current between the nodes `a` and `b` can flow through: the biconnected component of
/// the circuit, closed by one more branch from `a` to `b`, that holds this closing branch. What hangs on one
/// node only carries no current and is left out (depth-first search after Hopcroft and Tarjan, 1973).
///
/// The result numbers its nodes anew: `a` is 0, `b` is 1, the others follow without gaps. It is empty when
/// nothing connects the two. REQUIRES: a != b; no branch with both ends on one node; nodes below `nodeCount`.
std::vector<Branch> CurrentCarryingBlock(const std::vector<Branch>& branches, std::size_t nodeCount, Node a,
                                         Node b);

}  // namespace simulator
