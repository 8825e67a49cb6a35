#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "bench/diagnosis/Nets.h"

namespace kxbench::diagnosis {

enum class FaultKind {
  Open,            ///< a piece came off its net
  Short,           ///< nets are connected with one another
  Swapped,         ///< two wires lie on each other's contacts
  Crossed,         ///< two nets have exchanged two contacts or more each
  Misplaced,       ///< a wire lies on an unused contact
  PlugsExchanged,  ///< two plugs are in each other's place
  PlugReversed,    ///< a plug's first contact is its last
  PlugShifted,     ///< every wire of a plug lies some contacts further
  HighResistance,  ///< connected, but worse than it was: a hint
  Voltage,         ///< a channel carries a voltage; nothing else was measured
  Compound,        ///< more than two faults in one place: counted, not named
};

/// The wire that belongs on contact `from` lies on contact `to`.
struct Move {
  Channel from;
  std::optional<Channel> to;  ///< none: on no contact that is tested
  bool operator==(const Move&) const = default;
};

/// One fault, as a person repairs it. Which members say something depends on the kind.
struct Fault {
  FaultKind kind = FaultKind::Compound;

  /// Ascending. Open: the smaller piece. Short, Compound: all of the nets concerned. Swapped, Crossed,
  /// Misplaced: the contacts exchanged. Plugs: all their contacts. HighResistance: the two contacts. Voltage:
  /// the channel.
  Net channels;

  Nets nets;                       ///< the expected nets concerned
  Nets pieces;                     ///< Open: what came off, what is left. Short: what of each net is joined
  std::vector<Move> moves;         ///< Swapped to PlugShifted
  std::vector<std::string> plugs;  ///< PlugsExchanged to PlugShifted: their names
  int shift = 0;                   ///< PlugShifted: how many contacts further
  bool around = false;             ///< PlugShifted: what passes the last contact begins again at the first
  std::optional<double>
      ohm;  ///< Open: across the gap, where anything flows; Short: smallest; HighResistance: measured
  std::optional<double> expectedOhm;  ///< HighResistance
  double volts = 0;                   ///< Voltage
  std::vector<Channel> closest;       ///< Short: the two contacts that are closest, empty or two
  std::size_t opens = 0;              ///< Compound: places where a net is open
  std::size_t shorts = 0;             ///< Compound: connections too many
};

/// The same fault: its kind, and the channels and moves that distinguish it from others of that kind.
bool SameFault(const Fault& a, const Fault& b);

/// Faults that explain a finding together, in the order in which they are applied.
using Explanation = std::vector<Fault>;

/// What a tester measures of `nets` once the fault is there. A hint, a voltage and Compound change nothing:
/// they are no explanations.
Nets Applied(const Fault& fault, Nets nets);

/// The same for one fault after the other, ordered (see Ordered).
Nets Applied(const Explanation& explanation, Nets nets);

/// A fault of which two contacts are exchanged: Misplaced when one of the two nets has no other contact.
Fault Exchange(Channel a, Channel b, const Net& netOfA, const Net& netOfB);

}  // namespace kxbench::diagnosis
