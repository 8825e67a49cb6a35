#pragma once

#include <cstddef>
#include <vector>

#include "bench/diagnosis/Nets.h"

namespace kxbench::diagnosis {

/// What one expected and one measured net have in common: an edge of the graph of nets.
struct Piece {
  std::size_t expected;  ///< index of the expected net
  std::size_t measured;  ///< index of the measured net
  Net channels;          ///< ascending, never empty
};

/// Expected and measured nets over the same channels, with their common pieces.
///
/// To come from the expected nets to the measured ones by breaking and joining alone, every expected net is
/// broken into its pieces (Opens) and these are joined to the measured nets (Shorts). No shorter way of that
/// kind exists, because each step makes one net more or one less.
struct Overlap {
  Nets expected;
  Nets measured;
  std::vector<Piece> pieces;

  std::size_t Opens() const { return pieces.size() - expected.size(); }
  std::size_t Shorts() const { return pieces.size() - measured.size(); }
  bool Agrees() const { return pieces.size() == expected.size() && pieces.size() == measured.size(); }
};

/// The components of the bipartite graph of expected and measured nets, by their first channel. Nets of
/// different components have nothing to do with one another. Takes O(n log n) for n channels.
/// REQUIRES: both partitions hold the same channels.
std::vector<Overlap> Components(const Nets& expected, const Nets& measured);

}  // namespace kxbench::diagnosis
