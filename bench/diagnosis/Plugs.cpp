#include "bench/diagnosis/Plugs.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace kxbench::diagnosis {

namespace {

/// Contacts that follow each other, by position: number of the pin, or its place in the row.
using Row = std::map<int, Channel>;

/// Those that have a number when any has one, else all.
std::vector<PlugPin> PinsInRow(const Plug& plug) {
  std::vector<PlugPin> pins;
  for (const PlugPin& pin : plug.pins) {
    if (pin.number) pins.push_back(pin);
  }
  return pins.empty() ? plug.pins : pins;
}

Row RowByPlace(const std::vector<PlugPin>& pins) {
  Row row;
  for (const PlugPin& pin : pins) row.emplace(static_cast<int>(row.size()), pin.channel);
  return row;
}

/// Pins beyond are no positions of one plug, whatever their names say.
constexpr std::int32_t MostPositions = 1000;

/// Empty where places say the same: pins without numbers, doubled ones, or none missing in between.
Row RowByNumber(const std::vector<PlugPin>& pins) {
  Row row;
  for (const PlugPin& pin : pins) {
    if (pin.number && *pin.number <= MostPositions) row.emplace(*pin.number, pin.channel);
  }
  const bool gaps = row.size() == pins.size() && row.size() > 1 &&
                    row.rbegin()->first - row.begin()->first + 1 > static_cast<int>(row.size());
  return gaps ? row : Row();
}

std::optional<Channel> At(const Row& row, int position) {
  const auto entry = row.find(position);
  return entry == row.end() ? std::nullopt : std::optional<Channel>(entry->second);
}

Fault PlugFault(FaultKind kind, std::vector<std::string> plugs, const std::vector<Move>& moves) {
  Fault fault;
  fault.kind = kind;
  fault.plugs = std::move(plugs);
  for (const Move& move : moves) {
    fault.channels.push_back(move.from);
    if (move.to != move.from) fault.moves.push_back(move);
  }
  std::sort(fault.channels.begin(), fault.channels.end());
  return fault;
}

Fault Reversed(const Plug& plug, const Row& row) {
  std::vector<Move> moves;
  const int mirror = row.begin()->first + row.rbegin()->first;
  for (const auto& [position, channel] : row) moves.push_back({channel, At(row, mirror - position)});
  return PlugFault(FaultKind::PlugReversed, {plug.name}, moves);
}

Fault Shifted(const Plug& plug, const Row& row, int shift) {
  std::vector<Move> moves;
  for (const auto& [position, channel] : row) moves.push_back({channel, At(row, position + shift)});
  Fault fault = PlugFault(FaultKind::PlugShifted, {plug.name}, moves);
  fault.shift = shift;
  return fault;
}

Fault ShiftedAround(const Plug& plug, const Row& row, int shift) {
  std::vector<Move> moves;
  const int count = static_cast<int>(row.size());
  for (const auto& [position, channel] : row) moves.push_back({channel, At(row, (position + shift) % count)});
  Fault fault = PlugFault(FaultKind::PlugShifted, {plug.name}, moves);
  // The shorter way round is how it is told.
  fault.shift = 2 * shift > count ? shift - count : shift;
  fault.around = true;
  return fault;
}

void AddShifts(const Plug& plug, const Row& row, std::vector<Fault>& faults) {
  const int last = row.rbegin()->first - row.begin()->first;
  for (int shift = 1; shift <= last; ++shift) {
    faults.push_back(Shifted(plug, row, shift));
    faults.push_back(Shifted(plug, row, -shift));
  }
}

}  // namespace

std::vector<Plug> PlugsOf(const std::map<Channel, wiring::Contact>& contacts) {
  std::map<std::string, Plug> byName;
  for (const auto& [channel, contact] : contacts) {
    byName[contact.connector].pins.push_back({channel, contact.pin, contact.number});
  }
  std::vector<Plug> plugs;
  for (auto& [name, plug] : byName) {
    if (plug.pins.size() < 2) continue;
    plug.name = name;
    std::sort(plug.pins.begin(), plug.pins.end(), [](const PlugPin& a, const PlugPin& b) {
      return std::tuple(!a.number, a.number, a.name, a.channel) <
             std::tuple(!b.number, b.number, b.name, b.channel);
    });
    plugs.push_back(std::move(plug));
  }
  return plugs;
}

std::vector<Fault> WrongPlugs(const Plug& plug) {
  const std::vector<PlugPin> pins = PinsInRow(plug);
  if (pins.size() < 2) return {};
  const Row places = RowByPlace(pins);
  std::vector<Fault> faults = {Reversed(plug, places)};
  AddShifts(plug, places, faults);
  for (int shift = 1; shift < static_cast<int>(places.size()); ++shift) {
    faults.push_back(ShiftedAround(plug, places, shift));
  }
  const Row numbers = RowByNumber(pins);
  if (!numbers.empty()) {
    faults.push_back(Reversed(plug, numbers));
    AddShifts(plug, numbers, faults);
  }
  return faults;
}

Fault ExchangedPlugs(const Plug& a, const Plug& b) {
  std::vector<Move> moves;
  const auto addMoves = [&moves](const Plug& from, const Plug& to) {
    for (const PlugPin& pin : from.pins) {
      const auto same = std::find_if(to.pins.begin(), to.pins.end(),
                                     [&](const PlugPin& other) { return other.name == pin.name; });
      moves.push_back(
          {pin.channel, same == to.pins.end() ? std::nullopt : std::optional<Channel>(same->channel)});
    }
  };
  addMoves(a, b);
  addMoves(b, a);
  return PlugFault(FaultKind::PlugsExchanged, {a.name, b.name}, moves);
}

}  // namespace kxbench::diagnosis
