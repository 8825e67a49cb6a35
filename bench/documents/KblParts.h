#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "bench/documents/XmlSource.h"

namespace kxbench::documents {

/// Things by the ids that an XML file gives them.
template <typename Value>
using KblIds = std::unordered_map<std::string_view, Value>;

/// A cavity of a connector, as an occurrence of it in the harness has it.
struct KblCavity {
  std::string slot;    ///< name of its slot; the slot's number where it has none
  std::string number;  ///< as the housing names it
  pugi::xml_node node;
};

/// The parts of a KBL file that a harness refers to: housings with their slots and cavities.
class KblParts {
 public:
  /// `source` must outlive this.
  explicit KblParts(const XmlSource& source) : source_(source) {}

  /// Notes the slots and cavities of a Connector_housing or a Component_box. Throws DocumentError.
  void AddHousing(pugi::xml_node housing) { AddBelow(housing, 0); }

  /// The cavities of a Connector_occurrence or a Component_box_occurrence, in the file's order. Throws
  /// DocumentError where one refers to a cavity that no housing has.
  std::vector<KblCavity> CavitiesOf(pugi::xml_node occurrence) const;

 private:
  void AddBelow(pugi::xml_node element, int depth);
  void Collect(pugi::xml_node element, const std::string& slot, int depth,
               std::vector<KblCavity>& cavities) const;
  KblCavity CavityOf(pugi::xml_node cavity, const std::string& slot) const;

  const XmlSource& source_;
  KblIds<std::string> slotNames_;
  KblIds<std::string> cavityNumbers_;
};

}  // namespace kxbench::documents
