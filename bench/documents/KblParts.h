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

/// The ids of a reference that may name several.
std::vector<std::string_view> KblIdsIn(std::string_view references);

/// A cavity of a connector, as an occurrence of it in the harness has it.
struct KblCavity {
  std::string slot;       ///< name of its slot; the slot's number where it has none
  std::string number;     ///< as the housing names it
  std::string_view part;  ///< id of the housing's cavity
  pugi::xml_node node;
  bool socket;  ///< of a box, for a fuse or a relay
  bool mated;   ///< with a cavity of another connector, by itself or with its slot
};

/// The parts of a KBL file that a harness refers to: housings and boxes with their slots and cavities.
class KblParts {
 public:
  /// `source` must outlive this.
  explicit KblParts(const XmlSource& source) : source_(source) {}

  /// Notes the slots and cavities of a Connector_housing. Throws DocumentError.
  void AddHousing(pugi::xml_node housing) { AddBelow(housing, 0); }

  /// Notes those of a Component_box, and what its own connections connect. Throws DocumentError.
  void AddBox(pugi::xml_node box);

  /// The cavities of a Connector_occurrence or a Component_box_occurrence, in the file's order. Throws
  /// DocumentError where one refers to a cavity that no housing has.
  std::vector<KblCavity> CavitiesOf(pugi::xml_node occurrence) const;

  /// Which cavities of a box are connected inside it: those of the same number. By ids of cavities; the
  /// others are connected with none. Nothing for an id that is no box.
  const KblIds<std::size_t>& InsideOf(std::string_view box) const;

 private:
  void AddBelow(pugi::xml_node element, int depth);
  void Collect(pugi::xml_node element, const std::string& slot, int depth,
               std::vector<KblCavity>& cavities) const;
  KblCavity CavityOf(pugi::xml_node cavity, const std::string& slot) const;
  std::vector<std::string_view> ConnectedInside(pugi::xml_node connection) const;

  const XmlSource& source_;
  KblIds<std::string> slotNames_;
  KblIds<std::string> cavityNumbers_;
  KblIds<KblIds<std::size_t>> insides_;
};

}  // namespace kxbench::documents
