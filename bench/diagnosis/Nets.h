#pragma once

#include <cstdint>
#include <vector>

namespace kxbench::diagnosis {

/// Number of a channel of the tester, from 1.
using Channel = std::int32_t;

/// Channels that are connected with one another. A channel that is connected to nothing is a net of its own.
using Net = std::vector<Channel>;

/// A partition: every channel is in exactly one net.
using Nets = std::vector<Net>;

/// The same nets in the one order in which equal partitions are equal vectors: channels ascending, nets by
/// their first channel, none empty.
Nets Ordered(Nets nets);

/// All channels of the nets, ascending.
Net ChannelsOf(const Nets& nets);

/// The nets of `a` that are not in `b`, both ordered.
Nets Difference(const Nets& a, const Nets& b);

}  // namespace kxbench::diagnosis
