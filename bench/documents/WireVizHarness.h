#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "bench/documents/WireVizParts.h"
#include "bench/documents/WiringBuilder.h"
#include "bench/documents/YamlDocument.h"

namespace kxbench::documents {

/// The parts of a WireViz harness: connectors and cables, made from their definitions where a connection set
/// first names them, and what has been connected.
class WireVizHarness {
 public:
  enum class Kind { Connector, Cable, Arrow };

  struct Part {
    Kind kind = Kind::Arrow;
    std::string name;
    const WireVizConnector* connector = nullptr;
    const WireVizCable* cable = nullptr;
    std::size_t firstPin = 0;                            // of a connector, in the builder
    std::unordered_map<std::size_t, std::size_t> wires;  // of a cable: a pin on each wire that has one
    std::set<std::size_t> joinedWires;
    std::unordered_map<std::size_t, std::set<std::size_t>> ends;  // of its wires: pins that no loop joins
  };

  /// `document` must outlive this. Throws DocumentError where a section is of the wrong kind.
  WireVizHarness(const YamlDocument& document, WiringBuilder& builder);

  /// The part that a connection set names at `node`: "X1", "T.X1", "T." or an arrow. It exists as long as the
  /// harness. Throws DocumentError for what is not defined.
  Part& Find(const YamlNode& node);

  /// Pin of the builder that `reference` names on a connector.
  std::size_t PinOf(const Part& connector, const std::string& reference, const YamlNode& node) const;

  /// Connects a pin of a connector to a wire of a cable (0: the shield) and so to all that is on that wire.
  /// Warns of a third end, at `node`: a number that is typed twice joins two nets.
  void Attach(const Part& connector, std::size_t pin, Part& cable, std::size_t wire, const YamlNode& node);

  /// Joins the pins of two connectors that have the same id, and says so at `node`. `withPins`: the set names
  /// pins of them, which make no difference.
  void Mate(const Part& a, const Part& b, const YamlNode& node, bool withPins);

  /// Warns of definitions that no connection set has named.
  void WarnOfUnused();

 private:
  struct Definition {
    YamlEntry entry;
    std::unique_ptr<WireVizConnector> connector;
    std::unique_ptr<WireVizCable> cable;
  };
  using Definitions = std::map<std::string, Definition, std::less<>>;

  const YamlNode* Section(const std::string& name) const;
  Definitions DefinitionsOf(const std::string& section) const;
  std::string SeparatorOption() const;
  std::pair<std::string, std::string> TemplateAndName(const std::string& text, const YamlNode& node);
  std::string ReplacedSection() const;
  Part& Make(const std::string& definition, const std::string& name, const YamlNode& node);
  void AddPins(Part& part, Definition& definition, const YamlNode& node);

  const YamlDocument& document_;
  WiringBuilder& builder_;
  Definitions connectors_;
  Definitions cables_;
  std::string separator_;
  std::map<std::string, std::unique_ptr<Part>> parts_;
  std::map<std::string, std::string> definitionOf_;  // of a part's name
  std::map<std::string, std::size_t> unnamed_;       // how many, by definition
  Part arrow_;
  std::size_t pins_ = 0;
};

/// Whether a text is an arrow between pins (--, <--, -->, <-->) or between connectors (==, <==, ==>, <==>).
bool IsPinArrow(const std::string& text);
bool IsConnectorArrow(const std::string& text);

}  // namespace kxbench::documents
