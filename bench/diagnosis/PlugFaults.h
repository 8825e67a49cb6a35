#pragma once

#include <vector>

#include "bench/diagnosis/Fault.h"
#include "bench/diagnosis/Plugs.h"

namespace kxbench::diagnosis {

/// A wrong plug that explains what it changes exactly: every expected net that it changes is measured as it
/// would then be, and nothing that it changes is measured otherwise.
struct PlugExplanation {
  Fault fault;
  Net explained;  ///< the channels of all nets changed, ascending: whole components of the graph of nets
};

/// All of them: plugs exchanged, then reversed, then shifted, smallest shift first. A shift that puts no
/// connected wire on a contact is a plug that is not there, and is left out. With p plugs of at most q
/// contacts in n channels this tries p * p / 2 + 3 * p * q ways, of which each costs O(q + the nets it
/// touches).
/// REQUIRES: both partitions ordered, with the same channels.
std::vector<PlugExplanation> PlugFaults(const std::vector<Plug>& plugs, const Nets& expected,
                                        const Nets& measured);

}  // namespace kxbench::diagnosis
