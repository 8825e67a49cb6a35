#pragma once

#include <string>

#include "bench/documents/Wiring.h"

namespace kxbench::documents {

/// Comments ("# ...") on what the wiring leaves untested: suspended channels, excluded pairs.
std::string UntestedComments(const Wiring& wiring);

/// The wiring as a list of nets (CSV), which import reads and which is its own map: columns net, connector,
/// pin and channel, a line for each pin. Suspended channels are not in it: they and the excluded pairs are
/// told in comments.
std::string WiringListText(const Wiring& wiring);

/// The wiring as a WireViz document, which import reads and WireViz draws: a cable for each two connectors
/// that a net joins, loops for pins of one connector. Channels without a name are the pins of a connector of
/// their own (UnnamedConnector). Suspended channels and excluded pairs are told in comments.
std::string WireVizText(const Wiring& wiring);

}  // namespace kxbench::documents
