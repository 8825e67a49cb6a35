#include "bench/documents/KblParts.h"

#include <algorithm>
#include <optional>
#include <unordered_set>
#include <utility>

#include "bench/documents/NameText.h"

namespace kxbench::documents {

namespace {

// Boxes have connectors, those have slots, those have cavities: nothing is nested deeper.
constexpr int DeepestSlot = 4;

bool IsSlotElement(std::string_view name) {
  return name == "Slots" || name == "Integrated_slots" || name == "Component_slots" ||
         name == "Component_box_connectors";
}

bool IsSocketElement(std::string_view name) { return name == "Component_cavities"; }

bool IsCavityElement(std::string_view name) { return name == "Cavities" || IsSocketElement(name); }

std::size_t GroupOf(std::vector<std::size_t>& parents, std::size_t member) {
  while (parents[member] != member) {
    parents[member] = parents[parents[member]];
    member = parents[member];
  }
  return member;
}

}  // namespace

std::vector<std::string_view> KblIdsIn(std::string_view references) {
  constexpr std::string_view blanks = " \t\r\n";
  std::vector<std::string_view> ids;
  while (true) {
    const std::size_t start = references.find_first_not_of(blanks);
    if (start == std::string_view::npos) return ids;
    references.remove_prefix(start);
    const std::size_t end = std::min(references.find_first_of(blanks), references.size());
    ids.push_back(references.substr(0, end));
    references.remove_prefix(end);
  }
}

std::set<std::string_view> KblContactedIn(const XmlSource& source, pugi::xml_node occurrence) {
  std::set<std::string_view> contacted;
  for (const pugi::xml_node point : occurrence.children()) {
    if (XmlName(point) != "Contact_points") continue;
    for (const pugi::xml_node child : point.children()) {
      if (XmlName(child) != "Contacted_cavity") continue;
      for (const std::string_view id : KblIdsIn(source.ReferenceIn(child))) contacted.insert(id);
    }
  }
  return contacted;
}

std::string KblValue(const XmlSource& source, pugi::xml_node element, std::string_view name) {
  std::string text = source.ChildText(element, name);
  if (text == "/NULL") text.clear();
  return text;
}

void KblParts::AddHousing(pugi::xml_node housing) { AddPart(housing); }

std::string_view KblParts::AddPart(pugi::xml_node node) {
  const std::string_view id = source_.IdOf(node);
  Part part{node};
  AddBelow(node, id, part, 0);
  parts_.emplace(id, part);
  return id;
}

void KblParts::AddBox(pugi::xml_node box) {
  const std::string_view boxId = AddPart(box);
  KblIds<std::size_t> members;
  std::vector<std::size_t> parents;
  for (const pugi::xml_node child : box.children()) {
    if (XmlName(child) != "Connections") continue;
    std::optional<std::size_t> first;
    for (const std::string_view id : ConnectedInside(child)) {
      const auto [member, isNew] = members.emplace(id, parents.size());
      if (isNew) parents.push_back(member->second);
      const std::size_t group = GroupOf(parents, member->second);
      if (first) parents[group] = GroupOf(parents, *first);
      if (!first) first = group;
    }
  }
  for (auto& [id, group] : members) group = GroupOf(parents, group);
  insides_.emplace(boxId, std::move(members));
}

std::vector<std::string_view> KblParts::ConnectedInside(pugi::xml_node connection) const {
  std::vector<std::string_view> ids;
  for (const pugi::xml_node child : connection.children()) {
    if (!IsCavityElement(XmlName(child))) continue;
    for (const std::string_view id : KblIdsIn(source_.ReferenceIn(child))) {
      if (!cavities_.contains(id)) {
        throw DocumentError(source_.PlaceOf(child), "no housing has a cavity with the id " + ShownText(id));
      }
      ids.push_back(id);
    }
  }
  return ids;
}

const KblIds<std::size_t>& KblParts::InsideOf(std::string_view box) const {
  static const KblIds<std::size_t> nothing;
  const auto inside = insides_.find(box);
  return inside == insides_.end() ? nothing : inside->second;
}

void KblParts::AddBelow(pugi::xml_node element, std::string_view id, Part& part, int depth) {
  if (depth > DeepestSlot) return;
  for (const pugi::xml_node child : element.children()) {
    const bool slot = IsSlotElement(XmlName(child));
    if (!slot && !IsCavityElement(XmlName(child))) continue;
    const std::string_view own = source_.IdOf(child);
    bool isNew = true;
    if (slot) {
      if (!own.empty()) isNew = slotNames_.emplace(own, KblValue(source_, child, "Id")).second;
      AddBelow(child, id, part, depth + 1);
    } else {
      if (!IsSocketElement(XmlName(child))) ++part.cavities;
      if (!own.empty()) {
        isNew = cavities_.emplace(own, PartCavity{KblValue(source_, child, "Cavity_number"), id}).second;
      }
    }
    if (!isNew) throw DocumentError(source_.PlaceOf(child), "id " + ShownText(own) + " is there twice");
  }
}

std::vector<KblCavity> KblParts::CavitiesOf(pugi::xml_node occurrence) const {
  std::vector<KblCavity> cavities;
  Collect({occurrence, true}, cavities);
  return cavities;
}

bool KblParts::HasSlots(pugi::xml_node occurrence) {
  const auto children = occurrence.children();
  return std::any_of(children.begin(), children.end(), [](pugi::xml_node child) {
    return IsSlotElement(XmlName(child)) || IsCavityElement(XmlName(child));
  });
}

std::size_t KblParts::UnlistedOf(std::string_view part, const std::vector<KblCavity>& listed) const {
  const auto known = parts_.find(part);
  if (part.empty() || known == parts_.end()) return 0;
  std::unordered_set<std::string_view> ids;
  for (const KblCavity& cavity : listed) {
    if (!cavity.socket && cavities_.at(cavity.part).part == part) ids.insert(cavity.part);
  }
  return known->second.cavities - std::min(known->second.cavities, ids.size());
}

std::vector<KblCavity> KblParts::CavitiesIn(std::string_view part, pugi::xml_node occurrence) const {
  const auto [known, isNew] = ownCavities_.try_emplace(part);
  if (isNew) {
    Collect({parts_.at(part).node, false}, known->second);
    // A box of a thousand sockets shall not cost each of its occurrences their copies.
    std::erase_if(known->second, [](const KblCavity& cavity) { return cavity.socket; });
  }
  std::vector<KblCavity> cavities = known->second;
  for (KblCavity& cavity : cavities) cavity.node = occurrence;
  return cavities;
}

void KblParts::Collect(const Level& level, std::vector<KblCavity>& cavities) const {
  if (level.depth > DeepestSlot) return;
  const auto siblings = level.element.children();
  // What a connector of a box is called says enough, where it has one slot.
  const bool only = level.depth > 0 &&
                    std::count_if(siblings.begin(), siblings.end(),
                                  [](pugi::xml_node child) { return IsSlotElement(XmlName(child)); }) == 1;
  const bool matedSlot = static_cast<bool>(XmlChild(level.element, "Mated_slots"));
  std::size_t slots = 0;
  for (const pugi::xml_node child : siblings) {
    if (IsSlotElement(XmlName(child))) {
      ++slots;
      const auto known = slotNames_.find(PartOf(child, level.listed));
      const bool named = known != slotNames_.end() && IsName(known->second);
      const std::string name = named ? known->second : std::to_string(slots);
      std::string path = level.slot.empty() ? level.slot : level.slot + '_';
      path += name;
      Collect({child, level.listed, only ? level.slot : path, level.depth + 1}, cavities);
    } else if (IsCavityElement(XmlName(child))) {
      KblCavity cavity = CavityOf(child, level);
      cavity.mated = matedSlot || XmlChild(child, "Mated_cavities");
      cavities.push_back(std::move(cavity));
    }
  }
}

std::string_view KblParts::PartOf(pugi::xml_node element, bool listed) const {
  return listed ? source_.ReferenceIn(XmlChild(element, "Part")) : source_.IdOf(element);
}

KblCavity KblParts::CavityOf(pugi::xml_node cavity, const Level& level) const {
  const std::string_view part = PartOf(cavity, level.listed);
  const auto known = cavities_.find(part);
  if (level.listed && known == cavities_.end()) {
    throw DocumentError(source_.PlaceOf(cavity),
                        part.empty() ? std::string("a cavity without its Part")
                                     : "no housing has a cavity with the id " + ShownText(part));
  }
  const std::string number = level.listed ? known->second.number : KblValue(source_, cavity, "Cavity_number");
  if (!IsName(number)) {
    throw DocumentError(source_.PlaceOf(cavity),
                        "cavity " + ShownText(part) + " needs a Cavity_number of one line");
  }
  return {level.slot, number, part, cavity, IsSocketElement(XmlName(cavity)), false, level.listed};
}

}  // namespace kxbench::documents
