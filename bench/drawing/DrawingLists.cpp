#include "bench/drawing/DrawingLists.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "bench/drawing/DrawingMarks.h"

namespace kxbench::drawing {

namespace {

void AddCount(std::string& text, std::size_t count, const std::string& one, const std::string& many) {
  if (count == 0) return;
  text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + (count == 1 ? one : many);
}

}  // namespace

std::string SummaryText(const HarnessPicture& picture) {
  std::size_t suspended = 0;
  std::set<std::string> connectors;
  const bool channels = std::any_of(picture.pins.begin(), picture.pins.end(),
                                    [](const DrawnPin& pin) { return pin.channel > 0; });
  for (const DrawnPin& pin : picture.pins) {
    if (pin.suspended) ++suspended;
    if (!pin.connector.empty()) connectors.insert(pin.connector);
  }
  std::size_t nets = 0;
  std::size_t connected = 0;
  for (const DrawnNet& net : picture.nets) {
    if (net.pins.size() < 2) continue;
    ++nets;
    connected += net.pins.size();
  }
  std::string text;
  AddCount(text, connectors.size(), "connector", "connectors");
  AddCount(text, picture.pins.size(), channels ? "channel" : "pin", channels ? "channels" : "pins");
  AddCount(text, nets, "net", "nets");
  AddCount(text, picture.pins.size() - connected - suspended, "unconnected", "unconnected");
  AddCount(text, suspended, "suspended", "suspended");
  AddCount(text, picture.excluded.size(), "pair not checked", "pairs not checked");
  return text;
}

std::string NetText(const HarnessPicture& picture, const DrawnNet& net) {
  std::string text = net.name.empty() ? "" : net.name + ": ";
  for (std::size_t i = 0; i < net.pins.size(); ++i) {
    text += (i == 0 ? "" : ", ") + LongPinLabel(picture.pins[net.pins[i]]);
  }
  return text;
}

std::vector<std::string> ExcludedTexts(const HarnessPicture& picture) {
  std::map<std::size_t, std::set<std::size_t>> others;
  for (const auto& [a, b] : picture.excluded) others[std::min(a, b)].insert(std::max(a, b));
  std::vector<std::string> lines;
  for (const auto& [pin, partners] : others) {
    std::string line = LongPinLabel(picture.pins[pin]) + " –";
    std::string comma = " ";
    for (const std::size_t partner : partners) {
      line += comma + LongPinLabel(picture.pins[partner]);
      comma = ", ";
    }
    lines.push_back(std::move(line));
  }
  return lines;
}

}  // namespace kxbench::drawing
