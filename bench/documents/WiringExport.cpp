#include "bench/documents/WiringExport.h"

#include "bench/documents/CsvScanner.h"

namespace kxbench::documents {

namespace {

std::string ListRow(const std::string& net, std::int32_t channel, const Wiring& wiring) {
  const Pin& pin = wiring.pins.at(channel);
  const bool named = !pin.connector.empty();
  return CsvField(net) + "," + (named ? CsvField(pin.connector) + "," + CsvField(pin.pin) : ",") + "," +
         std::to_string(channel) + "\n";
}

}  // namespace

std::string UntestedComments(const Wiring& wiring) {
  std::string text;
  for (const std::int32_t channel : wiring.suspended) {
    text += "# suspended, not tested: " + PinText(wiring.pins.at(channel)) + "\n";
  }
  for (const auto& [lower, higher] : wiring.excluded) {
    text += "# excluded from the short-circuit test: " + PinText(wiring.pins.at(lower)) + " with " +
            PinText(wiring.pins.at(higher)) + "\n";
  }
  return text;
}

std::string WiringListText(const Wiring& wiring) {
  std::string text = UntestedComments(wiring) + "net,connector,pin,channel\n";
  for (std::size_t i = 0; i < wiring.nets.size(); ++i) {
    for (const std::int32_t channel : wiring.nets[i])
      text += ListRow("N" + std::to_string(i + 1), channel, wiring);
  }
  for (const std::int32_t channel : wiring.single) text += ListRow("", channel, wiring);
  return text;
}

}  // namespace kxbench::documents
