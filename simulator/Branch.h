#pragma once

#include <cstddef>

namespace simulator {

/// Number of a node of a circuit, from 0.
using Node = std::size_t;

/// A conductance between two nodes, in series with a voltage source that makes `a` positive against `b` (0 V:
/// a plain resistor).
struct Branch {
  Node a;
  Node b;
  double siemens;
  double volts;
};

}  // namespace simulator
