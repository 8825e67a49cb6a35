// What there is to draw: an expectation's channels, or a document's pins.

#include <algorithm>
#include <map>
#include <utility>

#include "bench/drawing/Drawing.h"
#include "bench/wiring/Contacts.h"

namespace kxbench::drawing {

namespace {

/// What a channel's name says of its pin: "17" of "X3.17"; of "A1-L", which is pin 1 of A, all.
std::string PinNameIn(const std::string& name, const wiring::Contact& contact) {
  const bool separated = name.size() == contact.connector.size() + 1 + contact.pin.size() &&
                         name.ends_with(contact.pin) && name.starts_with(contact.connector);
  return separated ? contact.pin : name;
}

DrawnPin PinOfChannel(std::int32_t channel, const std::string& name,
                      const std::map<std::int32_t, wiring::Contact>& contacts) {
  DrawnPin pin;
  pin.channel = channel;
  pin.name = name;
  pin.label = name;
  const auto contact = contacts.find(channel);
  if (contact == contacts.end()) return pin;
  pin.connector = contact->second.connector;
  pin.name = PinNameIn(name, contact->second);
  return pin;
}

/// Channels ascending, but on a connector its numbered pins first, by their numbers.
void OrderByPin(std::vector<std::int32_t>& channels,
                const std::map<std::int32_t, wiring::Contact>& contacts) {
  const auto key = [&](std::int32_t channel) {
    const auto contact = contacts.find(channel);
    const bool numbered = contact != contacts.end() && contact->second.number;
    return std::pair(!numbered, numbered ? *contact->second.number : channel);
  };
  std::map<std::string, std::size_t> first;  // place of each connector
  for (const std::int32_t channel : channels) {
    const auto contact = contacts.find(channel);
    first.try_emplace(contact == contacts.end() ? "" : contact->second.connector, first.size());
  }
  std::stable_sort(channels.begin(), channels.end(), [&](std::int32_t a, std::int32_t b) {
    const auto place = [&](std::int32_t channel) {
      const auto contact = contacts.find(channel);
      return first.at(contact == contacts.end() ? "" : contact->second.connector);
    };
    return std::pair(place(a), key(a)) < std::pair(place(b), key(b));
  });
}

}  // namespace

HarnessPicture PictureOf(const wiring::ExpectationFacts& facts, const wiring::ChannelNames& names,
                         const std::string& title) {
  HarnessPicture picture;
  picture.title = title;
  std::vector<std::int32_t> channels = facts.nets.unconnected;
  channels.insert(channels.end(), facts.nets.suspended.begin(), facts.nets.suspended.end());
  for (const auto& net : facts.nets.nets) channels.insert(channels.end(), net.begin(), net.end());
  std::sort(channels.begin(), channels.end());

  std::map<std::int32_t, std::string> named;
  for (const std::int32_t channel : channels) {
    std::string name = names.Name(channel);
    if (!name.empty()) named.emplace(channel, std::move(name));
  }
  const std::map<std::int32_t, wiring::Contact> contacts = wiring::ContactsOf(named);
  OrderByPin(channels, contacts);

  std::map<std::int32_t, std::size_t> places;
  for (const std::int32_t channel : channels) {
    const auto name = named.find(channel);
    places.emplace(channel, picture.pins.size());
    picture.pins.push_back(PinOfChannel(channel, name == named.end() ? "" : name->second, contacts));
  }
  for (const std::int32_t channel : facts.nets.suspended) picture.pins[places.at(channel)].suspended = true;
  for (const auto& net : facts.nets.nets) {
    DrawnNet& drawn = picture.nets.emplace_back();
    for (const std::int32_t channel : net) drawn.pins.push_back(places.at(channel));
  }
  for (const auto& [lower, higher] : facts.excludedPairs) {
    const auto a = places.find(lower);
    const auto b = places.find(higher);
    if (a != places.end() && b != places.end()) picture.excluded.emplace_back(a->second, b->second);
  }
  return picture;
}

HarnessPicture PictureOf(const documents::WiringDocument& document, const std::string& title,
                         const std::map<documents::Pin, std::int32_t>& channels) {
  HarnessPicture picture;
  picture.title = title;
  std::map<documents::Pin, std::size_t> places;
  for (const documents::PlacedPin& placed : document.pins) {
    const auto channel = channels.find(placed.pin);
    places.emplace(placed.pin, picture.pins.size());
    picture.pins.push_back({channel == channels.end() ? 0 : channel->second, placed.pin.connector,
                            placed.pin.pin, documents::PinText(placed.pin), false});
  }
  for (const documents::DocumentNet& net : document.nets) {
    DrawnNet& drawn = picture.nets.emplace_back();
    drawn.name = net.name;
    for (const documents::Pin& pin : net.pins) drawn.pins.push_back(places.at(pin));
  }
  return picture;
}

}  // namespace kxbench::drawing
