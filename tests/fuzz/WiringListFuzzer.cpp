// Arbitrary bytes as a wiring list and as a map of its pins. Each is read or refused at a place; what is read
// is a partition of its pins, with channels assigned it is written as a list again that gives the same nets.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "bench/documents/ChannelMap.h"
#include "bench/documents/WiringExport.h"
#include "bench/documents/WiringListReader.h"
#include "tests/fuzz/DocumentProperties.h"

namespace {

using namespace kxbench::documents;
using fuzz::Require;

std::vector<std::vector<std::string>> NetsOf(const WiringDocument& document) {
  std::vector<std::vector<std::string>> nets;
  for (const DocumentNet& net : document.nets) {
    auto& pins = nets.emplace_back();
    for (const Pin& pin : net.pins) pins.push_back(pin.connector + '\n' + pin.pin);
    std::sort(pins.begin(), pins.end());
  }
  std::sort(nets.begin(), nets.end());
  return nets;
}

void CheckExport(const WiringDocument& document) {
  if (document.pins.empty()) return;
  const ChannelMap map = AssignChannels(document, 1);
  for (const PlacedPin& pin : document.pins) {
    // A pin without a connector is written as its channel, which was assigned anew here.
    if (pin.pin.connector.empty()) return;
  }
  const std::string text = WiringListText(WiringOf(document, map));
  Require(NetsOf(ReadWiringList("back", text)) == NetsOf(document), "an export gives the same nets:", text);
  const auto own = MapInList("back", text);
  Require(own && ChannelMapText(*own).size() == ChannelMapText(map).size(),
          "an export is its own map:", text);
}

template <typename Read>
void CheckMap(Read read) {
  try {
    read();
  } catch (const DocumentError&) {
  } catch (const MapError& error) {
    Require(!error.Lines().empty(), "a refusal of a map names faults");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(bytes), size);
  const auto document =
      fuzz::CheckReading([&] { return ReadWiringList("list", text); }, {"list"}, fuzz::PinParts::One);
  if (document) CheckExport(*document);
  CheckMap([&] { MapInList("list", text); });
  CheckMap([&] { ReadChannelMap("map", text); });
  return 0;
}
