#include "bench/proof/NetworkTester.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <numeric>

namespace kxbench::proof {

namespace {

constexpr std::int32_t FirstAddress = 128;
constexpr std::int32_t LineReset = 64;
constexpr std::int32_t CloseBit = 128;
constexpr std::uint64_t ChannelRelays = (std::uint64_t{1} << CardChannels) - 1;
constexpr std::int32_t VoltageFunction = 8;

/// Nodes of a circuit that is measured: the two lines, the tester's ground, then those of the parts.
constexpr simulator::Node LineNode(int line) { return static_cast<simulator::Node>(line); }
constexpr simulator::Node GroundNode = 2;
constexpr simulator::Node FirstPartNode = 3;

constexpr std::uint64_t Bit(std::size_t relay) { return std::uint64_t{1} << relay; }

constexpr std::uint64_t AuxiliaryRelays(int line) {
  const auto first = CardChannels + static_cast<std::size_t>(line);
  return Bit(first) | Bit(first + 2);
}

simulator::Instrument SoundInstrument() { return simulator::Instrument(simulator::DeviceDescription()); }

}  // namespace

NetworkTester::NetworkTester(const DeviceModel& device, HeldClock& clock)
    : device_(device),
      clock_(clock),
      cards_(device.channels / CardChannels),
      instrument_(SoundInstrument()),
      circuit_(0) {
  FindParts();
  for (const StuckContact& one : device.stuck) {
    auto& stuck = (one.closed ? stuckClosed_ : stuckOpen_).at(static_cast<std::size_t>(one.line));
    stuck.at(one.node / CardChannels) |= Bit(one.node % CardChannels);
  }
}

void NetworkTester::FindParts() {
  std::vector<std::size_t> root(device_.nodes);
  std::iota(root.begin(), root.end(), std::size_t{0});
  const auto rootOf = [&root](std::size_t node) {
    while (root[node] != node) node = root[node] = root[root[node]];
    return node;
  };
  for (const ModelResistor& one : device_.resistors) root[rootOf(one.a)] = rootOf(one.b);

  constexpr std::size_t None = std::numeric_limits<std::size_t>::max();
  std::vector<std::size_t> partOfRoot(device_.nodes, None);
  partOf_.resize(device_.nodes);
  placeOf_.resize(device_.nodes);
  for (std::size_t node = 0; node < device_.nodes; ++node) {
    std::size_t& part = partOfRoot[rootOf(node)];
    if (part == None) {
      part = parts_.size();
      parts_.emplace_back();
    }
    partOf_[node] = part;
    placeOf_[node] = parts_[part].nodes.size();
    parts_[part].nodes.push_back(node);
  }
  for (std::size_t i = 0; i < device_.resistors.size(); ++i) {
    parts_[partOf_[device_.resistors[i].a]].resistors.push_back(i);
  }
  for (const ModelSource& source : device_.sources) {
    Part& part = parts_[partOf_[source.node]];
    if (!part.charged) chargedParts_.push_back(partOf_[source.node]);
    part.charged = true;
  }
  seen_.assign(parts_.size(), 0);
}

bool NetworkTester::RequireCard(std::int32_t card) {
  if (card >= 0 && static_cast<std::size_t>(card) < cards_) return true;
  if (!error_) error_ = "relay card " + std::to_string(std::int64_t{card} + 1) + " does not answer";
  return false;
}

void NetworkTester::BusWrite(std::int32_t address, std::int32_t value) {
  clock_.EndWait();
  if (address < FirstAddress || !RequireCard((address - FirstAddress) / Lines)) return;
  const auto card = static_cast<std::size_t>((address - FirstAddress) / Lines);
  Relays& coils = coils_.at(static_cast<std::size_t>((address - FirstAddress) % Lines)).at(card);
  const auto relay = static_cast<std::size_t>(value & (LineReset - 1));
  if (value == LineReset) {
    coils = 0;
  } else if ((value & CloseBit) != 0) {
    coils |= Bit(relay);
  } else {
    coils &= ~Bit(relay);
  }
  instrument_.StartSettling();
  ohm_.reset();
}

void NetworkTester::RelaySet(std::int32_t card, std::int32_t relay, std::int32_t state) {
  clock_.EndWait();
  if (!RequireCard(card)) return;
  if (state == 0) {
    terminators_.erase({card, relay});
  } else {
    terminators_.insert({card, relay});
  }
}

std::int32_t NetworkTester::MsuWriteRelay(std::int32_t relay) {
  return RequireCard((relay - 1) / static_cast<std::int32_t>(CardChannels)) ? 1 : 0;
}

double NetworkTester::AdxRead(std::int32_t function, std::int32_t range) {
  clock_.EndWait();
  if (function == VoltageFunction) return instrument_.ReadVoltage(device_.sources.empty() ? 0.0 : Volts());
  if (!ohm_) ohm_ = Ohm();
  return instrument_.ReadResistance(range, *ohm_);
}

std::size_t NetworkTester::ClosedRelays() const {
  std::size_t closed = terminators_.size();
  for (const LineRelays& line : coils_) {
    for (const Relays coils : line) closed += static_cast<std::size_t>(std::popcount(coils));
  }
  return closed;
}

NetworkTester::LineRelays NetworkTester::ContactsOn(int line) const {
  const auto index = static_cast<std::size_t>(line);
  LineRelays contacts{};
  for (std::size_t card = 0; card < cards_; ++card) {
    const Relays coils = coils_[index][card];
    if ((coils & AuxiliaryRelays(line)) != AuxiliaryRelays(line)) continue;
    contacts[card] = (coils | stuckClosed_[index][card]) & ~stuckOpen_[index][card] & ChannelRelays;
  }
  return contacts;
}

bool NetworkTester::IsOn(const LineRelays& contacts, std::size_t node) const {
  return node < device_.channels && (contacts[node / CardChannels] & Bit(node % CardChannels)) != 0;
}

std::vector<std::size_t> NetworkTester::PartsOnBothLines() {
  std::array<int, Lines> counts{};
  for (int line = 0; line < Lines; ++line) {
    const auto index = static_cast<std::size_t>(line);
    contacts_[index] = ContactsOn(line);
    for (std::size_t card = 0; card < cards_; ++card) counts[index] += std::popcount(contacts_[index][card]);
  }
  const std::size_t fewer = counts[0] <= counts[1] ? 0 : 1;
  const LineRelays& others = contacts_[1 - fewer];
  std::vector<std::size_t> both;
  std::vector<std::size_t> looked;
  for (std::size_t card = 0; card < cards_; ++card) {
    for (Relays rest = contacts_[fewer][card]; rest != 0; rest &= rest - 1) {
      const std::size_t part =
          partOf_[CardChannels * card + static_cast<std::size_t>(std::countr_zero(rest))];
      if (seen_[part] != 0) continue;
      seen_[part] = 1;
      looked.push_back(part);
      const auto& nodes = parts_[part].nodes;
      if (std::any_of(nodes.begin(), nodes.end(), [&](std::size_t node) { return IsOn(others, node); })) {
        both.push_back(part);
      }
    }
  }
  for (const std::size_t part : looked) seen_[part] = 0;
  return both;
}

void NetworkTester::AddPart(const Part& part, simulator::Node firstNode) {
  const auto nodeOf = [&](std::size_t node) { return firstNode + placeOf_[node]; };
  for (const std::size_t i : part.resistors) {
    const ModelResistor& one = device_.resistors[i];
    circuit_.AddResistor(nodeOf(one.a), nodeOf(one.b), one.ohm);
  }
  for (const std::size_t node : part.nodes) {
    for (int line = 0; line < Lines; ++line) {
      if (!IsOn(contacts_[static_cast<std::size_t>(line)], node)) continue;
      circuit_.AddResistor(nodeOf(node), LineNode(line), device_.contactOhm);
    }
  }
}

double NetworkTester::OhmThrough(const Part& part) {
  circuit_.Clear(FirstPartNode + part.nodes.size());
  AddPart(part, FirstPartNode);
  return circuit_.Resistance(LineNode(0), LineNode(1));
}

double NetworkTester::Ohm() {
  const std::vector<std::size_t> parts = PartsOnBothLines();
  if (parts.size() == 1) return OhmThrough(parts_[parts.front()]);
  double siemens = 0;
  for (const std::size_t part : parts) {
    const double ohm = OhmThrough(parts_[part]);
    if (ohm == 0.0) return 0.0;
    siemens += 1.0 / ohm;
  }
  return 1.0 / siemens;
}

double NetworkTester::Volts() {
  std::vector<std::size_t> parts = PartsOnBothLines();
  std::erase_if(parts, [&](std::size_t part) { return parts_[part].charged; });
  parts.insert(parts.end(), chargedParts_.begin(), chargedParts_.end());

  std::size_t nodeCount = FirstPartNode;
  for (const std::size_t part : parts) nodeCount += parts_[part].nodes.size();
  circuit_.Clear(nodeCount);
  std::vector<simulator::Node> firstNodes(parts_.size(), 0);
  simulator::Node next = FirstPartNode;
  for (const std::size_t part : parts) {
    firstNodes[part] = next;
    AddPart(parts_[part], next);
    next += parts_[part].nodes.size();
  }
  for (const ModelSource& source : device_.sources) {
    const double left = std::exp(-clock_.Seconds() / source.tauSeconds);
    circuit_.AddSource(firstNodes[partOf_[source.node]] + placeOf_[source.node], GroundNode,
                       source.volts * left, source.seriesOhm);
  }
  for (int line = 0; line < Lines; ++line) {
    circuit_.AddResistor(LineNode(line), GroundNode, simulator::Instrument::InputOhm);
  }
  return circuit_.Voltage(LineNode(0), LineNode(1));
}

}  // namespace kxbench::proof
