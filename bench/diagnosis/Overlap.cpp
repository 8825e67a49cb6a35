#include "bench/diagnosis/Overlap.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <utility>

namespace kxbench::diagnosis {

namespace {

/// Sets that grow together, with path halving (Tarjan 1975).
class DisjointSets {
 public:
  explicit DisjointSets(std::size_t count) : parent_(count) {
    std::iota(parent_.begin(), parent_.end(), std::size_t{0});
  }
  std::size_t Find(std::size_t node) {
    while (parent_[node] != node) node = parent_[node] = parent_[parent_[node]];
    return node;
  }
  void Join(std::size_t a, std::size_t b) { parent_[Find(a)] = Find(b); }

 private:
  std::vector<std::size_t> parent_;
};

/// Channel and the net that it is in, by channel.
std::vector<std::pair<Channel, std::size_t>> NetOfChannels(const Nets& nets) {
  std::vector<std::pair<Channel, std::size_t>> netOf;
  for (std::size_t net = 0; net < nets.size(); ++net) {
    for (const Channel channel : nets[net]) netOf.emplace_back(channel, net);
  }
  std::sort(netOf.begin(), netOf.end());
  return netOf;
}

/// The pieces of all nets, each with its channels ascending.
std::vector<Piece> PiecesOf(const Nets& expected, const Nets& measured) {
  const auto expectedOf = NetOfChannels(expected);
  const auto measuredOf = NetOfChannels(measured);
  std::map<std::pair<std::size_t, std::size_t>, std::size_t> known;
  std::vector<Piece> pieces;
  for (std::size_t i = 0; i < expectedOf.size(); ++i) {
    const std::pair key(expectedOf[i].second, measuredOf[i].second);
    const auto [entry, isNew] = known.try_emplace(key, pieces.size());
    if (isNew) pieces.push_back({key.first, key.second, {}});
    pieces[entry->second].channels.push_back(expectedOf[i].first);
  }
  return pieces;
}

/// Numbers nets within their component, in the order in which they are asked for.
class NetNumbers {
 public:
  std::size_t Of(std::size_t net, const Nets& all, Nets& component) {
    const auto [entry, isNew] = numbers_.try_emplace(net, component.size());
    if (isNew) component.push_back(all[net]);
    return entry->second;
  }

 private:
  std::map<std::size_t, std::size_t> numbers_;
};

}  // namespace

std::vector<Overlap> Components(const Nets& expected, const Nets& measured) {
  std::vector<Piece> pieces = PiecesOf(expected, measured);
  DisjointSets sets(expected.size() + measured.size());
  for (const Piece& piece : pieces) sets.Join(piece.expected, expected.size() + piece.measured);

  std::map<std::size_t, std::size_t> componentOf;
  std::vector<Overlap> components;
  NetNumbers expectedNumbers;
  NetNumbers measuredNumbers;
  for (Piece& piece : pieces) {
    const auto [entry, isNew] = componentOf.try_emplace(sets.Find(piece.expected), components.size());
    if (isNew) components.emplace_back();
    Overlap& component = components[entry->second];
    piece.expected = expectedNumbers.Of(piece.expected, expected, component.expected);
    piece.measured = measuredNumbers.Of(piece.measured, measured, component.measured);
    component.pieces.push_back(std::move(piece));
  }
  return components;
}

}  // namespace kxbench::diagnosis
