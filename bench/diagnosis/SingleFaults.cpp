#include "bench/diagnosis/SingleFaults.h"

#include <algorithm>
#include <iterator>

namespace kxbench::diagnosis {

namespace {

bool SmallerPiece(const Net& a, const Net& b) { return a.size() != b.size() ? a.size() < b.size() : a < b; }

Fault OpenFault(const Net& off, const Net& left, const Net& net) {
  Fault fault;
  fault.kind = FaultKind::Open;
  fault.channels = off;
  fault.pieces = {off, left};
  fault.nets = {net};
  return fault;
}

/// One expected net in several pieces: the biggest stays, the others came off. Of several biggest ones any
/// may be what stays.
std::vector<Explanation> Opens(const Net& net, Nets pieces) {
  std::sort(pieces.begin(), pieces.end(), SmallerPiece);
  std::vector<Explanation> explanations;
  for (std::size_t left = pieces.size(); left-- > 0 && pieces[left].size() == pieces.back().size();) {
    Explanation explanation;
    for (std::size_t off = 0; off < pieces.size(); ++off) {
      if (off != left) explanation.push_back(OpenFault(pieces[off], pieces[left], net));
    }
    explanations.push_back(std::move(explanation));
    if (explanations.size() == MaxExplanations) break;
  }
  return explanations;
}

Fault ShortFault(const Nets& nets) {
  Fault fault;
  fault.kind = FaultKind::Short;
  fault.channels = ChannelsOf(nets);
  fault.nets = Ordered(nets);
  fault.pieces = fault.nets;
  return fault;
}

/// What of `net` is not in `other`, both ascending.
Net Away(const Net& net, const Net& other) {
  Net away;
  std::set_difference(net.begin(), net.end(), other.begin(), other.end(), std::back_inserter(away));
  return away;
}

Fault Crossing(const Net& first, const Net& second, const Nets& nets) {
  Fault fault;
  fault.kind = FaultKind::Crossed;
  fault.channels = ChannelsOf({first, second});
  for (std::size_t i = 0; i < first.size(); ++i) {
    fault.moves.push_back({first[i], second[i]});
    fault.moves.push_back({second[i], first[i]});
  }
  fault.nets = Ordered(nets);
  return fault;
}

/// Two nets that have exchanged contacts, as many to one side as to the other. Which measured net is which
/// expected one is told by which way fewer contacts have moved; where both ways are the same, both are given.
std::vector<Explanation> Exchanges(const Overlap& component) {
  const Net& a = component.expected[0];
  const Net& b = component.expected[1];
  std::vector<Explanation> explanations;
  std::size_t fewest = 0;
  for (const std::size_t measuredOfA : {std::size_t{0}, std::size_t{1}}) {
    const Net fromA = Away(a, component.measured[measuredOfA]);
    const Net fromB = Away(b, component.measured[1 - measuredOfA]);
    if (fromA.size() != fromB.size() || fromA.empty()) continue;
    // Where a net is whole, a break and a short circuit are more likely than several wires moved.
    if (fromA.size() > 1 && component.pieces.size() < 4) continue;
    if (!explanations.empty() && fromA.size() > fewest) continue;
    if (fromA.size() < fewest) explanations.clear();
    fewest = fromA.size();
    explanations.push_back(
        {fewest == 1 ? Exchange(fromA[0], fromB[0], a, b) : Crossing(fromA, fromB, component.expected)});
  }
  std::sort(explanations.begin(), explanations.end(), [](const Explanation& x, const Explanation& y) {
    return x.front().channels < y.front().channels;
  });
  return explanations;
}

}  // namespace

std::vector<Explanation> SingleFaults(const Overlap& component) {
  if (component.expected.size() == 1) return Opens(component.expected.front(), component.measured);
  if (component.measured.size() == 1) return {{ShortFault(component.expected)}};
  std::vector<Explanation> explanations;
  if (component.expected.size() == 2 && component.measured.size() == 2) explanations = Exchanges(component);
  const Nets measured = Ordered(component.measured);
  std::erase_if(explanations, [&](const Explanation& explanation) {
    return Applied(explanation, component.expected) != measured;
  });
  return explanations;
}

Fault CompoundFault(const Overlap& component) {
  Fault fault;
  fault.kind = FaultKind::Compound;
  fault.channels = ChannelsOf(component.expected);
  fault.nets = Ordered(component.expected);
  fault.opens = component.Opens();
  fault.shorts = component.Shorts();
  return fault;
}

}  // namespace kxbench::diagnosis
