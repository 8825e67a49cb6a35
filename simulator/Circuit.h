#pragma once

#include <cstddef>
#include <vector>

#include "simulator/Branch.h"

namespace simulator {

/// A linear direct-current circuit of resistors and voltage sources, built afresh for every reading: what the
/// closed relays and the device form together at that moment.
///
/// Solved by nodal analysis. Only the part of the circuit that current between the two probed nodes can flow
/// through is looked at (the biconnected block that holds both), so what merely hangs on it costs nothing.
class Circuit {
 public:
  explicit Circuit(std::size_t nodeCount) { Clear(nodeCount); }

  /// Starts over with `nodeCount` nodes and nothing between them.
  void Clear(std::size_t nodeCount);

  /// Makes two nodes one: a connection of 0 Ohm.
  void Join(Node a, Node b);

  /// Whether two nodes are one.
  bool Joined(Node a, Node b) const { return Root(a) == Root(b); }

  /// A resistor of `ohm` between two nodes; 0 joins them. REQUIRES: ohm >= 0.
  void AddResistor(Node a, Node b, double ohm);

  /// A voltage source, `a` positive by `volts` against `b`, with its series resistance.
  /// REQUIRES: seriesOhm > 0.
  void AddSource(Node a, Node b, double volts, double seriesOhm);

  /// Resistance between two nodes in Ohm with every source taken as its series resistance; infinity when
  /// nothing connects them, 0 when they are one.
  double Resistance(Node a, Node b) const;

  /// Voltage of `a` against `b` in volts; 0 when nothing connects them.
  double Voltage(Node a, Node b) const;

 private:
  Node Root(Node node) const;
  std::vector<Branch> Block(Node a, Node b) const;

  mutable std::vector<Node> parents_;  ///< forest of joined nodes; shortened while it is read
  std::vector<Branch> branches_;
};

}  // namespace simulator
