#include "bench/documents/WiringBuilder.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace kxbench::documents {

namespace {

std::string TwoPartsOf(const Pin& pin) {
  if (pin.connector.empty()) return "channel " + pin.pin;
  return (pin.pin.empty() ? "" : pin.pin + " of ") + "connector " + pin.connector +
         (pin.pin.empty() ? " without a pin" : "");
}

/// Where the first pin is, for a message that begins with the place of the second.
std::string FirstPlace(const Place& first, const Place& second) {
  if (first.line > 0 && first.file == second.file) return "line " + std::to_string(first.line);
  return PlaceText(first);
}

}  // namespace

std::size_t WiringBuilder::AddPin(const Pin& pin, const Place& place) {
  const auto [entry, isNew] = numbers_.try_emplace(pin, pins_.size());
  if (isNew) {
    AddConnector(pin.connector);
    pins_.push_back({pin, place});
    parents_.push_back(entry->second);
  }
  return entry->second;
}

void WiringBuilder::AddConnector(const std::string& connector) {
  connectors_.try_emplace(connector, connectors_.size());
}

void WiringBuilder::Connect(std::size_t a, std::size_t b, bool wire) {
  if (wire) ++wires_;
  const std::size_t first = RootOf(a);
  const std::size_t second = RootOf(b);
  parents_[std::max(first, second)] = std::min(first, second);
}

void WiringBuilder::MakeSplice(const std::string& connector) { splices_.insert(connector); }

void WiringBuilder::NameNet(std::size_t pin, const std::string& name) { names_.emplace_back(pin, name); }

void WiringBuilder::Warn(const Place& place, const std::string& text) { warnings_.push_back({place, text}); }

/// Whatever is made of a document calls its pins by one text: names of channels, JSON, messages.
void WiringBuilder::RefuseSharedNames() const {
  std::unordered_map<std::string, const PlacedPin*> pinOfName;
  for (const PlacedPin& pin : pins_) {
    if (splices_.contains(pin.pin.connector)) continue;
    const auto [entry, isNew] = pinOfName.try_emplace(PinText(pin.pin), &pin);
    if (isNew) continue;
    const PlacedPin& first = *entry->second;
    throw DocumentError(pin.place, entry->first + " is the name of two pins: " + TwoPartsOf(pin.pin) +
                                       " and " + TwoPartsOf(first.pin) + " (" +
                                       FirstPlace(first.place, pin.place) + ")");
  }
}

WiringDocument WiringBuilder::Take() {
  RefuseSharedNames();
  std::map<std::string, std::size_t> spliceRoots;
  for (std::size_t pin = 0; pin < pins_.size(); ++pin) {
    const std::string& connector = pins_[pin].pin.connector;
    if (!splices_.contains(connector)) continue;
    const auto [root, isNew] = spliceRoots.try_emplace(connector, pin);
    if (!isNew) Connect(root->second, pin, false);
  }

  std::map<std::size_t, std::string> nameOfRoot;
  for (const auto& [pin, name] : names_) {
    if (!name.empty()) nameOfRoot.try_emplace(RootOf(pin), name);
  }

  std::vector<std::size_t> order(pins_.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
    return connectors_.at(pins_[a].pin.connector) < connectors_.at(pins_[b].pin.connector);
  });

  WiringDocument document;
  std::map<std::size_t, std::size_t> netOfRoot;
  for (const std::size_t pin : order) {
    if (splices_.contains(pins_[pin].pin.connector)) continue;
    const std::size_t root = RootOf(pin);
    const auto [net, isNew] = netOfRoot.try_emplace(root, document.nets.size());
    if (isNew) {
      const auto name = nameOfRoot.find(root);
      document.nets.push_back({name == nameOfRoot.end() ? std::string() : name->second, {}});
    }
    document.nets[net->second].pins.push_back(pins_[pin].pin);
    const std::string& connector = pins_[pin].pin.connector;
    if (document.pins.empty() || document.pins.back().pin.connector != connector) ++document.connectors;
    document.pins.push_back(pins_[pin]);
  }
  document.splices = spliceRoots.size();
  document.wires = wires_;
  document.warnings = std::move(warnings_);
  *this = WiringBuilder();
  return document;
}

std::size_t WiringBuilder::RootOf(std::size_t pin) {
  while (parents_[pin] != pin) {
    parents_[pin] = parents_[parents_[pin]];
    pin = parents_[pin];
  }
  return pin;
}

}  // namespace kxbench::documents
