#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <vector>

#include "bench/diagnosis/Fault.h"
#include "bench/diagnosis/Nets.h"
#include "bench/wiring/Contacts.h"

/// From expected and measured nets to named faults.
///
/// Two partitions of the same channels are compared: the nets that the harness should have, and those that
/// were measured. An expected and a measured net that share a channel are joined by an edge; the components
/// of this bipartite graph have nothing to do with one another, and each in which the two sides differ is
/// looked at alone:
///
/// 1. one expected net, several measured ones: it is open, once for each piece that came off;
/// 2. several expected nets, one measured: they are shorted;
/// 3. else the explanations by one fault, in which contacts have changed places: two contacts, one of them
///    perhaps unused, or several of the same two nets; plugs, as far as the names show them;
/// 4. else those by two faults: a break and a short circuit, an exchange and one more fault;
/// 5. else it is compound: so many opens, so many shorts.
///
/// A wrong plug may explain several components at once, and goes before what they would cost one by one. An
/// explanation is offered only after it was applied to the expected nets and gave the measured ones exactly.
/// All that are equally cheap are kept.
///
/// Cost: O(n log n) for the graph of n channels. Explanations of a component are sought among its pieces (the
/// channels that an expected and a measured net share), at most 10 where two faults can explain it, so that
/// part does not grow with n. For plugs see PlugFaults.h.
///
/// Sources: the graph of nets is the usual one of intersecting partitions (blocks as nodes, common elements
/// as edges). W. H. Kautz, "Testing for faults in wiring networks", IEEE Transactions on Computers C-23 (4),
/// 1974, shows that opens and shorts of one network hide each other: two contacts that are connected wrongly
/// can make up for one that is missing. That is why nets are compared as wholes here, and pairs of channels,
/// as the records of a check list them, are not.

namespace kxbench::diagnosis {

/// What was measured between two channels.
struct PairResistance {
  Channel a;
  Channel b;
  double ohm;
  std::optional<double> expectedOhm;  ///< where the expectation knows one
};

/// What is known of a harness and of the device measured.
struct Observation {
  Nets expected;  ///< in any order; a channel that only one side knows is alone on the other
  Nets measured;
  std::map<Channel, wiring::Contact> contacts;  ///< of the channels whose names show one; may be empty
  std::vector<PairResistance> resistances;      ///< of any pairs, in any order; may be empty
  double lowerThresholdOhm = 10;
};

/// Faults that hang together, and the nets that show them.
struct Finding {
  std::vector<Explanation> explanations;  ///< equally cheap, at least one; the first is the one to begin with
  Nets expected;
  Nets measured;
};

struct Diagnosis {
  std::vector<Finding> findings;  ///< none: the device is as expected
  std::vector<Fault> hints;       ///< HighResistance; they change no verdict
  Nets expected;                  ///< all nets, ordered
  Nets measured;
  std::size_t agreeing = 0;  ///< expected nets of two channels and more that were measured so
};

/// Compares the nets and names the faults. Takes any input; channels stand in one net a side.
Diagnosis Diagnose(const Observation& observation);

/// The fault of a channel that carries a voltage.
Fault VoltageFault(Channel channel, double volts);

/// The faults that take the place of `fault` in the other explanations of its finding.
std::vector<Fault> Alternatives(const Finding& finding, const Fault& fault);

}  // namespace kxbench::diagnosis
