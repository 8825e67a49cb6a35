#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "bench/documents/KblParts.h"
#include "bench/documents/WiringBuilder.h"
#include "bench/documents/XmlSource.h"

namespace kxbench::documents {

/// Makes pins, nets and splices of the harnesses in a KBL file.
class KblHarness {
 public:
  /// All must outlive this.
  KblHarness(const XmlSource& source, const KblParts& parts, WiringBuilder& builder)
      : source_(source), parts_(parts), builder_(builder) {}

  /// Adds what a Harness element holds. Throws DocumentError.
  void Add(pugi::xml_node harness);

  /// Warns of what was met and has no effect. To be called at the end.
  void Finish();

 private:
  struct Connector {
    std::string name;
    pugi::xml_node occurrence;
    bool splice;
  };

  void Ignore(pugi::xml_node element, const std::string& what, std::size_t count = 1);
  void NoteIgnored(pugi::xml_node element);
  Connector AddOccurrence(pugi::xml_node occurrence);
  void AddUnlisted(pugi::xml_node occurrence, std::string_view part, std::vector<KblCavity>& cavities);
  std::string NameOf(pugi::xml_node occurrence, bool splice);
  void AddCavities(const std::string& connector, const std::vector<KblCavity>& cavities,
                   const KblIds<std::size_t>& inside);
  void AddContactPoint(const Connector& connector, pugi::xml_node point);
  std::size_t PinOfPointWithoutCavity(const Connector& connector, pugi::xml_node point);
  void AddWire(pugi::xml_node occurrence);
  void AddConnection(pugi::xml_node connection);
  std::size_t PinOfExtremity(pugi::xml_node extremity) const;
  void CheckWire(pugi::xml_node connection);

  struct Ignored {
    pugi::xml_node first;
    std::size_t count = 0;
  };

  const XmlSource& source_;
  const KblParts& parts_;
  WiringBuilder& builder_;
  std::map<std::string, std::size_t> uses_;  // of a name, by occurrences
  std::set<std::string> named_;
  std::set<Pin> pins_;
  std::size_t pinsOfHousings_ = 0;
  KblIds<std::size_t> cavities_;  // the builder's pins
  KblIds<std::size_t> points_;
  KblIds<bool> wires_;  // whether a connection has used it
  std::map<std::string, Ignored> ignored_;
};

}  // namespace kxbench::documents
