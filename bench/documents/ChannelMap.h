#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "bench/documents/Wiring.h"
#include "bench/documents/WiringDocument.h"

namespace kxbench::documents {

/// Of a pin that a map lists, but on no channel.
inline constexpr std::int32_t NoChannelYet = std::numeric_limits<std::int32_t>::min();

struct MappedPin {
  Pin pin;
  std::int32_t channel = NoChannelYet;
  Place place;  ///< where the map says so
};

/// Which pin is on which channel of the tester.
using ChannelMap = std::vector<MappedPin>;

/// Why a document and a map do not go together: a line for each fault, with its place.
class MapError : public std::runtime_error {
 public:
  explicit MapError(std::vector<std::string> lines);
  const std::vector<std::string>& Lines() const { return lines_; }

 private:
  std::vector<std::string> lines_;
};

/// Reads a map: a table (see WiringTable.h) with the columns connector, pin and channel, or place and
/// channel; other columns do not matter, so that an exported list is its own map. A line without a channel
/// says that the connector is no splice. Throws DocumentError, MapError for numbers that are no channels.
ChannelMap ReadChannelMap(const std::string& fileName, std::string text);

/// The map that a wiring list brings along, in a column of channels; none when it has no such column.
std::optional<ChannelMap> MapInList(const std::string& fileName, std::string text);

/// Each pin on the channel of which it is the number; none when some pin has a connector.
std::optional<ChannelMap> MapOfNumbers(const WiringDocument& document);

/// Channels from `first` on, for one connector after the other in the document's order; within a connector
/// first the pins that are numbers, ascending, then the others in the document's order. Throws MapError when
/// the tester does not reach so far.
ChannelMap AssignChannels(const WiringDocument& document, std::int32_t first);

/// The map as a table, which ReadChannelMap reads.
std::string ChannelMapText(const ChannelMap& map);

/// What has to be wired: for each connector its name, and "1-3, 7 on channels 1-4".
struct AdapterLine {
  std::string connector;
  std::string text;
};
std::vector<AdapterLine> AdapterLines(const ChannelMap& map);

/// The same document with all pins of `connectors` as splices: joined, and gone.
WiringDocument WithSplices(const WiringDocument& document, const std::set<std::string>& connectors);

/// The connectors of the document that the map does not know.
std::set<std::string> ConnectorsWithoutChannel(const WiringDocument& document, const ChannelMap& map);

/// The document on the channels of the map, from the lowest channel of the map to the highest. A channel in
/// between that has no pin is one that is connected to nothing: it is tested to be open, so that a wire that
/// leads there is found. Throws MapError, with all faults at once: pins without a channel, pins that the
/// document lacks, pins and channels that are used twice, channels that the tester does not have.
Wiring WiringOf(const WiringDocument& document, const ChannelMap& map);

}  // namespace kxbench::documents
