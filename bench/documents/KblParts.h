#pragma once

#include <cstddef>
#include <set>
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

/// The ids of the cavities that an occurrence's contact points are in.
std::set<std::string_view> KblContactedIn(const XmlSource& source, pugi::xml_node occurrence);

/// The text of the first child of that name; empty when there is none, or when it is the format's "/NULL".
std::string KblValue(const XmlSource& source, pugi::xml_node element, std::string_view name);

/// A cavity of a connector, as an occurrence of it in the harness has it.
struct KblCavity {
  std::string slot;       ///< name of its slot; the slot's number where it has none
  std::string number;     ///< as the housing names it
  std::string_view part;  ///< id of the housing's cavity
  pugi::xml_node node;
  bool socket;  ///< of a box, for a fuse or a relay
  bool mated;   ///< with a cavity of another connector, by itself or with its slot
  bool listed;  ///< by the occurrence; else its housing alone has it
};

/// The parts of a KBL file that a harness refers to: housings and boxes with their slots and cavities.
class KblParts {
 public:
  /// `source` must outlive this.
  explicit KblParts(const XmlSource& source) : source_(source) {}

  /// Notes the slots and cavities of a Connector_housing. Throws DocumentError.
  void AddHousing(pugi::xml_node housing);

  /// Notes those of a Component_box, and what its own connections connect. Throws DocumentError.
  void AddBox(pugi::xml_node box);

  /// The cavities of a Connector_occurrence or a Component_box_occurrence, in the file's order. Throws
  /// DocumentError where one refers to a cavity that no housing has.
  std::vector<KblCavity> CavitiesOf(pugi::xml_node occurrence) const;

  /// Whether an occurrence has slots, be they empty.
  static bool HasSlots(pugi::xml_node occurrence);

  /// How many cavities of a housing or a box an occurrence of it does not list, sockets not counted; `listed`
  /// is what CavitiesOf gives. 0 for an id that is neither.
  std::size_t UnlistedOf(std::string_view part, const std::vector<KblCavity>& listed) const;

  /// The cavities of a housing or a box, in the file's order, as an occurrence at `occurrence` that lists
  /// none has them; without sockets. Throws DocumentError for one without a number.
  std::vector<KblCavity> CavitiesIn(std::string_view part, pugi::xml_node occurrence) const;

  /// Which cavities of a box are connected inside it: those of the same number. By ids of cavities; the
  /// others are connected with none. Nothing for an id that is no box.
  const KblIds<std::size_t>& InsideOf(std::string_view box) const;

 private:
  struct Part {
    pugi::xml_node node;
    std::size_t cavities = 0;  // without sockets
  };
  struct PartCavity {
    std::string number;
    std::string_view part;
  };

  std::string_view AddPart(pugi::xml_node node);
  void AddBelow(pugi::xml_node element, std::string_view id, Part& part, int depth);
  /// An element of an occurrence, or of a housing itself, that slots and cavities are below.
  struct Level {
    pugi::xml_node element;
    bool listed;
    std::string slot = {};
    int depth = 0;
  };
  void Collect(const Level& level, std::vector<KblCavity>& cavities) const;
  std::string_view PartOf(pugi::xml_node element, bool listed) const;
  KblCavity CavityOf(pugi::xml_node cavity, const Level& level) const;
  std::vector<std::string_view> ConnectedInside(pugi::xml_node connection) const;

  const XmlSource& source_;
  KblIds<std::string> slotNames_;
  KblIds<PartCavity> cavities_;
  KblIds<Part> parts_;
  KblIds<KblIds<std::size_t>> insides_;
  mutable KblIds<std::vector<KblCavity>> ownCavities_;  // of the parts that were asked for
};

}  // namespace kxbench::documents
