#include "bench/documents/WireVizReader.h"

#include <charconv>
#include <cstddef>
#include <optional>
#include <set>
#include <string_view>

#include "bench/documents/NameText.h"
#include "bench/documents/WireVizHarness.h"
#include "bench/documents/WireVizParts.h"
#include "bench/documents/YamlDocument.h"
#include "text/Trim.h"

namespace kxbench::documents {

namespace {

// All in all, over all connection sets.
constexpr std::size_t MostWireVizPoints = 500'000;

using Part = WireVizHarness::Part;
using Kind = WireVizHarness::Kind;

/// Where one path of a connection set passes one of its items.
struct WireVizPoint {
  Part* part = nullptr;
  std::string reference;  ///< pin or wire; empty where none is given
  const YamlNode* node = nullptr;
};

/// One item of a connection set, for all paths.
struct WireVizItem {
  const YamlNode* node = nullptr;
  Kind kind = Kind::Arrow;
  std::vector<WireVizPoint> points;
};

std::optional<std::size_t> RangeEnd(std::string_view text) {
  text = shorttest::Trim(text);
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

/// The two ends of "1-4" or "4-1".
std::optional<std::pair<std::size_t, std::size_t>> RangeOf(const std::string& text) {
  const std::size_t dash = text.find('-');
  if (dash == std::string::npos) return std::nullopt;
  const auto first = RangeEnd(std::string_view(text).substr(0, dash));
  const auto last = RangeEnd(std::string_view(text).substr(dash + 1));
  if (!first || !last) return std::nullopt;
  return std::pair(*first, *last);
}

const char* KindText(Kind kind) {
  switch (kind) {
    case Kind::Connector:
      return "a connector";
    case Kind::Cable:
      return "a cable";
    case Kind::Arrow:
      break;
  }
  return "an arrow";
}

/// Reads the connection sets into a harness.
class WireVizConnections {
 public:
  WireVizConnections(const YamlDocument& document, WiringBuilder& builder)
      : document_(document), builder_(builder), harness_(document, builder) {}

  void Read() {
    for (const YamlNode* const set : Sets()) ReadSet(*set);
    harness_.WarnOfUnused();
  }

 private:
  [[noreturn]] void Fail(const YamlNode& node, const std::string& text) const {
    throw DocumentError(document_.PlaceOf(node), text);
  }

  const std::vector<const YamlNode*>& Sets() const {
    const YamlNode* section = nullptr;
    const YamlNode* sets = nullptr;
    for (const auto& [key, value] : document_.EntriesOf(*document_.Root())) {
      if (key->text != "connections") continue;
      section = key;
      sets = value;
    }
    if (sets == nullptr) Fail(*document_.Root(), "there is no section connections: nothing is connected");
    const bool none = sets->kind == YamlNode::Kind::Sequence && sets->items.empty();
    if (sets->empty || none) Fail(*section, "section connections is empty: nothing is connected");
    if (sets->kind != YamlNode::Kind::Sequence)
      Fail(*sets, "section connections must be a list of connection sets");
    return sets->items;
  }

  void ReadSet(const YamlNode& set) {
    if (set.kind != YamlNode::Kind::Sequence || set.items.empty()) {
      Fail(set, "a connection set must be a list of connectors and cables");
    }
    std::vector<WireVizItem> items;
    for (const YamlNode* const node : set.items) items.push_back(ItemOf(*node));
    const std::size_t paths = PathsOf(items);
    for (WireVizItem& item : items) Resolve(item, paths);
    CheckOrder(items);
    for (std::size_t i = 0; i < items.size(); ++i) Connect(items, i);
    if (items.size() > 1 || items.front().kind != Kind::Connector) return;
    for (const WireVizPoint& point : items.front().points) {
      if (!point.reference.empty()) PinAt(point);
    }
  }

  /// The item's own points, without their parts. A name alone has none yet.
  WireVizItem ItemOf(const YamlNode& node) {
    WireVizItem item{&node, Kind::Arrow, {}};
    if (node.kind == YamlNode::Kind::Sequence) {
      if (node.items.empty()) Fail(node, "an empty list in a connection set");
      for (const YamlNode* const name : node.items) AddPoint(item, {}, *name);
    } else if (node.kind == YamlNode::Kind::Map) {
      if (node.items.size() != 2) Fail(node, "one connector or cable, and its pins, was expected");
      AddReferences(item, *node.items[1]);
    }
    return item;
  }

  void AddReferences(WireVizItem& item, const YamlNode& references) {
    if (references.kind != YamlNode::Kind::Sequence) {
      AddReference(item, references);
      return;
    }
    if (references.items.empty()) Fail(references, "no pin and no wire is named here");
    for (const YamlNode* const reference : references.items) AddReference(item, *reference);
  }

  void AddReference(WireVizItem& item, const YamlNode& node) {
    const std::string text = WireVizName(document_, node, "a pin or a wire");
    const auto range = RangeOf(text);
    if (!range) {
      AddPoint(item, text, node);
      return;
    }
    const auto [first, last] = *range;
    AddPoint(item, std::to_string(first), node);
    for (std::size_t number = first; number < last;) AddPoint(item, std::to_string(++number), node);
    for (std::size_t number = first; number > last;) AddPoint(item, std::to_string(--number), node);
  }

  void AddPoint(WireVizItem& item, const std::string& reference, const YamlNode& node) {
    if (points_++ >= MostWireVizPoints) {
      Fail(node, "the document is too large: more than " + std::to_string(MostWireVizPoints) +
                     " pins and wires in connection sets");
    }
    item.points.push_back({nullptr, reference, &node});
  }

  /// How many paths run through a set: as many as each item has, but for names alone.
  std::size_t PathsOf(const std::vector<WireVizItem>& items) const {
    const WireVizItem* first = nullptr;
    for (const WireVizItem& item : items) {
      if (item.points.empty()) continue;
      if (first == nullptr) first = &item;
      if (item.points.size() == first->points.size()) continue;
      const std::string where = first->node->line == item.node->line
                                    ? "before it"
                                    : "in line " + std::to_string(document_.PlaceOf(*first->node).line);
      const char* const paths = item.points.size() == 1 ? " path" : " paths";
      Fail(*item.node, "this item has " + std::to_string(item.points.size()) + paths + ", the item " + where +
                           " has " + std::to_string(first->points.size()));
    }
    return first == nullptr ? 1 : first->points.size();
  }

  /// Finds or makes the parts, in the order of the paths.
  void Resolve(WireVizItem& item, std::size_t paths) {
    const YamlNode& node = *item.node;
    if (node.kind == YamlNode::Kind::Map) {
      Part& part = harness_.Find(*node.items[0]);
      if (part.kind == Kind::Arrow) Fail(*node.items[0], "an arrow has no pins");
      for (WireVizPoint& point : item.points) point.part = &part;
    } else {
      if (node.kind == YamlNode::Kind::Scalar) {
        for (std::size_t i = 0; i < paths; ++i) AddPoint(item, {}, node);
      }
      for (WireVizPoint& point : item.points) point.part = &harness_.Find(*point.node);
    }
    item.kind = item.points.front().part->kind;
    for (const WireVizPoint& point : item.points) {
      if (point.part->kind != item.kind) {
        Fail(*point.node,
             std::string(KindText(point.part->kind)) + " in a list that begins with " + KindText(item.kind));
      }
    }
  }

  void CheckOrder(const std::vector<WireVizItem>& items) const {
    for (std::size_t i = 0; i < items.size(); ++i) {
      const bool connector = items[i].kind == Kind::Connector;
      const bool atAnEnd = i == 0 || i + 1 == items.size();
      if (items[i].kind == Kind::Arrow && atAnEnd) {
        Fail(*items[i].node, "an arrow must stand between two connectors");
      }
      if (i == 0 || connector != (items[i - 1].kind == Kind::Connector)) continue;
      const Part& part = *items[i].points.front().part;
      Fail(*items[i].node,
           (part.name.empty() ? KindText(part.kind) : part.name + " is " + KindText(part.kind)) +
               ", but after " + KindText(items[i - 1].kind) + " there must be " +
               (connector ? "a cable or an arrow" : "a connector"));
    }
  }

  void Connect(std::vector<WireVizItem>& items, std::size_t at) {
    WireVizItem& item = items[at];
    if (item.kind == Kind::Cable) {
      std::vector<std::size_t> wires;
      for (const WireVizPoint& point : item.points) wires.push_back(WireAt(point));
      if (at > 0) ConnectToCable(items[at - 1], item, wires);
      if (at + 1 < items.size()) ConnectToCable(items[at + 1], item, wires);
    } else if (item.kind == Kind::Arrow) {
      ConnectByArrow(items[at - 1], item, items[at + 1]);
    }
  }

  void ConnectToCable(const WireVizItem& connector, const WireVizItem& cable,
                      const std::vector<std::size_t>& wires) {
    for (std::size_t i = 0; i < cable.points.size(); ++i) {
      const WireVizPoint& end = connector.points[i];
      const WireVizPoint& wire = cable.points[i];
      harness_.Attach(*end.part, PinAt(end), *wire.part, wires[i], *wire.node);
    }
  }

  void ConnectByArrow(const WireVizItem& left, const WireVizItem& arrow, const WireVizItem& right) {
    std::set<std::pair<const Part*, const Part*>> mated;
    for (std::size_t i = 0; i < arrow.points.size(); ++i) {
      const WireVizPoint& a = left.points[i];
      const WireVizPoint& b = right.points[i];
      if (IsPinArrow(arrow.points[i].node->text)) {
        const std::size_t first = PinAt(a);
        builder_.Connect(first, PinAt(b), false);
        continue;
      }
      for (const WireVizPoint& point : {a, b}) {
        if (!point.reference.empty()) PinAt(point);  // is there such a pin?
      }
      if (mated.emplace(a.part, b.part).second) {
        const bool withPins = !a.reference.empty() || !b.reference.empty();
        harness_.Mate(*a.part, *b.part, *arrow.points[i].node, withPins);
      }
    }
  }

  std::size_t PinAt(const WireVizPoint& point) {
    const std::vector<std::string>& pins = point.part->connector->pins;
    if (!point.reference.empty()) return harness_.PinOf(*point.part, point.reference, *point.node);
    if (pins.size() == 1) return point.part->firstPin;
    const std::size_t pin = harness_.PinOf(*point.part, "1", *point.node);
    WarnOfImplied(point, "pin 1 is taken of its " + std::to_string(pins.size()) + " pins");
    return pin;
  }

  std::size_t WireAt(const WireVizPoint& point) {
    const WireVizCable& cable = *point.part->cable;
    const std::string reference = point.reference.empty() ? "1" : point.reference;
    if (point.reference.empty() && cable.wires > 1) {
      WarnOfImplied(point, "wire 1 is taken of its " + std::to_string(cable.wires) + " wires");
    }
    return FindWireVizWire(document_, cable, point.part->name, reference, *point.node, builder_);
  }

  void WarnOfImplied(const WireVizPoint& point, const std::string& what) {
    if (!warned_.insert(point.node).second) return;
    builder_.Warn(document_.PlaceOf(*point.node), point.part->name + " is named alone: " + what);
  }

  const YamlDocument& document_;
  WiringBuilder& builder_;
  WireVizHarness harness_;
  std::size_t points_ = 0;
  std::set<const YamlNode*> warned_;
};

}  // namespace

WiringDocument ReadWireViz(const WireVizSources& sources) {
  const std::string name = sources.files.empty() ? std::string() : sources.files.back().first;
  const YamlDocument document(sources.files);
  const YamlNode* const root = document.Root();
  if (root == nullptr || root->empty) throw DocumentError({name, 0, 0}, "the document is empty");
  if (root->kind != YamlNode::Kind::Map) {
    throw DocumentError(document.PlaceOf(*root), "this is no WireViz document: it has no sections");
  }
  WiringBuilder builder;
  for (const YamlNode* const key : document.DroppedKeys()) {
    builder.Warn(document.PlaceOf(*key),
                 ShownText(key->text) + " is given once more further down: only the last one counts");
  }
  WireVizConnections(document, builder).Read();
  return builder.Take();
}

}  // namespace kxbench::documents
