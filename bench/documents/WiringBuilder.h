#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "bench/documents/WiringDocument.h"

namespace kxbench::documents {

/// Makes a WiringDocument of what a reader finds, in the order in which it finds it. Takes time in proportion
/// to what is added, but for logarithms.
class WiringBuilder {
 public:
  /// Puts a connector before those that are mentioned later. It counts only if it gets pins.
  void AddConnector(const std::string& connector);

  /// A number for the pin, the same whenever it is mentioned again.
  std::size_t AddPin(const Pin& pin, const Place& place);

  /// Connects two pins. One wire of the document, where `wire` says so: a loop or a splice's inside is none.
  void Connect(std::size_t a, std::size_t b, bool wire = true);

  /// All pins of `connector` are one splice: connected with one another, and no contacts of the harness.
  void MakeSplice(const std::string& connector);

  /// What the document calls the net of this pin. The first name of a net counts.
  void NameNet(std::size_t pin, const std::string& name);

  void Warn(const Place& place, const std::string& text);

  /// What was added. The builder is empty afterwards. Throws DocumentError where two pins have the same
  /// PinText: pin 1.2 of connector X1 and pin 2 of connector X1.1.
  WiringDocument Take();

 private:
  std::size_t RootOf(std::size_t pin);
  void RefuseSharedNames() const;

  std::vector<PlacedPin> pins_;
  std::vector<std::size_t> parents_;
  std::map<Pin, std::size_t> numbers_;
  std::unordered_map<std::string, std::size_t> connectors_;  // in the order of their first mention
  std::vector<std::pair<std::size_t, std::string>> names_;
  std::set<std::string> splices_;
  std::size_t wires_ = 0;
  std::vector<DocumentWarning> warnings_;
};

}  // namespace kxbench::documents
