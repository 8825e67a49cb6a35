#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "simulator/Circuit.h"
#include "simulator/DeviceDescription.h"
#include "simulator/TesterLayout.h"

namespace simulator {

/// The relay cards: which relay is switched how, and what its contact makes of it.
///
/// Each card has a piece of either line. Its channel relays connect channels with this piece, its auxiliary
/// relays the piece with the tester's line: 48 and 50 (line 0), 49 and 51 (line 1), force and sense side of
/// the four-wire measurement. A piece reaches the instrument only when both are closed.
class RelayMatrix {
 public:
  static constexpr int RelaysPerLine = 52;
  static constexpr int FirstAuxiliary = ChannelsPerCard;

  explicit RelayMatrix(const DeviceDescription& description);

  /// Carries out a bus write. Returns whether a relay changed its state.
  /// Throws DriverError naming the address (and the card) when nothing answers there, or the value when the
  /// line has no such relay.
  bool Write(std::int32_t address, std::int32_t value);

  /// Whether the card of the relay `relay` (1 .. 240 over all cards) is fitted. Throws DriverError when it is
  /// not, or when there is no such relay.
  bool Probe(std::int32_t relay) const;

  bool HasCard(int card) const { return fitted_[static_cast<std::size_t>(card)]; }

  /// Whether the relay was switched closed, whatever its contact does. Everything counts from 0.
  bool IsClosed(int card, int line, int relay) const;

  int ClosedChannelRelays() const;
  int ClosedAuxiliaryRelays() const;

  /// Adds the closed contacts to the circuit, each channel contact with the contact resistance `ohm`.
  void AddContacts(Circuit& circuit, double ohm) const;

 private:
  using LineRelays = std::uint64_t;  ///< bit n: relay n

  LineRelays& Coils(int card, int line) { return coils_[Index(card, line)]; }
  LineRelays Contacts(int card, int line) const;
  static std::size_t Index(int card, int line) { return static_cast<std::size_t>(CardLineIndex(card, line)); }

  std::array<bool, MaxCards> fitted_;
  bool missingFirstCardIsError_;
  std::array<LineRelays, CardLineCount> coils_{};
  std::array<LineRelays, CardLineCount> stuckOpen_{};
  std::array<LineRelays, CardLineCount> stuckClosed_{};
};

}  // namespace simulator
