#include "bench/documents/WireVizHarness.h"

#include <algorithm>
#include <string_view>

#include "bench/documents/NameText.h"
#include "text/Trim.h"

namespace kxbench::documents {

namespace {

// All in all: templates let a small document ask for any number.
constexpr std::size_t MostWireVizPins = 30'000;

bool IsArrowOf(std::string_view text, char line) {
  text = shorttest::Trim(text);
  if (!text.empty() && text.front() == '<') text.remove_prefix(1);
  if (!text.empty() && text.back() == '>') text.remove_suffix(1);
  return !text.empty() && std::all_of(text.begin(), text.end(), [line](char c) { return c == line; });
}

std::string ListOf(const std::vector<std::string>& texts) {
  constexpr std::size_t Shown = 8;
  std::string list;
  for (std::size_t i = 0; i < std::min(texts.size(), Shown); ++i) list += (i == 0 ? "" : ", ") + texts[i];
  return texts.size() > Shown ? list + " and " + std::to_string(texts.size() - Shown) + " more" : list;
}

}  // namespace

bool IsPinArrow(const std::string& text) { return IsArrowOf(text, '-'); }
bool IsConnectorArrow(const std::string& text) { return IsArrowOf(text, '='); }

WireVizHarness::WireVizHarness(const YamlDocument& document, WiringBuilder& builder)
    : document_(document),
      builder_(builder),
      connectors_(DefinitionsOf("connectors")),
      cables_(DefinitionsOf("cables")),
      separator_(SeparatorOption()) {}

const YamlNode* WireVizHarness::Section(const std::string& name) const {
  const YamlNode* found = nullptr;
  for (const auto& [key, value] : document_.EntriesOf(*document_.Root())) {
    if (key->text == name && !value->empty) found = value;
  }
  if (found != nullptr && found->kind != YamlNode::Kind::Map) {
    throw DocumentError(document_.PlaceOf(*found), "section " + name + " must be a map");
  }
  return found;
}

WireVizHarness::Definitions WireVizHarness::DefinitionsOf(const std::string& section) const {
  Definitions definitions;
  const YamlNode* const map = Section(section);
  if (map == nullptr) return definitions;
  for (const YamlEntry& entry : document_.EntriesOf(*map)) {
    const std::string name = WireVizName(document_, *entry.first, "a name");
    const auto [known, isNew] = definitions.try_emplace(name);
    YamlEntry& counts = known->second.entry;
    if (isNew) {
      counts = entry;
      continue;
    }
    // Names that differ in blanks alone are equal: as of equal keys, the last one counts.
    const bool last = std::pair(counts.first->line, counts.first->offset) <
                      std::pair(entry.first->line, entry.first->offset);
    builder_.Warn(document_.PlaceOf(last ? *counts.first : *entry.first),
                  ShownText(name) + " is given once more further down: only the last one counts");
    if (last) counts = entry;
  }
  return definitions;
}

std::string WireVizHarness::SeparatorOption() const {
  const YamlNode* const options = Section("options");
  if (options == nullptr) return ".";
  for (const auto& [key, value] : document_.EntriesOf(*options)) {
    if (key->text != "template_separator") continue;
    if (value->kind == YamlNode::Kind::Scalar && !value->text.empty()) return value->text;
    throw DocumentError(document_.PlaceOf(*value), "template_separator must be a text");
  }
  return ".";
}

std::pair<std::string, std::string> WireVizHarness::TemplateAndName(const std::string& text,
                                                                    const YamlNode& node) {
  const std::size_t at = text.find(separator_);
  if (at == std::string::npos) return {text, text};
  const std::string definition = text.substr(0, at);
  std::string name = text.substr(at + separator_.size());
  if (name.find(separator_) != std::string::npos) {
    throw DocumentError(document_.PlaceOf(node),
                        text + " has more than one " + separator_ + " between template and name");
  }
  if (name.empty()) name = "__" + definition + '_' + std::to_string(++unnamed_[definition]);
  return {definition, name};
}

WireVizHarness::Part& WireVizHarness::Find(const YamlNode& node) {
  const std::string text = WireVizName(document_, node, "a connector, a cable or an arrow");
  if (IsPinArrow(text) || IsConnectorArrow(text)) return arrow_;
  const auto [definition, name] = TemplateAndName(text, node);
  const auto [known, isNew] = definitionOf_.try_emplace(name, definition);
  if (!isNew && known->second != definition && definition != name) {
    throw DocumentError(document_.PlaceOf(node), name + " is made from " + known->second +
                                                     " already and cannot be made from " + definition);
  }
  const auto part = parts_.find(name);
  return part == parts_.end() ? Make(definition, name, node) : *part->second;
}

/// Where definitions may have gone: of two equal sections, such as one in a file that is put in front, the
/// last one counts.
std::string WireVizHarness::ReplacedSection() const {
  for (const YamlNode* const key : document_.DroppedKeys()) {
    if (key->text != "connectors" && key->text != "cables") continue;
    return "; section " + key->text + " of " + PlaceText(document_.PlaceOf(*key)) +
           " does not count, because there is another one further down";
  }
  return {};
}

WireVizHarness::Part& WireVizHarness::Make(const std::string& definition, const std::string& name,
                                           const YamlNode& node) {
  auto part = std::make_unique<Part>();
  part->name = name;
  if (const auto connector = connectors_.find(definition); connector != connectors_.end()) {
    Definition& found = connector->second;
    if (!found.connector) {
      found.connector =
          std::make_unique<WireVizConnector>(ReadWireVizConnector(document_, found.entry, builder_));
    }
    part->kind = Kind::Connector;
    part->connector = found.connector.get();
    AddPins(*part, found, node);
  } else if (const auto cable = cables_.find(definition); cable != cables_.end()) {
    Definition& found = cable->second;
    if (!found.cable) {
      found.cable = std::make_unique<WireVizCable>(ReadWireVizCable(document_, found.entry, builder_));
    }
    part->kind = Kind::Cable;
    part->cable = found.cable.get();
  } else {
    throw DocumentError(document_.PlaceOf(node),
                        definition + " is neither a connector nor a cable nor an arrow" + ReplacedSection());
  }
  return *(parts_[name] = std::move(part));
}

void WireVizHarness::AddPins(Part& part, Definition& definition, const YamlNode& node) {
  const WireVizConnector& connector = *part.connector;
  pins_ += connector.pins.size();
  if (pins_ > MostWireVizPins) {
    throw DocumentError(document_.PlaceOf(node),
                        "the document is too large: more than " + std::to_string(MostWireVizPins) + " pins");
  }
  document_.Spend(node, connector.loops.size());
  const bool own = part.name == shorttest::Trim(definition.entry.first->text);
  for (std::size_t i = 0; i < connector.pins.size(); ++i) {
    const Place place = document_.PlaceOf(own ? *connector.pinNodes[i] : node);
    const std::size_t pin = builder_.AddPin({part.name, connector.pins[i]}, place);
    if (i == 0) part.firstPin = pin;
  }
  for (const auto& [a, b] : connector.loops) builder_.Connect(part.firstPin + a, part.firstPin + b, false);
}

std::size_t WireVizHarness::PinOf(const Part& connector, const std::string& reference,
                                  const YamlNode& node) const {
  return connector.firstPin +
         FindWireVizPin(document_, *connector.connector, connector.name, reference, node);
}

void WireVizHarness::Attach(const Part& connector, std::size_t pin, Part& cable, std::size_t wire,
                            const YamlNode& node) {
  // A shield may well be joined to several pins.
  std::set<std::size_t>& ends = cable.ends[wire];
  const std::size_t end = connector.firstPin + connector.connector->ends[pin - connector.firstPin];
  if (ends.insert(end).second && ends.size() == 3 && wire != 0) {
    builder_.Warn(document_.PlaceOf(node), "wire " + std::to_string(wire) + " of " + cable.name +
                                               " has more than two ends: all its pins are connected");
  }
  const auto [first, isNew] = cable.wires.try_emplace(wire, pin);
  if (isNew || first->second == pin) return;
  const bool joined = cable.joinedWires.insert(wire).second;
  builder_.Connect(first->second, pin, joined);
}

void WireVizHarness::Mate(const Part& a, const Part& b, const YamlNode& node, bool withPins) {
  document_.Spend(node, a.connector->pins.size() + b.connector->pins.size());
  std::vector<std::string> alone;
  for (std::size_t i = 0; i < a.connector->pins.size(); ++i) {
    const auto pin = b.connector->pinIndex.find(a.connector->pins[i]);
    if (pin == b.connector->pinIndex.end()) {
      alone.push_back(a.name + '.' + a.connector->pins[i]);
    } else {
      builder_.Connect(a.firstPin + i, b.firstPin + pin->second.first, false);
    }
  }
  for (const std::string& pin : b.connector->pins) {
    if (!a.connector->pinIndex.contains(pin)) alone.push_back(b.name + '.' + pin);
  }
  builder_.Warn(document_.PlaceOf(node),
                a.name + " and " + b.name + " are mated: pins of the same name are taken as connected" +
                    (alone.empty() ? std::string() : ", not " + ListOf(alone)) +
                    (withPins ? "; the pins written beside the arrow are not used for that" : ""));
}

void WireVizHarness::WarnOfUnused() {
  std::set<std::string> used;
  for (const auto& [name, definition] : definitionOf_) used.insert(definition);
  for (const auto& [kind, definitions] :
       {std::pair("connector ", &connectors_), std::pair("cable ", &cables_)}) {
    for (const auto& [name, definition] : *definitions) {
      if (used.contains(name)) continue;
      builder_.Warn(document_.PlaceOf(*definition.entry.first),
                    kind + name + " is in no connection set: it is not part of the harness");
    }
  }
}

}  // namespace kxbench::documents
