#include "simulator/Block.h"

#include <algorithm>
#include <limits>

namespace simulator {
namespace {

constexpr std::size_t None = std::numeric_limits<std::size_t>::max();

/// For every node the numbers of its branches, one row after the other.
class Incidence {
 public:
  Incidence(const std::vector<Branch>& branches, std::size_t nodeCount)
      : starts_(nodeCount + 1, 0), entries_(2 * branches.size()) {
    for (const Branch& branch : branches) {
      ++starts_[branch.a + 1];
      ++starts_[branch.b + 1];
    }
    for (std::size_t node = 0; node < nodeCount; ++node) starts_[node + 1] += starts_[node];
    std::vector<std::size_t> next(starts_.begin(), starts_.end() - 1);
    for (std::size_t i = 0; i < branches.size(); ++i) {
      entries_[next[branches[i].a]++] = i;
      entries_[next[branches[i].b]++] = i;
    }
  }

  std::size_t First(Node node) const { return starts_[node]; }
  std::size_t End(Node node) const { return starts_[node + 1]; }
  std::size_t BranchAt(std::size_t position) const { return entries_[position]; }

 private:
  std::vector<std::size_t> starts_;
  std::vector<std::size_t> entries_;
};

/// Depth-first search that enters `b` over the closing branch from `a` and gathers the branches of its block.
/// Keeps its own stack of nodes: a chain of many inner nodes must not exhaust the call stack.
class BlockSearch {
 public:
  BlockSearch(const std::vector<Branch>& branches, std::size_t nodeCount)
      : branches_(branches), incidence_(branches, nodeCount), order_(nodeCount, 0), lowest_(nodeCount, 0) {}

  /// Numbers of the block's branches.
  std::vector<std::size_t> Run(Node a, Node b) {
    order_[a] = lowest_[a] = ++visited_;
    Enter(b, None);
    while (!path_.empty()) {
      Step& step = path_.back();
      if (step.next == incidence_.End(step.node)) {
        Leave();
      } else {
        Follow(step, incidence_.BranchAt(step.next++));
      }
    }
    return std::move(gathered_);
  }

 private:
  struct Step {
    Node node;
    std::size_t over;      ///< branch that led here; None for the closing branch
    std::size_t next;      ///< position in the incidence list
    std::size_t gathered;  ///< size of gathered_ before `over` was added
  };

  void Enter(Node node, std::size_t over) {
    order_[node] = lowest_[node] = ++visited_;
    path_.push_back({node, over, incidence_.First(node), gathered_.size()});
    if (over != None) gathered_.push_back(over);
  }

  void Follow(const Step& step, std::size_t branch) {
    if (branch == step.over) return;
    const Node node = step.node;
    const Node other = branches_[branch].a == node ? branches_[branch].b : branches_[branch].a;
    if (order_[other] == 0) {
      Enter(other, branch);
    } else if (order_[other] < order_[node]) {
      gathered_.push_back(branch);
      lowest_[node] = std::min(lowest_[node], order_[other]);
    }
  }

  void Leave() {
    const Step step = path_.back();
    path_.pop_back();
    if (path_.empty()) return;
    const Node parent = path_.back().node;
    // No way from below leads past the parent: what was gathered below hangs on the parent alone.
    if (lowest_[step.node] >= order_[parent]) gathered_.resize(step.gathered);
    lowest_[parent] = std::min(lowest_[parent], lowest_[step.node]);
  }

  const std::vector<Branch>& branches_;
  Incidence incidence_;
  std::vector<std::size_t> order_;   ///< 1, 2, ... in the order of the visits; 0 not visited
  std::vector<std::size_t> lowest_;  ///< lowest order that the node's subtree reaches
  std::size_t visited_ = 0;
  std::vector<Step> path_;
  std::vector<std::size_t> gathered_;
};

}  // namespace

std::vector<Branch> CurrentCarryingBlock(const std::vector<Branch>& branches, std::size_t nodeCount, Node a,
                                         Node b) {
  const std::vector<std::size_t> found = BlockSearch(branches, nodeCount).Run(a, b);

  std::vector<Node> numbers(nodeCount, None);
  numbers[a] = 0;
  numbers[b] = 1;
  Node next = 2;
  const auto numberOf = [&](Node node) {
    if (numbers[node] == None) numbers[node] = next++;
    return numbers[node];
  };
  std::vector<Branch> block;
  block.reserve(found.size());
  for (const std::size_t i : found) {
    const Branch& branch = branches[i];
    const Node from = numberOf(branch.a);
    block.push_back({from, numberOf(branch.b), branch.siemens, branch.volts});
  }
  return block;
}

}  // namespace simulator
