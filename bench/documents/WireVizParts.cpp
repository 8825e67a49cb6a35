#include "bench/documents/WireVizParts.h"

#include <algorithm>
#include <charconv>
#include <numeric>
#include <optional>
#include <string_view>

#include "bench/documents/NameText.h"
#include "bench/documents/WireVizAttributes.h"
#include "bench/documents/WireVizColors.h"
#include "text/Trim.h"

namespace kxbench::documents {

namespace {

// Attributes that this reader looks at come first; the others say how things look or what they cost.
constexpr std::string_view ConnectorAttributes =
    " style pincount pins pinlabels pincolors loops shorts"
    " type subtype category color image notes ignore_in_bom pn manufacturer mpn supplier spn bgcolor"
    " bgcolor_title show_name show_pincount hide_disconnected_pins additional_components ";
constexpr std::string_view CableAttributes =
    " wirecount colors color_code wirelabels shield"
    " category type gauge gauge_unit show_equiv length length_unit color image notes ignore_in_bom pn "
    "manufacturer mpn supplier spn"
    " bgcolor bgcolor_title show_name show_wirecount show_wirenumbers additional_components ";

void SetPins(const YamlDocument& document, const YamlEntry& entry, const WireVizAttributes& attributes,
             WireVizConnector& connector) {
  const auto& pins = attributes.List("pins");
  const auto& labels = attributes.List("pinlabels");
  std::size_t count = attributes.Count("pincount");
  if (connector.simple) {
    const YamlNode* const tooMany =
        count > 1 ? attributes.Value("pincount") : (pins.size() > 1 ? attributes.Value("pins") : nullptr);
    if (tooMany != nullptr)
      attributes.Fail(*tooMany, attributes.Name() + " has style simple and can have one pin only");
    count = 1;
  } else if (attributes.Value("pincount") != nullptr && !pins.empty() && count != pins.size()) {
    attributes.Fail(*attributes.Value("pincount"), "pincount of " + attributes.Name() + " is " +
                                                       std::to_string(count) + ", but pins has " +
                                                       std::to_string(pins.size()));
  }
  if (count == 0) count = std::max({pins.size(), labels.size(), attributes.List("pincolors").size()});
  if (count == 0) {
    attributes.Fail("connector " + attributes.Name() + " needs pincount, pins, pinlabels or pincolors");
  }
  if (!pins.empty()) {
    for (const YamlNode* const pin : pins) connector.pins.push_back(WireVizName(document, *pin, "a pin"));
    connector.pinNodes = pins;
  } else {
    for (std::size_t i = 0; i < count; ++i) {
      connector.pins.push_back(std::to_string(i + 1));
      connector.pinNodes.push_back(i < labels.size() ? labels[i] : entry.first);
    }
  }
  for (std::size_t i = 0; i < connector.pins.size(); ++i) {
    WireVizAttributes::Add(connector.pinIndex, connector.pins[i], i);
    if (connector.pinIndex[connector.pins[i]].count > 1) {
      attributes.Fail(*connector.pinNodes[i],
                      "pin " + connector.pins[i] + " of " + attributes.Name() + " is there twice");
    }
  }
}

/// The pins of a loop: a list of two, or named with two and more: `NAME: [1, 5, 7]`.
const YamlNode* PinsOfLoop(const YamlNode& loop) {
  const bool named = loop.kind == YamlNode::Kind::Map && loop.items.size() == 2;
  const YamlNode& pins = named ? *loop.items[1] : loop;
  const bool rightSize = named ? pins.items.size() >= 2 : pins.items.size() == 2;
  return pins.kind == YamlNode::Kind::Sequence && rightSize ? &pins : nullptr;
}

/// `kind`: loops, which a wire makes, or shorts, which a part does.
void SetLoops(const YamlDocument& document, const WireVizAttributes& attributes, const std::string& kind,
              WireVizConnector& connector) {
  for (const YamlNode* const loop : attributes.List(kind)) {
    const YamlNode* const pins = PinsOfLoop(*loop);
    if (pins == nullptr)
      attributes.Fail(*loop,
                      "one of the " + kind + " of " + attributes.Name() + " must be a list of two pins");
    document.Spend(*loop, pins->items.size());
    std::optional<std::size_t> first;
    for (const YamlNode* const pin : pins->items) {
      const std::string reference = WireVizName(document, *pin, "a pin");
      const std::size_t index = FindWireVizPin(document, connector, attributes.Name(), reference, *pin);
      if (first) connector.loops.emplace_back(*first, index);
      if (!first) first = index;
    }
  }
}

void JoinEnds(WireVizConnector& connector) {
  std::vector<std::size_t>& ends = connector.ends;
  ends.resize(connector.pins.size());
  std::iota(ends.begin(), ends.end(), 0U);
  const auto endOf = [&ends](std::size_t pin) {
    while (ends[pin] != pin) pin = ends[pin] = ends[ends[pin]];
    return pin;
  };
  for (const auto& [a, b] : connector.loops) ends[endOf(a)] = endOf(b);
  for (std::size_t& end : ends) end = endOf(end);
}

WireVizIndex ColorsOf(const WireVizAttributes& attributes, std::size_t wires) {
  std::vector<std::string> colors;
  if (const auto& list = attributes.List("colors"); !list.empty()) {
    for (const YamlNode* const color : list) colors.emplace_back(shorttest::Trim(color->text));
  } else if (const std::string code = attributes.Text("color_code"); !code.empty()) {
    colors = WireVizColorCode(code);
    if (colors.empty())
      attributes.Fail(*attributes.Value("color_code"), "color_code " + ShownText(code) + " is not known");
  }
  WireVizIndex index;
  if (colors.empty()) return index;
  for (std::size_t wire = 0; wire < wires; ++wire) {
    const std::string& color = colors[wire % colors.size()];
    if (!color.empty()) WireVizAttributes::Add(index, color, wire);
  }
  return index;
}

bool SaysNo(const std::string& text) {
  constexpr std::string_view No[] = {"false", "False", "FALSE", "no",   "No",   "NO",   "off",
                                     "Off",   "OFF",   "0",     "null", "Null", "NULL", "~"};
  return text.empty() || std::find(std::begin(No), std::end(No), text) != std::end(No);
}

/// None for 07 and 010: the one is a text, and YAML's number 8 the other.
std::optional<std::size_t> WireNumber(const std::string& text) {
  if (text.starts_with('0')) return std::nullopt;
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

}  // namespace

WireVizConnector ReadWireVizConnector(const YamlDocument& document, const YamlEntry& entry,
                                      WiringBuilder& warnings) {
  const WireVizAttributes attributes(document, entry, ConnectorAttributes, warnings);
  WireVizConnector connector;
  connector.simple = attributes.Text("style") == "simple";
  SetPins(document, entry, attributes, connector);
  connector.labels = attributes.IndexOf("pinlabels");
  if (const auto& labels = attributes.List("pinlabels"); labels.size() > connector.pins.size()) {
    warnings.Warn(document.PlaceOf(*labels[connector.pins.size()]),
                  attributes.Name() + " has " + std::to_string(connector.pins.size()) + " pins and " +
                      std::to_string(labels.size()) + " labels: the last ones have no pin");
  }
  SetLoops(document, attributes, "loops", connector);
  SetLoops(document, attributes, "shorts", connector);
  JoinEnds(connector);
  return connector;
}

WireVizCable ReadWireVizCable(const YamlDocument& document, const YamlEntry& entry, WiringBuilder& warnings) {
  const WireVizAttributes attributes(document, entry, CableAttributes, warnings);
  WireVizCable cable;
  cable.wires = attributes.Count("wirecount");
  if (cable.wires == 0) cable.wires = attributes.List("colors").size();
  if (cable.wires == 0) attributes.Fail("cable " + attributes.Name() + " needs wirecount or colors");
  attributes.IndexOf("colors");  // texts alone
  cable.colors = ColorsOf(attributes, cable.wires);
  cable.labels = attributes.IndexOf("wirelabels");
  if (const YamlNode* const shield = attributes.Value("shield")) {
    const std::string text = attributes.Text("shield");
    cable.shield = shield->quoted || !SaysNo(text);
  }
  if (cable.shield && cable.labels.contains("s")) {
    attributes.Fail("cable " + attributes.Name() + " has a shield: s cannot be the label of a wire too");
  }
  if (const auto& labels = attributes.List("wirelabels"); labels.size() > cable.wires) {
    warnings.Warn(document.PlaceOf(*labels[cable.wires]),
                  attributes.Name() + " has " + std::to_string(cable.wires) + " wires and " +
                      std::to_string(labels.size()) + " labels: the last ones have no wire");
  }
  return cable;
}

std::size_t FindWireVizPin(const YamlDocument& document, const WireVizConnector& connector,
                           const std::string& name, const std::string& reference, const YamlNode& node) {
  const auto fail = [&](const std::string& text) { throw DocumentError(document.PlaceOf(node), text); };
  const auto pin = connector.pinIndex.find(reference);
  const auto label = connector.labels.find(reference);
  const bool isPin = pin != connector.pinIndex.end();
  const bool isLabel = label != connector.labels.end();
  if (isLabel && label->second.count > 1) {
    fail(name + " has " + std::to_string(label->second.count) + " pins labelled " + reference +
         ": say which by its number");
  }
  if (isLabel && label->second.first >= connector.pins.size()) {
    fail("label " + reference + " of " + name + " has no pin: it has " +
         std::to_string(connector.pins.size()));
  }
  if (isPin && isLabel && pin->second.first != label->second.first) {
    fail(reference + " of " + name + " is a pin and the label of another, pin " +
         connector.pins[label->second.first]);
  }
  if (!isPin && !isLabel) {
    const std::size_t count = connector.pins.size();
    fail(name + " has no pin " + reference + ": it has " + std::to_string(count) + ", " +
         connector.pins.front() + (count > 1 ? " to " + connector.pins.back() : std::string()));
  }
  return isLabel ? label->second.first : pin->second.first;
}

std::size_t FindWireVizWire(const YamlDocument& document, const WireVizCable& cable, const std::string& name,
                            const std::string& reference, const YamlNode& node, WiringBuilder& warnings) {
  const auto fail = [&](const std::string& text) { throw DocumentError(document.PlaceOf(node), text); };
  const auto color = cable.colors.find(reference);
  const auto label = cable.labels.find(reference);
  const bool isColor = color != cable.colors.end();
  const bool isLabel = label != cable.labels.end();
  if (isColor && isLabel && color->second.first != label->second.first) {
    fail(reference + " of " + name + " is the colour of one wire and the label of another");
  }
  if (isColor || isLabel) {
    const WireVizUses& uses = isColor ? color->second : label->second;
    if (uses.count > 1) {
      fail(name + " has " + std::to_string(uses.count) + " wires " + reference + ": say which by its number");
    }
    if (uses.first >= cable.wires) fail("label " + reference + " of " + name + " has no wire");
    if (const auto number = WireNumber(reference);
        number && *number != uses.first + 1 && *number <= cable.wires) {
      warnings.Warn(document.PlaceOf(node), reference + " of " + name + " is taken as the label of wire " +
                                                std::to_string(uses.first + 1) +
                                                ", not as the wire's number");
    }
    return uses.first + 1;
  }
  if (reference == "s") {
    if (!cable.shield) fail(name + " has no shield: s is none of its wires");
    return 0;
  }
  const auto number = WireNumber(reference);
  if (!number || *number > cable.wires) {
    fail(name + " has no wire " + reference + ": it has " + std::to_string(cable.wires));
  }
  return *number;
}

std::string WireVizName(const YamlDocument& document, const YamlNode& node, const std::string& what) {
  if (node.kind != YamlNode::Kind::Scalar)
    throw DocumentError(document.PlaceOf(node), what + " must be a text");
  const std::string_view name = shorttest::Trim(node.text);
  if (node.empty || name.empty()) throw DocumentError(document.PlaceOf(node), what + " is missing here");
  if (!IsName(name)) throw DocumentError(document.PlaceOf(node), what + " must be a text of one line");
  return std::string(name);
}

}  // namespace kxbench::documents
