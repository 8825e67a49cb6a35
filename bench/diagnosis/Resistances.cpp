#include "bench/diagnosis/Resistances.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <tuple>
#include <utility>

namespace kxbench::diagnosis {

namespace {

bool ByPair(const PairResistance& x, const PairResistance& y) {
  return std::tie(x.a, x.b) < std::tie(y.a, y.b);
}

/// What an instrument reads where nothing flows.
constexpr double OverRangeOhm = 1e9;

/// How far two contacts are apart: neighbouring pins of one plug, pins of one plug, anything else.
using Distance = std::tuple<int, std::int64_t>;

Distance DistanceOf(Channel a, Channel b, const std::map<Channel, wiring::Contact>& contacts) {
  const auto x = contacts.find(a);
  const auto y = contacts.find(b);
  const std::int64_t channels = std::abs(std::int64_t{a} - b);
  if (x == contacts.end() || y == contacts.end()) return {2, channels};
  if (x->second.connector != y->second.connector) return {2, channels};
  if (!x->second.number || !y->second.number) return {1, channels};
  return {0, std::abs(std::int64_t{*x->second.number} - *y->second.number)};
}

std::vector<Channel> Closest(const Nets& nets, const std::map<Channel, wiring::Contact>& contacts) {
  std::vector<Channel> closest;
  Distance least{};
  for (std::size_t i = 0; i < nets.size(); ++i) {
    for (std::size_t j = i + 1; j < nets.size(); ++j) {
      for (const Channel a : nets[i]) {
        for (const Channel b : nets[j]) {
          const Distance distance = DistanceOf(a, b, contacts);
          if (!closest.empty() && distance >= least) continue;
          least = distance;
          closest = {a, b};
        }
      }
    }
  }
  return closest;
}

}  // namespace

ResistanceTable::ResistanceTable(std::vector<PairResistance> resistances) : pairs_(std::move(resistances)) {
  for (PairResistance& pair : pairs_) {
    if (pair.a > pair.b) std::swap(pair.a, pair.b);
  }
  std::sort(pairs_.begin(), pairs_.end(), ByPair);
}

std::optional<double> ResistanceTable::Smallest(const Net& a, const Net& b) const {
  std::optional<double> smallest;
  for (const Channel x : a) {
    for (const Channel y : b) {
      const PairResistance key{std::min(x, y), std::max(x, y), 0, std::nullopt};
      const auto pair = std::lower_bound(pairs_.begin(), pairs_.end(), key, ByPair);
      if (pair == pairs_.end() || ByPair(key, *pair)) continue;
      if (!smallest || pair->ohm < *smallest) smallest = pair->ohm;
    }
  }
  return smallest;
}

void AddEvidence(const ResistanceTable& resistances, const std::map<Channel, wiring::Contact>& contacts,
                 Explanation& explanation) {
  for (Fault& fault : explanation) {
    if (fault.kind != FaultKind::Open && fault.kind != FaultKind::Short) continue;
    for (std::size_t i = 0; i < fault.pieces.size(); ++i) {
      for (std::size_t j = i + 1; j < fault.pieces.size(); ++j) {
        const std::optional<double> ohm = resistances.Smallest(fault.pieces[i], fault.pieces[j]);
        if (ohm && (!fault.ohm || *ohm < *fault.ohm)) fault.ohm = ohm;
      }
    }
    if (fault.ohm && *fault.ohm >= OverRangeOhm) fault.ohm.reset();
    if (fault.kind == FaultKind::Short) fault.closest = Closest(fault.pieces, contacts);
  }
}

std::vector<Fault> HighResistances(const Observation& observation, const Nets& measured) {
  constexpr double Tenth = 0.1;
  std::map<Channel, std::size_t> netOf;
  for (std::size_t net = 0; net < measured.size(); ++net) {
    for (const Channel channel : measured[net]) netOf[channel] = net;
  }
  std::vector<Fault> hints;
  for (const PairResistance& pair : observation.resistances) {
    const auto a = netOf.find(pair.a);
    const auto b = netOf.find(pair.b);
    if (a == netOf.end() || b == netOf.end() || a->second != b->second || !pair.expectedOhm) continue;
    if (!(pair.ohm - *pair.expectedOhm > Tenth * observation.lowerThresholdOhm)) continue;
    Fault hint;
    hint.kind = FaultKind::HighResistance;
    hint.channels = {std::min(pair.a, pair.b), std::max(pair.a, pair.b)};
    hint.ohm = pair.ohm;
    hint.expectedOhm = pair.expectedOhm;
    hints.push_back(std::move(hint));
  }
  std::sort(hints.begin(), hints.end(),
            [](const Fault& x, const Fault& y) { return x.channels < y.channels; });
  return hints;
}

}  // namespace kxbench::diagnosis
