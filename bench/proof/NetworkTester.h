#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "bench/proof/CurrentTester.h"
#include "bench/proof/DeviceModel.h"
#include "bench/proof/HeldClock.h"
#include "simulator/Circuit.h"
#include "simulator/Instrument.h"

namespace kxbench::proof {

/// The simulated tester for very many checks of small changes to one device. The physics is the simulator's:
/// its circuits, its nodal analysis, its instrument. What is left out of a circuit here is what no current
/// can flow through: of a device whose parts hang together only through the measurement lines, a reading
/// looks at those parts that are on both lines, one by one, and puts them in parallel.
///
/// Unlike the simulator it may have 64 cards. It knows no noise, drift or failing calls, and pieces of a line
/// that are not set up reach nothing at all.
class NetworkTester : public Driver {
 public:
  /// `device` and `clock` outlive it.
  NetworkTester(const DeviceModel& device, HeldClock& clock);

  void BusWrite(std::int32_t address, std::int32_t value) override;
  void RelaySet(std::int32_t card, std::int32_t relay, std::int32_t state) override;
  std::int32_t MsuWriteRelay(std::int32_t relay) override;
  double AdxRead(std::int32_t function, std::int32_t range) override;
  std::optional<std::string> PendingError() const override { return error_; }
  bool HasPendingError() const override { return error_.has_value(); }
  void DeletePendingError() override { error_.reset(); }

  /// Relays whose coils are on, auxiliary ones and terminating resistors included.
  std::size_t ClosedRelays() const;

 private:
  static constexpr int Lines = 2;
  static constexpr std::size_t MostCards = 64;
  using Relays = std::uint64_t;  ///< of one line of one card; bit n: relay n
  using LineRelays = std::array<Relays, MostCards>;

  /// Nodes of the device that resistors connect, with these resistors.
  struct Part {
    std::vector<std::size_t> nodes;
    std::vector<std::size_t> resistors;
    bool charged = false;
  };

  void FindParts();
  bool RequireCard(std::int32_t card);
  LineRelays ContactsOn(int line) const;
  bool IsOn(const LineRelays& contacts, std::size_t node) const;
  std::vector<std::size_t> PartsOnBothLines();
  void AddPart(const Part& part, simulator::Node firstNode);
  double Ohm();
  double OhmThrough(const Part& part);
  double Volts();

  const DeviceModel& device_;
  HeldClock& clock_;
  std::size_t cards_;
  std::vector<Part> parts_;
  std::vector<std::size_t> partOf_;   ///< by node
  std::vector<std::size_t> placeOf_;  ///< by node: its place within its part
  std::vector<std::size_t> chargedParts_;
  std::array<LineRelays, Lines> coils_{};
  std::array<LineRelays, Lines> stuckOpen_{};
  std::array<LineRelays, Lines> stuckClosed_{};
  std::array<LineRelays, Lines> contacts_{};  ///< what reaches the lines; of the last reading
  std::vector<char> seen_;                    ///< by part; all 0 between readings
  std::optional<double> ohm_;                 ///< of the last reading, until a relay moves
  simulator::Instrument instrument_;
  simulator::Circuit circuit_;
  std::set<std::pair<std::int32_t, std::int32_t>> terminators_;  ///< closed ones: card and relay
  std::optional<std::string> error_;
};

}  // namespace kxbench::proof
