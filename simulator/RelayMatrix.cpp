#include "simulator/RelayMatrix.h"

#include <bit>
#include <string>

#include "simulator/DriverError.h"

namespace simulator {
namespace {

constexpr std::int32_t FirstAddress = 128;
constexpr std::int32_t LineReset = 64;
constexpr std::int32_t CloseBit = 128;

constexpr std::uint64_t Bit(int relay) { return std::uint64_t{1} << relay; }

constexpr std::uint64_t ChannelRelays = Bit(RelayMatrix::FirstAuxiliary) - 1;

/// Auxiliary relays of a line: 48 and 50 on line 0, 49 and 51 on line 1.
constexpr std::uint64_t AuxiliaryRelays(int line) {
  return Bit(RelayMatrix::FirstAuxiliary + line) | Bit(RelayMatrix::FirstAuxiliary + 2 + line);
}

std::string CardText(int card) { return "relay card " + std::to_string(card + 1); }

}  // namespace

RelayMatrix::RelayMatrix(const DeviceDescription& description)
    : fitted_(description.fittedCards), missingFirstCardIsError_(description.missingFirstCardIsError) {
  for (const StuckRelay& stuck : description.stuckRelays) {
    (stuck.closed ? stuckClosed_ : stuckOpen_)[Index(stuck.card, stuck.line)] |= Bit(stuck.relay);
  }
}

bool RelayMatrix::Write(std::int32_t address, std::int32_t value) {
  const std::string where = "bus address " + std::to_string(address);
  if (address < FirstAddress || address >= FirstAddress + CardLineCount) {
    throw DriverError("there is no " + where);
  }
  const int card = (address - FirstAddress) / LineCount;
  const int line = (address - FirstAddress) % LineCount;
  const std::string what = where + ": " + CardText(card);
  if (!HasCard(card)) {
    // A reset wants no answer; with the first card missing there may be no tester to answer at all.
    if (value == LineReset && card == 0 && !missingFirstCardIsError_) return false;
    throw DriverError(what + " does not answer");
  }
  LineRelays& coils = Coils(card, line);
  const LineRelays before = coils;
  if (value == LineReset) {
    coils = 0;
    return coils != before;
  }
  const std::int32_t relay = value & ~CloseBit;
  const bool exists = value >= 0 && value < 2 * CloseBit && relay < RelaysPerLine &&
                      ((ChannelRelays | AuxiliaryRelays(line)) & Bit(relay)) != 0;
  if (!exists) {
    throw DriverError(what + " has no relay for the value " + std::to_string(value) + " on line " +
                      std::to_string(line));
  }
  coils = (value & CloseBit) != 0 ? before | Bit(relay) : before & ~Bit(relay);
  return coils != before;
}

bool RelayMatrix::Probe(std::int32_t relay) const {
  if (relay < 1 || relay > MaxChannels) throw DriverError("there is no relay " + std::to_string(relay));
  const int card = (relay - 1) / ChannelsPerCard;
  if (HasCard(card)) return true;
  if (card == 0 && !missingFirstCardIsError_) return false;
  throw DriverError("relay " + std::to_string(relay) + ": " + CardText(card) + " does not answer");
}

bool RelayMatrix::IsClosed(int card, int line, int relay) const {
  return (coils_[Index(card, line)] & Bit(relay)) != 0;
}

int RelayMatrix::ClosedChannelRelays() const {
  int closed = 0;
  for (const LineRelays coils : coils_) closed += std::popcount(coils & ChannelRelays);
  return closed;
}

int RelayMatrix::ClosedAuxiliaryRelays() const {
  int closed = 0;
  for (const LineRelays coils : coils_) closed += std::popcount(coils & ~ChannelRelays);
  return closed;
}

RelayMatrix::LineRelays RelayMatrix::Contacts(int card, int line) const {
  if (!HasCard(card)) return 0;
  const std::size_t index = Index(card, line);
  return (coils_[index] | stuckClosed_[index]) & ~stuckOpen_[index];
}

void RelayMatrix::AddContacts(Circuit& circuit, double ohm) const {
  for (int card = 0; card < MaxCards; ++card) {
    for (int line = 0; line < LineCount; ++line) {
      const LineRelays contacts = Contacts(card, line);
      const Node cardLine = nodes::CardLine(card, line);
      if ((contacts & AuxiliaryRelays(line)) == AuxiliaryRelays(line)) {
        circuit.Join(cardLine, nodes::Line(line));
      }
      for (LineRelays rest = contacts & ChannelRelays; rest != 0; rest &= rest - 1) {
        const int channel = ChannelsPerCard * card + std::countr_zero(rest);
        circuit.AddResistor(nodes::Point(channel), cardLine, ohm);
      }
    }
  }
}

}  // namespace simulator
