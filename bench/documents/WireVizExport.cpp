#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "bench/documents/ReadDocument.h"
#include "bench/documents/WiringExport.h"
#include "bench/documents/WiringTable.h"

namespace kxbench::documents {

namespace {

/// A text in double quotes, so that nothing in it means anything to YAML.
std::string YamlText(const std::string& text) {
  constexpr const char* Digits = "0123456789abcdef";
  std::string quoted = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20U || byte == 0x7FU) {
      quoted += std::string("\\x") + Digits[byte / 16U] + Digits[byte % 16U];
      continue;
    }
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + "\"";
}

/// A pin: WireViz takes what looks like a number for one wherever a pin is named, so it is defined as one.
std::string YamlPin(const std::string& pin) {
  constexpr std::size_t LongestNumber = 9;
  const bool number = IsNumber(pin) && pin.front() != '0' && pin.size() <= LongestNumber;
  return number ? pin : YamlText(pin);
}

std::string YamlPins(const std::vector<std::string>& pins) {
  std::string text;
  for (const std::string& pin : pins) text += (text.empty() ? "" : ", ") + YamlPin(pin);
  return "[" + text + "]";
}

bool HasControlCharacter(const std::string& text) {
  return std::any_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x20U || c == 0x7F; });
}

/// Whether WireViz takes the text for an arrow between connectors.
bool IsArrow(std::string text) {
  std::erase(text, ' ');
  if (text.starts_with('<')) text.erase(0, 1);
  if (text.ends_with('>')) text.pop_back();
  if (text.empty()) return false;
  return text.find_first_not_of('-') == std::string::npos || text.find_first_not_of('=') == std::string::npos;
}

/// Whether WireViz takes the text for a range of pins, "1-4".
bool IsRange(const std::string& text) {
  const std::size_t hyphen = std::min(text.find('-'), text.size());
  return IsNumber(text.substr(0, hyphen)) && hyphen < text.size() && IsNumber(text.substr(hyphen + 1));
}

class WireVizWriter {
 public:
  explicit WireVizWriter(const Wiring& wiring) {
    for (const auto& [channel, pin] : wiring.pins) {
      if (std::binary_search(wiring.suspended.begin(), wiring.suspended.end(), channel)) continue;
      const bool named = !pin.connector.empty() && !pin.pin.empty() && !IsArrow(pin.connector) &&
                         !IsRange(pin.pin) && !HasControlCharacter(pin.connector + pin.pin);
      const Pin placed = named ? pin : Pin{UnnamedConnector, std::to_string(channel)};
      pins_[channel] = placed;
      if (pinsOf_[placed.connector].empty()) order_.push_back(placed.connector);
      pinsOf_[placed.connector].push_back(placed.pin);
    }
    for (const auto& net : wiring.nets) AddNet(net);
  }

  std::string Text() {
    JoinWithin();
    std::string text = Separator();
    text += "connectors:\n";
    for (const std::string& connector : order_) {
      text += "  " + YamlText(connector) + ":\n    pins: " + YamlPins(pinsOf_[connector]) + "\n";
      if (loops_[connector].empty()) continue;
      text += "    loops:\n";
      for (const auto& [a, b] : loops_[connector]) text += "      - " + YamlPins({a, b}) + "\n";
    }
    if (order_.empty()) text += "  {}\n";
    text += CablesText() + "connections:\n" + ConnectionsText();
    return text;
  }

 private:
  using Wires = std::vector<std::pair<std::string, std::string>>;

  /// Wires run from one connector of a net to the next; pins of one connector are joined there.
  void AddNet(const std::vector<std::int32_t>& net) {
    std::vector<std::string> connectors;
    std::map<std::string, std::vector<std::string>> pins;
    for (const std::int32_t channel : net) {
      const Pin& pin = pins_.at(channel);
      if (pins[pin.connector].empty()) connectors.push_back(pin.connector);
      pins[pin.connector].push_back(pin.pin);
    }
    for (std::size_t i = 0; i < connectors.size(); ++i) {
      const auto& own = pins[connectors[i]];
      for (std::size_t k = 1; k < own.size(); ++k) within_[connectors[i]].emplace_back(own[k - 1], own[k]);
      if (i == 0) continue;
      const auto both = std::pair(connectors[i - 1], connectors[i]);
      if (wires_[both].empty()) cables_.push_back(both);
      wires_[both].emplace_back(pins[both.first].front(), own.front());
      wired_.insert({both.first, both.second});
    }
  }

  /// WireViz draws a loop only beside a wire: a connector without any gets a cable from itself to itself.
  void JoinWithin() {
    for (const std::string& connector : order_) {
      const auto joined = within_.find(connector);
      if (joined == within_.end()) continue;
      if (wired_.contains(connector)) {
        loops_[connector] = joined->second;
        continue;
      }
      cables_.emplace_back(connector, connector);
      wires_[cables_.back()] = joined->second;
      wired_.insert(connector);
    }
  }

  std::string CableName(std::size_t index) const {
    std::string name = "W" + std::to_string(index + 1);
    while (pinsOf_.contains(name)) name += '_';
    return name;
  }

  /// A text that no connector has in its name: the usual separator between a template and its use is a
  /// point, and names have those.
  std::string Separator() const {
    std::string separator = ".";
    const auto used = [&](const std::string& name) { return name.find(separator) != std::string::npos; };
    if (std::none_of(order_.begin(), order_.end(), used)) return "";
    do {
      separator += separator.size() == 1 ? ":" : "~";
    } while (std::any_of(order_.begin(), order_.end(), used));
    return "options:\n  template_separator: " + YamlText(separator) + "\n";
  }

  std::string CablesText() const {
    if (cables_.empty()) return "";
    std::string text = "cables:\n";
    for (std::size_t i = 0; i < cables_.size(); ++i) {
      text += "  " + YamlText(CableName(i)) +
              ":\n    wirecount: " + std::to_string(wires_.at(cables_[i]).size()) + "\n";
    }
    return text;
  }

  std::string ConnectionsText() const {
    std::string text;
    for (std::size_t i = 0; i < cables_.size(); ++i) {
      const Wires& wires = wires_.at(cables_[i]);
      std::vector<std::string> from;
      std::vector<std::string> to;
      for (const auto& [a, b] : wires) {
        from.push_back(a);
        to.push_back(b);
      }
      const std::string all = wires.size() == 1 ? "[1]" : "[1-" + std::to_string(wires.size()) + "]";
      text += "  -\n    - " + YamlText(cables_[i].first) + ": " + YamlPins(from) + "\n";
      text += "    - " + YamlText(CableName(i)) + ": " + all + "\n";
      text += "    - " + YamlText(cables_[i].second) + ": " + YamlPins(to) + "\n";
    }
    // A set of one connector alone makes it part of the harness.
    for (const std::string& connector : order_) {
      if (!wired_.contains(connector)) text += "  -\n    - " + YamlText(connector) + "\n";
    }
    return text.empty() ? "  []\n" : text;
  }

  std::map<std::int32_t, Pin> pins_;
  std::vector<std::string> order_;  // connectors, by their first channel
  std::map<std::string, std::vector<std::string>> pinsOf_;
  std::map<std::string, Wires> within_;
  std::map<std::string, Wires> loops_;
  std::vector<std::pair<std::string, std::string>> cables_;
  std::map<std::pair<std::string, std::string>, Wires> wires_;
  std::set<std::string> wired_;
};

}  // namespace

std::string WireVizText(const Wiring& wiring) {
  return UntestedComments(wiring) + WireVizWriter(wiring).Text();
}

}  // namespace kxbench::documents
