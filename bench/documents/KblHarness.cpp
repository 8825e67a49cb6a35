#include "bench/documents/KblHarness.h"

#include <algorithm>
#include <cctype>
#include <optional>

#include "bench/documents/NameText.h"

namespace kxbench::documents {

namespace {

// What a few references of a small file may ask for must not fill the memory.
constexpr std::size_t MostPinsOfHousings = 30'000;

bool IsOccurrence(std::string_view name) {
  return name == "Connector_occurrence" || name == "Component_box_occurrence";
}

bool IsSplice(const XmlSource& source, pugi::xml_node occurrence) {
  constexpr std::string_view Splice = "splice";
  const std::string usage = KblValue(source, occurrence, "Usage");
  return std::equal(usage.begin(), usage.end(), Splice.begin(), Splice.end(),
                    [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == b; });
}

template <typename Value>
void AddKblId(const XmlSource& source, KblIds<Value>& ids, pugi::xml_node node, Value value) {
  const std::string_view id = source.IdOf(node);
  if (id.empty() || ids.emplace(id, value).second) return;
  throw DocumentError(source.PlaceOf(node), "id " + ShownText(id) + " is there twice");
}

}  // namespace

void KblHarness::Add(pugi::xml_node harness) {
  for (const pugi::xml_node child : harness.children()) {
    if (IsOccurrence(XmlName(child))) ++uses_[KblValue(source_, child, "Id")];
  }
  std::vector<Connector> connectors;
  for (const pugi::xml_node child : harness.children()) {
    if (IsOccurrence(XmlName(child))) connectors.push_back(AddOccurrence(child));
    if (XmlName(child) == "General_wire_occurrence") AddWire(child);
    NoteIgnored(child);
  }
  for (const Connector& connector : connectors) {
    for (const pugi::xml_node child : connector.occurrence.children()) {
      if (XmlName(child) == "Contact_points") AddContactPoint(connector, child);
    }
  }
  for (const pugi::xml_node child : harness.children()) {
    if (XmlName(child) == "Connection") AddConnection(child);
  }
}

void KblHarness::NoteIgnored(pugi::xml_node element) {
  const std::string_view name = XmlName(element);
  if (name == "Assembly_part_occurrence") Ignore(element, "assembly parts, whose insides are not read");
  if (name == "Component_box_occurrence")
    Ignore(element, "component boxes, whose fuses and relays are taken as not fitted");
  if (name == "Module" || name == "Module_configuration" || name == "Harness_configuration") {
    Ignore(element, "modules and configurations, whose variants are taken together");
  }
}

void KblHarness::Ignore(pugi::xml_node element, const std::string& what, std::size_t count) {
  Ignored& ignored = ignored_[what];
  if (ignored.count == 0) ignored.first = element;
  ignored.count += count;
}

void KblHarness::Finish() {
  for (const auto& [what, ignored] : ignored_) {
    builder_.Warn(source_.PlaceOf(ignored.first), what + ": " + std::to_string(ignored.count) +
                                                      (ignored.count > 1 ? ", the first here" : ""));
  }
}

KblHarness::Connector KblHarness::AddOccurrence(pugi::xml_node occurrence) {
  const bool splice = IsSplice(source_, occurrence);
  std::string name = NameOf(occurrence, splice);
  if (splice) builder_.MakeSplice(name);
  builder_.AddConnector(name);
  const std::string_view part = source_.ReferenceIn(XmlChild(occurrence, "Part"));
  std::vector<KblCavity> cavities = parts_.CavitiesOf(occurrence);
  if (!splice) AddUnlisted(occurrence, part, cavities);
  // A socket of a box takes a fuse or a relay: no contact of the harness, unless a contact point is in it.
  const std::set<std::string_view> contacted = KblContactedIn(source_, occurrence);
  std::erase_if(cavities, [&](const KblCavity& cavity) {
    return cavity.socket && !contacted.contains(source_.IdOf(cavity.node));
  });
  AddCavities(name, cavities, parts_.InsideOf(part));
  return {std::move(name), occurrence, splice};
}

void KblHarness::AddUnlisted(pugi::xml_node occurrence, std::string_view part,
                             std::vector<KblCavity>& cavities) {
  const std::size_t unlisted = parts_.UnlistedOf(part, cavities);
  if (unlisted == 0) return;
  // One that lists no slots at all leaves out what has no wire. Where it has contact points, they may be the
  // very same pins.
  if (KblParts::HasSlots(occurrence) || XmlChild(occurrence, "Contact_points")) {
    Ignore(occurrence, "cavities of housings that their connectors do not list, not taken as pins", unlisted);
    return;
  }
  pinsOfHousings_ += unlisted;
  if (pinsOfHousings_ > MostPinsOfHousings) {
    throw DocumentError(source_.PlaceOf(occurrence),
                        "the document is too large: more than 30,000 pins of connectors that list none");
  }
  cavities = parts_.CavitiesIn(part, occurrence);
}

std::string KblHarness::NameOf(pugi::xml_node occurrence, bool splice) {
  std::string name = KblValue(source_, occurrence, "Id");
  if (!name.empty() && !IsName(name)) {
    throw DocumentError(source_.PlaceOf(occurrence), "an Id must be a text of one line");
  }
  // A splice's name is seen by nobody, but it must not swallow a connector of the same name.
  const std::string id(source_.IdOf(occurrence));
  if (splice && (name.empty() || uses_[name] > 1)) name += " (" + id + ')';
  if (name.empty()) throw DocumentError(source_.PlaceOf(occurrence), "a connector without an Id");
  if (!named_.insert(name).second) {
    builder_.Warn(source_.PlaceOf(occurrence), name + " is there more than once: taken as one connector");
  }
  return name;
}

void KblHarness::AddCavities(const std::string& connector, const std::vector<KblCavity>& cavities,
                             const KblIds<std::size_t>& inside) {
  std::set<std::string> numbers;
  std::set<std::string> slots;
  for (const KblCavity& cavity : cavities) {
    numbers.insert(cavity.number);
    slots.insert(cavity.slot);
  }
  const bool bySlot = numbers.size() < cavities.size() && slots.size() > 1;
  std::set<std::string> own;
  std::map<std::size_t, std::size_t> insidePins;
  for (const KblCavity& cavity : cavities) {
    const Pin pin{connector, bySlot ? cavity.slot + '_' + cavity.number : cavity.number};
    if (!own.insert(pin.pin).second) {
      throw DocumentError(source_.PlaceOf(cavity.node),
                          "cavity " + pin.pin + " of " + connector + " is there twice");
    }
    pins_.insert(pin);
    const std::size_t number = builder_.AddPin(pin, source_.PlaceOf(cavity.node));
    if (cavity.listed) AddKblId(source_, cavities_, cavity.node, number);
    if (const auto group = inside.find(cavity.part); group != inside.end()) {
      builder_.Connect(insidePins.emplace(group->second, number).first->second, number, false);
    }
    if (cavity.mated) Ignore(cavity.node, "cavities mated with others, not taken as connected");
  }
  if (bySlot) {
    builder_.Warn(
        source_.PlaceOf(cavities.front().node),
        connector + " has cavities of the same number in several slots: its pins are called SLOT_NUMBER");
  }
}

void KblHarness::AddContactPoint(const Connector& connector, pugi::xml_node point) {
  std::optional<std::size_t> first;
  for (const pugi::xml_node child : point.children()) {
    if (XmlName(child) != "Contacted_cavity") continue;
    for (const std::string_view id : KblIdsIn(source_.ReferenceIn(child))) {
      const auto cavity = cavities_.find(id);
      if (cavity == cavities_.end()) {
        throw DocumentError(source_.PlaceOf(child), "no connector has a cavity with the id " + ShownText(id));
      }
      // One contact in several cavities connects them.
      if (first) builder_.Connect(*first, cavity->second, false);
      if (!first) first = cavity->second;
    }
  }
  if (!first) first = PinOfPointWithoutCavity(connector, point);
  AddKblId(source_, points_, point, *first);
}

std::size_t KblHarness::PinOfPointWithoutCavity(const Connector& connector, pugi::xml_node point) {
  Pin pin{connector.name, KblValue(source_, point, "Id")};
  if (pin.pin.empty() || pins_.contains(pin)) {
    pin.pin = source_.IdOf(point);
    // The pins of splices are seen by nobody.
    if (!connector.splice) {
      Ignore(
          point,
          "contact points without a cavity and without an Id of their own, called by their id in the file");
    }
  }
  if (!IsName(pin.pin) || !pins_.insert(pin).second) {
    throw DocumentError(source_.PlaceOf(point),
                        "a contact point of " + connector.name + " without a cavity needs an Id of its own");
  }
  return builder_.AddPin(pin, source_.PlaceOf(point));
}

void KblHarness::AddWire(pugi::xml_node occurrence) {
  AddKblId(source_, wires_, occurrence, false);
  for (const pugi::xml_node core : occurrence.children()) {
    if (XmlName(core) == "Core_occurrence") AddKblId(source_, wires_, core, false);
  }
}

void KblHarness::AddConnection(pugi::xml_node connection) {
  CheckWire(connection);
  const std::string signal = KblValue(source_, connection, "Signal_name");
  std::optional<std::size_t> first;
  std::size_t ends = 0;
  for (const pugi::xml_node child : connection.children()) {
    if (XmlName(child) != "Extremities") continue;
    const std::size_t pin = PinOfExtremity(child);
    ++ends;
    if (first) {
      builder_.Connect(*first, pin, ends == 2);
    } else {
      first = pin;
      if (IsName(signal)) builder_.NameNet(pin, signal);
    }
  }
  if (ends < 2) Ignore(connection, "connections with fewer than two ends");
}

std::size_t KblHarness::PinOfExtremity(pugi::xml_node extremity) const {
  const std::string_view id = source_.ReferenceIn(XmlChild(extremity, "Contact_point"));
  if (id.empty()) throw DocumentError(source_.PlaceOf(extremity), "an extremity without its Contact_point");
  const auto point = points_.find(id);
  if (point == points_.end()) {
    throw DocumentError(source_.PlaceOf(extremity),
                        "no connector has a contact point with the id " + ShownText(id));
  }
  return point->second;
}

void KblHarness::CheckWire(pugi::xml_node connection) {
  const std::string_view id = source_.ReferenceIn(XmlChild(connection, "Wire"));
  const auto wire = wires_.find(id);
  if (wire == wires_.end()) {
    Ignore(connection, "connections without a wire that the harness has");
  } else if (wire->second) {
    Ignore(connection, "connections by the wire of another, taken as wires of their own");
  } else {
    wire->second = true;
  }
}

}  // namespace kxbench::documents
