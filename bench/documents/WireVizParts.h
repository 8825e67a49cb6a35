#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "bench/documents/WiringBuilder.h"
#include "bench/documents/YamlDocument.h"

namespace kxbench::documents {

/// No connector and no cable has more pins or wires than this.
inline constexpr std::size_t MostPinsOfOnePart = 10'000;

/// Where a text stands in a list: its first index, and how often.
struct WireVizUses {
  std::size_t first = 0;
  std::size_t count = 0;
};
using WireVizIndex = std::unordered_map<std::string, WireVizUses>;

/// What section `connectors` says of one of its entries.
struct WireVizConnector {
  bool simple = false;
  std::vector<std::string> pins;                           ///< their ids
  std::vector<const YamlNode*> pinNodes;                   ///< where each is defined
  WireVizIndex pinIndex;                                   ///< by id
  WireVizIndex labels;                                     ///< by label
  std::vector<std::pair<std::size_t, std::size_t>> loops;  ///< indices of pins that are joined
  std::vector<std::size_t> ends;  ///< of each pin: itself, or one pin for all that loops join
};

/// What section `cables` says of one of its entries.
struct WireVizCable {
  std::size_t wires = 0;
  bool shield = false;
  WireVizIndex colors;
  WireVizIndex labels;
};

/// Both throw DocumentError for what WireViz refuses, and warn of what has no effect.
WireVizConnector ReadWireVizConnector(const YamlDocument& document, const YamlEntry& entry,
                                      WiringBuilder& warnings);
WireVizCable ReadWireVizCable(const YamlDocument& document, const YamlEntry& entry, WiringBuilder& warnings);

/// Index of the pin that `reference` names, by label or by id. Throws DocumentError, at `node`, where there
/// is none or more than one. `name`: the connector's.
std::size_t FindWireVizPin(const YamlDocument& document, const WireVizConnector& connector,
                           const std::string& name, const std::string& reference, const YamlNode& node);

/// Number of the wire that `reference` names, by colour, label or number, from 1; 0 for the shield. Throws
/// DocumentError, at `node`, where there is none or more than one. `name`: the cable's.
std::size_t FindWireVizWire(const YamlDocument& document, const WireVizCable& cable, const std::string& name,
                            const std::string& reference, const YamlNode& node, WiringBuilder& warnings);

/// The text of a scalar without blanks at its ends. Throws DocumentError, at `node`, when it is none, is
/// empty or has several lines; `what` says what was expected: "a pin".
std::string WireVizName(const YamlDocument& document, const YamlNode& node, const std::string& what);

}  // namespace kxbench::documents
