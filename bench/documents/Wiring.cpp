#include "bench/documents/Wiring.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>

#include "bench/wiring/Contacts.h"
#include "text/Trim.h"

namespace kxbench::documents {

namespace {

using Json = nlohmann::ordered_json;

constexpr int WiringJsonVersion = 1;

std::optional<Pin> PinOfName(std::string_view name) {
  const std::size_t point = std::min(name.rfind('.'), name.size());
  const std::string_view connector = shorttest::Trim(name.substr(0, point));
  const std::string_view pin = shorttest::Trim(name.substr(std::min(point + 1, name.size())));
  if (connector.empty() || pin.empty()) return std::nullopt;
  return Pin{std::string(connector), std::string(pin)};
}

}  // namespace

Pin UnnamedPin(std::int32_t channel) { return {"", std::to_string(channel)}; }

std::map<std::int32_t, Pin> PinsOf(std::int32_t firstChannel, std::int32_t lastChannel,
                                   const wiring::ChannelNames& names) {
  std::map<std::int32_t, Pin> pins;
  std::map<std::int32_t, std::string> others;
  for (std::int32_t channel = firstChannel; channel <= lastChannel; ++channel) {
    const std::string name = names.Name(channel);
    if (auto pin = PinOfName(name)) {
      pins[channel] = std::move(*pin);
    } else if (!name.empty()) {
      others[channel] = name;
    }
  }
  for (const auto& [channel, contact] : wiring::ContactsOf(others)) {
    pins[channel] = {contact.connector, contact.pin};
  }
  std::map<Pin, int> uses;
  for (const auto& [channel, pin] : pins) ++uses[pin];
  for (std::int32_t channel = firstChannel; channel <= lastChannel; ++channel) {
    const auto pin = pins.find(channel);
    if (pin == pins.end() || uses[pin->second] > 1) pins[channel] = UnnamedPin(channel);
  }
  return pins;
}

Wiring WiringOf(const wiring::ExpectationFacts& facts, const wiring::ChannelNames& names) {
  Wiring wiring;
  wiring.pins = PinsOf(facts.firstChannel, facts.lastChannel, names);
  wiring.nets = facts.nets.nets;
  wiring.single = facts.nets.unconnected;
  wiring.excluded = facts.excludedPairs;
  wiring.suspended = facts.nets.suspended;
  return wiring;
}

Wiring WiringOfPins(const WiringDocument& document) {
  Wiring wiring;
  std::map<Pin, std::int32_t> numbers;
  for (const PlacedPin& pin : document.pins) {
    const auto number = static_cast<std::int32_t>(numbers.size() + 1);
    numbers[pin.pin] = number;
    wiring.pins[number] = pin.pin;
  }
  for (const DocumentNet& net : document.nets) {
    std::vector<std::int32_t> channels;
    for (const Pin& pin : net.pins) channels.push_back(numbers.at(pin));
    if (channels.size() == 1) {
      wiring.single.push_back(channels.front());
    } else {
      std::sort(channels.begin(), channels.end());
      wiring.nets.push_back(std::move(channels));
    }
  }
  return wiring;
}

std::string WiringJson(const Wiring& wiring) {
  const auto text = [&wiring](std::int32_t channel) { return PinText(wiring.pins.at(channel)); };
  const auto texts = [&text](const std::vector<std::int32_t>& channels) {
    Json list = Json::array();
    for (const std::int32_t channel : channels) list.push_back(text(channel));
    return list;
  };
  Json object;
  object["format"] = "wiring";
  object["version"] = WiringJsonVersion;
  Json channels = Json::object();
  for (const auto& [channel, pin] : wiring.pins) channels[std::to_string(channel)] = PinText(pin);
  object["channels"] = std::move(channels);
  Json nets = Json::array();
  for (const auto& net : wiring.nets) nets.push_back(texts(net));
  object["nets"] = std::move(nets);
  object["single"] = texts(wiring.single);
  Json excluded = Json::array();
  for (const auto& [lower, higher] : wiring.excluded) excluded.push_back(texts({lower, higher}));
  object["excluded"] = std::move(excluded);
  object["suspended"] = texts(wiring.suspended);
  // A name that is no UTF-8 must not keep the rest from being written.
  return object.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace kxbench::documents
