#include "bench/drawing/DrawingMarks.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <map>
#include <optional>
#include <utility>

namespace kxbench::drawing {

namespace {

using diagnosis::Channel;
using diagnosis::Fault;
using diagnosis::FaultKind;
using diagnosis::Move;

bool IsPlugFault(FaultKind kind) {
  return kind == FaultKind::PlugsExchanged || kind == FaultKind::PlugReversed ||
         kind == FaultKind::PlugShifted;
}

/// Two contacts without more: each other's wires lie on them.
std::vector<Move> MovesOf(const Fault& fault) {
  const bool exchange = fault.kind == FaultKind::Swapped || fault.kind == FaultKind::Misplaced;
  if (!fault.moves.empty() || !exchange || fault.channels.size() != 2) return fault.moves;
  return {{fault.channels[0], fault.channels[1]}, {fault.channels[1], fault.channels[0]}};
}

class Marker {
 public:
  explicit Marker(const HarnessPicture& picture)
      : picture_(picture), netOf_(picture.pins.size()), used_(picture.pins.size()) {
    for (std::size_t pin = 0; pin < picture.pins.size(); ++pin) {
      if (picture.pins[pin].channel > 0) pins_.emplace(picture.pins[pin].channel, pin);
    }
    for (std::size_t net = 0; net < picture.nets.size(); ++net) {
      for (const std::size_t pin : picture.nets[net].pins) netOf_[pin] = net;
    }
    marks_.notes.resize(picture.pins.size());
    marks_.cameOff.resize(picture.pins.size());
    marks_.nets.resize(picture.nets.size());
  }

  void Add(const Fault& fault) {
    ++number_;
    marks_.shown.push_back(NetsOf(fault));
    switch (fault.kind) {
      case FaultKind::Open:
        Open(fault);
        break;
      case FaultKind::Short:
        Short(fault);
        break;
      case FaultKind::HighResistance:
        Say(fault, "high resistance");
        break;
      case FaultKind::Voltage:
        Say(fault, "voltage");
        break;
      case FaultKind::Compound:
        Say(fault, "compound");
        break;
      default:
        Moved(fault);
    }
  }

  Marks Take() {
    if (picture_.excluded.size() <= MostExcludedLines) {
      for (const auto& [a, b] : picture_.excluded) AddExtra({ExtraKind::Excluded, a, b});
    }
    return std::move(marks_);
  }

 private:
  std::optional<std::size_t> PinOf(Channel channel) const {
    const auto found = pins_.find(channel);
    return found == pins_.end() ? std::nullopt : std::optional(found->second);
  }

  std::vector<std::size_t> NetsOf(const Fault& fault) const {
    std::set<std::size_t> nets;
    for (const Channel channel : fault.channels) {
      const auto pin = PinOf(channel);
      if (pin && netOf_[*pin]) nets.insert(*netOf_[*pin]);
    }
    return {nets.begin(), nets.end()};
  }

  void Mark(const std::vector<std::size_t>& nets, NetMark mark) {
    for (const std::size_t net : nets) marks_.nets[net] = std::max(marks_.nets[net], mark);
  }

  void Note(std::size_t pin, const std::string& word) {
    marks_.notes[pin].push_back({number_, word, "", ""});
  }

  /// That the pin's wire lies there. A connector's name may be shortened, so it stands alone.
  void NoteMove(std::size_t pin, const DrawnPin& there) {
    const std::string label = PinLabel(there);
    const std::size_t size = there.connector.size();
    const bool split = size > 0 && !there.name.empty() && label.size() == size + 1 + there.name.size() &&
                       label.starts_with(there.connector) && label.ends_with(there.name);
    marks_.notes[pin].push_back(
        {number_, "→", split ? there.connector : "", split ? label.substr(size) : label});
  }

  void Say(const Fault& fault, const std::string& word) {
    Mark(marks_.shown.back(), NetMark::Concerned);
    for (const Channel channel : fault.channels) {
      if (const auto pin = PinOf(channel)) Note(*pin, word);
    }
  }

  void Open(const Fault& fault) {
    Mark(marks_.shown.back(), NetMark::Concerned);
    std::set<std::size_t> off;
    for (const Channel channel : fault.channels) {
      if (const auto pin = PinOf(channel)) off.insert(*pin);
    }
    // Of a wire with two ends, neither is the one that came off.
    for (const std::size_t net : marks_.shown.back()) {
      const std::vector<std::size_t>& pins = picture_.nets[net].pins;
      if (pins.size() == 2) off.insert(pins.begin(), pins.end());
    }
    for (const std::size_t pin : off) {
      marks_.cameOff[pin] = true;
      Note(pin, "open");
    }
  }

