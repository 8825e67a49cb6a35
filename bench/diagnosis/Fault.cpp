#include "bench/diagnosis/Fault.h"

#include <algorithm>
#include <map>
#include <utility>

namespace kxbench::diagnosis {

namespace {

void TakeOff(const Net& piece, Nets& nets) {
  for (Net& net : nets) {
    std::erase_if(
        net, [&](Channel channel) { return std::find(piece.begin(), piece.end(), channel) != piece.end(); });
  }
  nets.push_back(piece);
}

void Join(const Nets& pieces, Nets& nets) {
  Net joined;
  for (const Net& piece : pieces) {
    for (Net& net : nets) {
      if (std::find(net.begin(), net.end(), piece.front()) == net.end()) continue;
      joined.insert(joined.end(), net.begin(), net.end());
      net.clear();
    }
  }
  nets.push_back(std::move(joined));
}

/// Wires change contacts: what is connected stays connected, on other channels. A contact that a wire has
/// left and none has come to is alone.
void MoveWires(const std::vector<Move>& moves, Nets& nets) {
  std::map<Channel, std::optional<Channel>> target;
  for (const Move& move : moves) target[move.from] = move.to;
  std::map<Channel, bool> deserted;
  for (const Move& move : moves) deserted.try_emplace(move.from, true);
  for (const Move& move : moves) {
    if (move.to) deserted[*move.to] = false;
  }
  for (Net& net : nets) {
    Net moved;
    for (const Channel channel : net) {
      const auto move = target.find(channel);
      if (move == target.end()) {
        moved.push_back(channel);
      } else if (move->second) {
        moved.push_back(*move->second);
      }
    }
    net = std::move(moved);
  }
  for (const auto& [channel, alone] : deserted) {
    if (alone) nets.push_back({channel});
  }
}

}  // namespace

bool SameFault(const Fault& a, const Fault& b) {
  return a.kind == b.kind && a.channels == b.channels && a.moves == b.moves;
}

Nets Applied(const Fault& fault, Nets nets) {
  switch (fault.kind) {
    case FaultKind::Open:
      TakeOff(fault.pieces.front(), nets);
      break;
    case FaultKind::Short:
      Join(fault.pieces, nets);
      break;
    case FaultKind::Swapped:
    case FaultKind::Crossed:
    case FaultKind::Misplaced:
    case FaultKind::PlugsExchanged:
    case FaultKind::PlugReversed:
    case FaultKind::PlugShifted:
      MoveWires(fault.moves, nets);
      break;
    case FaultKind::HighResistance:
    case FaultKind::Voltage:
    case FaultKind::Compound:
      break;
  }
  return nets;
}

Nets Applied(const Explanation& explanation, Nets nets) {
  for (const Fault& fault : explanation) nets = Applied(fault, std::move(nets));
  return Ordered(std::move(nets));
}

Fault Exchange(Channel a, Channel b, const Net& netOfA, const Net& netOfB) {
  Fault fault;
  const bool unused = netOfA.size() == 1 || netOfB.size() == 1;
  fault.kind = unused ? FaultKind::Misplaced : FaultKind::Swapped;
  fault.channels = {std::min(a, b), std::max(a, b)};
  fault.moves = {{fault.channels[0], fault.channels[1]}, {fault.channels[1], fault.channels[0]}};
  fault.nets = Ordered({netOfA, netOfB});
  return fault;
}

}  // namespace kxbench::diagnosis
