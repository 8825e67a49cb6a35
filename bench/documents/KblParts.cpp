#include "bench/documents/KblParts.h"

#include <algorithm>
#include <optional>
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

void KblParts::AddBox(pugi::xml_node box) {
  AddBelow(box, 0);
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
  insides_.emplace(XmlAttribute(box, "id"), std::move(members));
}

std::vector<std::string_view> KblParts::ConnectedInside(pugi::xml_node connection) const {
  std::vector<std::string_view> ids;
  for (const pugi::xml_node child : connection.children()) {
    if (!IsCavityElement(XmlName(child))) continue;
    for (const std::string_view id : KblIdsIn(XmlRawText(child))) {
      if (!cavityNumbers_.contains(id)) {
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

void KblParts::AddBelow(pugi::xml_node element, int depth) {
  if (depth > DeepestSlot) return;
  for (const pugi::xml_node child : element.children()) {
    const std::string_view id = XmlAttribute(child, "id");
    bool isNew = true;
    if (IsSlotElement(XmlName(child))) {
      if (!id.empty()) isNew = slotNames_.emplace(id, source_.ChildText(child, "Id")).second;
      AddBelow(child, depth + 1);
    } else if (IsCavityElement(XmlName(child))) {
      if (!id.empty()) isNew = cavityNumbers_.emplace(id, source_.ChildText(child, "Cavity_number")).second;
    }
    if (!isNew) throw DocumentError(source_.PlaceOf(child), "id " + ShownText(id) + " is there twice");
  }
}

std::vector<KblCavity> KblParts::CavitiesOf(pugi::xml_node occurrence) const {
  std::vector<KblCavity> cavities;
  Collect(occurrence, {}, 0, cavities);
  return cavities;
}

void KblParts::Collect(pugi::xml_node element, const std::string& slot, int depth,
                       std::vector<KblCavity>& cavities) const {
  if (depth > DeepestSlot) return;
  const auto siblings = element.children();
  // What a connector of a box is called says enough, where it has one slot.
  const bool only = depth > 0 && std::count_if(siblings.begin(), siblings.end(), [](pugi::xml_node child) {
                                   return IsSlotElement(XmlName(child));
                                 }) == 1;
  const bool matedSlot = static_cast<bool>(XmlChild(element, "Mated_slots"));
  std::size_t slots = 0;
  for (const pugi::xml_node child : siblings) {
    if (IsSlotElement(XmlName(child))) {
      ++slots;
      const auto known = slotNames_.find(XmlRawText(XmlChild(child, "Part")));
      const bool named = known != slotNames_.end() && IsName(known->second);
      const std::string name = named ? known->second : std::to_string(slots);
      std::string path = slot.empty() ? slot : slot + '_';
      path += name;
      Collect(child, only ? slot : path, depth + 1, cavities);
    } else if (IsCavityElement(XmlName(child))) {
      KblCavity cavity = CavityOf(child, slot);
      cavity.mated = matedSlot || XmlChild(child, "Mated_cavities");
      cavities.push_back(std::move(cavity));
    }
  }
}

KblCavity KblParts::CavityOf(pugi::xml_node cavity, const std::string& slot) const {
  const std::string_view part = XmlRawText(XmlChild(cavity, "Part"));
  const auto number = cavityNumbers_.find(part);
  if (number == cavityNumbers_.end()) {
    throw DocumentError(source_.PlaceOf(cavity),
                        part.empty() ? std::string("a cavity without its Part")
                                     : "no housing has a cavity with the id " + ShownText(part));
  }
  if (!IsName(number->second)) {
    throw DocumentError(source_.PlaceOf(cavity),
                        "cavity " + ShownText(part) + " needs a Cavity_number of one line");
  }
  return {slot, number->second, part, cavity, IsSocketElement(XmlName(cavity)), false};
}

}  // namespace kxbench::documents