  void Short(const Fault& fault) {
    Mark(marks_.shown.back(), NetMark::Shorted);
    for (const Channel channel : fault.channels) {
      if (const auto pin = PinOf(channel)) Note(*pin, "short");
    }
    const std::vector<std::vector<std::size_t>> groups = Groups(fault);
    if (fault.closest.size() == 2 && groups.size() == 2) {
      const auto a = PinOf(fault.closest[0]);
      const auto b = PinOf(fault.closest[1]);
      if (a && b) return AddExtra({ExtraKind::Short, *a, *b});
    }
    for (std::size_t i = 1; i < groups.size(); ++i) AddNearest(groups[i - 1], groups[i]);
  }

  /// The pins of a short circuit, by the nets of the picture.
  std::vector<std::vector<std::size_t>> Groups(const Fault& fault) const {
    std::vector<std::vector<std::size_t>> groups;
    std::map<std::size_t, std::size_t> groupOfNet;
    for (const Channel channel : fault.channels) {
      const auto pin = PinOf(channel);
      if (!pin) continue;
      const auto net = netOf_[*pin];
      const auto group = net ? groupOfNet.try_emplace(*net, groups.size()).first->second : groups.size();
      if (group == groups.size()) groups.emplace_back();
      groups[group].push_back(*pin);
    }
    return groups;
  }

  /// The two pins that are closest and show no other line yet: on one connector, if there are such.
  void AddNearest(const std::vector<std::size_t>& some, const std::vector<std::size_t>& others) {
    std::int64_t best = std::numeric_limits<std::int64_t>::max();
    ExtraLine line{ExtraKind::Short, 0, 0};
    for (const std::size_t a : some) {
      for (const std::size_t b : others) {
        if (used_[a] || used_[b]) continue;
        constexpr std::int64_t elsewhere = 1'000'000'000;
        const DrawnPin& first = picture_.pins[a];
        const DrawnPin& second = picture_.pins[b];
        const std::int64_t distance = std::abs(std::int64_t{first.channel} - second.channel) +
                                      (first.connector == second.connector ? 0 : elsewhere);
        if (distance >= best) continue;
        best = distance;
        line.from = a;
        line.to = b;
      }
    }
    if (line.from != line.to) AddExtra(line);
  }

  void Moved(const Fault& fault) {
    Mark(marks_.shown.back(), NetMark::Concerned);
    for (const std::string& plug : fault.plugs) marks_.connectors.insert(plug);
    const std::vector<Move> moves = MovesOf(fault);
    if (moves.empty()) return Say(fault, diagnosis::KindWord(fault.kind));
    for (const Move& move : moves) {
      const auto from = PinOf(move.from);
      std::optional<std::size_t> to;
      if (move.to) to = PinOf(*move.to);
      if (from && to) {
        NoteMove(*from, picture_.pins[*to]);
      } else if (from) {
        Note(*from, "→ " + (move.to ? std::to_string(*move.to) : "nothing"));
      }
      if (from && to && !IsPlugFault(fault.kind)) AddMove(moves, move, *from, *to);
    }
  }

  void AddMove(const std::vector<Move>& moves, const Move& move, std::size_t from, std::size_t to) {
    const bool bothWays = std::find(moves.begin(), moves.end(), Move{*move.to, move.from}) != moves.end();
    if (!bothWays || move.from < *move.to) AddExtra({ExtraKind::Move, from, to, bothWays});
  }

  void AddExtra(const ExtraLine& line) {
    if (line.from == line.to || used_[line.from] || used_[line.to]) return;
    used_[line.from] = used_[line.to] = true;
    marks_.extras.push_back(line);
  }

  const HarnessPicture& picture_;
  std::map<Channel, std::size_t> pins_;
  std::vector<std::optional<std::size_t>> netOf_;
  std::vector<bool> used_;  // pins with an extra line
  Marks marks_;
  std::size_t number_ = 0;
};

}  // namespace

std::string PinLabel(const DrawnPin& pin) {
  if (!pin.label.empty()) return pin.label;
  if (!pin.connector.empty()) return pin.connector + "." + pin.name;
  return pin.name.empty() ? std::to_string(pin.channel) : pin.name;
}

std::string LongPinLabel(const DrawnPin& pin) {
  const std::string label = PinLabel(pin);
  const std::string channel = std::to_string(pin.channel);
  return pin.channel <= 0 || label == channel ? label : channel + " (" + label + ")";
}

Marks MarksIn(const HarnessPicture& picture, const std::vector<FaultMark>& faults) {
  Marker marker(picture);
  for (const FaultMark& mark : faults) marker.Add(mark.fault);
  return marker.Take();
}

}  // namespace kxbench::drawing
