#include "simulator/Circuit.h"

#include <limits>
#include <numeric>

#include "simulator/Block.h"
#include "simulator/NodalAnalysis.h"

namespace simulator {

void Circuit::Clear(std::size_t nodeCount) {
  parents_.resize(nodeCount);
  std::iota(parents_.begin(), parents_.end(), Node{0});
  branches_.clear();
}

Node Circuit::Root(Node node) const {
  while (parents_[node] != node) {
    parents_[node] = parents_[parents_[node]];
    node = parents_[node];
  }
  return node;
}

void Circuit::Join(Node a, Node b) { parents_[Root(a)] = Root(b); }

void Circuit::AddResistor(Node a, Node b, double ohm) {
  if (ohm == 0.0) {
    Join(a, b);
  } else {
    branches_.push_back({a, b, 1.0 / ohm, 0.0});
  }
}

void Circuit::AddSource(Node a, Node b, double volts, double seriesOhm) {
  branches_.push_back({a, b, 1.0 / seriesOhm, volts});
}

std::vector<Branch> Circuit::Block(Node a, Node b) const {
  std::vector<Branch> joined;
  joined.reserve(branches_.size());
  for (Branch branch : branches_) {
    branch.a = Root(branch.a);
    branch.b = Root(branch.b);
    if (branch.a != branch.b) joined.push_back(branch);
  }
  return CurrentCarryingBlock(joined, parents_.size(), Root(a), Root(b));
}

double Circuit::Resistance(Node a, Node b) const {
  if (Joined(a, b)) return 0.0;
  std::vector<Branch> block = Block(a, b);
  if (block.empty()) return std::numeric_limits<double>::infinity();
  for (Branch& branch : block) branch.volts = 0.0;
  return VoltageAcross(block, 1.0);
}

double Circuit::Voltage(Node a, Node b) const {
  if (Joined(a, b)) return 0.0;
  const std::vector<Branch> block = Block(a, b);
  return block.empty() ? 0.0 : VoltageAcross(block, 0.0);
}

}  // namespace simulator
