#include "bench/documents/KblParts.h"

#include "bench/documents/NameText.h"

namespace kxbench::documents {

namespace {

// Boxes have connectors, those have slots, those have cavities: nothing is nested deeper.
constexpr int DeepestSlot = 4;

bool IsSlotElement(std::string_view name) {
  return name == "Slots" || name == "Component_slots" || name == "Component_box_connectors";
}

bool IsCavityElement(std::string_view name) { return name == "Cavities" || name == "Component_cavities"; }

}  // namespace

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
  std::size_t slots = 0;
  for (const pugi::xml_node child : element.children()) {
    if (IsSlotElement(XmlName(child))) {
      ++slots;
      const auto known = slotNames_.find(XmlRawText(XmlChild(child, "Part")));
      const bool named = known != slotNames_.end() && IsName(known->second);
      const std::string name = named ? known->second : std::to_string(slots);
      std::string path = slot.empty() ? slot : slot + '_';
      path += name;
      Collect(child, path, depth + 1, cavities);
    } else if (IsCavityElement(XmlName(child))) {
      cavities.push_back(CavityOf(child, slot));
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
  return {slot, number->second, cavity};
}

}  // namespace kxbench::documents
