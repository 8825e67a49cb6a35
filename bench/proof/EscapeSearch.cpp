#include "bench/proof/EscapeSearch.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "bench/wiring/ChannelNets.h"

namespace kxbench::proof {

namespace {

/// The bounds of a resistance in a device description, Ohm.
constexpr double SmallestOhm = 1e-3;
constexpr double LargestOhm = 1e12;

constexpr double TurningTolerance = 1e-3;

/// More findings than any device can have.
constexpr std::int32_t NoErrorLimit = 1'000'000'000;

std::int32_t IndexOf(const TShortTestData& expectation, Channel channel) { return channel - expectation.von; }

bool IsInRange(const TShortTestData& expectation, Channel channel) {
  return channel >= expectation.von && channel <= expectation.bis;
}

/// The channel's expected net, itself included.
diagnosis::Net NetWith(const TShortTestData& expectation, Channel channel) {
  for (diagnosis::Net& net : wiring::NetsOf(expectation).nets) {
    if (std::binary_search(net.begin(), net.end(), channel)) return net;
  }
  return {channel};
}

bool IsState(CellState state) { return static_cast<std::uint8_t>(state) <= 4; }

/// One change of an expectation that may make a check find more.
struct Change {
  EscapeReason reason;
  bool (*make)(const ProofFault& fault, TShortTestData& expectation);  ///< false when nothing was changed
};

/// Calls `change` for each pair between the nets of the fault's two channels; whether any was changed.
template <typename ChangePair>
bool BetweenNets(const ProofFault& fault, TShortTestData& expectation, ChangePair change) {
  bool changed = false;
  for (const Channel a : NetWith(expectation, fault.channels.front())) {
    for (const Channel b : NetWith(expectation, fault.channels.back())) {
      const std::int32_t i = IndexOf(expectation, a);
      const std::int32_t j = IndexOf(expectation, b);
      if (i != j) changed = change(i, j) || changed;
    }
  }
  return changed;
}

bool Unsuspend(const ProofFault& fault, TShortTestData& expectation) {
  bool changed = false;
  for (const Channel channel : fault.channels) {
    const std::int32_t i = IndexOf(expectation, channel);
    if (expectation.Get(i, i) != CellState::Suspended) continue;
    changed = true;
    expectation.SetC(i, i, CellState::NotApplicable, NoResistance);
    for (std::int32_t k = 0; k <= expectation.Highconnections(); ++k) {
      if (k == i || expectation.Get(k, k) == CellState::Suspended) continue;
      if (expectation.Get(k, i) == CellState::NotTestable) {
        expectation.SetC(k, i, CellState::NotConnected, NoResistance);
      }
    }
  }
  return changed;
}

bool Include(const ProofFault& fault, TShortTestData& expectation) {
  return BetweenNets(fault, expectation, [&](std::int32_t i, std::int32_t j) {
    if (expectation.Get(i, j) != CellState::ExcludedPair) return false;
    expectation.SetC(i, j, CellState::NotConnected, NoResistance);
    return true;
  });
}

bool SayUnknown(const ProofFault& fault, TShortTestData& expectation) {
  return BetweenNets(fault, expectation, [&](std::int32_t i, std::int32_t j) {
    const CellState state = expectation.Get(i, j);
    if (state != CellState::Unknown && IsState(state)) return false;
    expectation.SetC(i, j, CellState::NotConnected, NoResistance);
    return true;
  });
}

bool LiftErrorLimit(const ProofFault&, TShortTestData& expectation) {
  expectation.MaxError = NoErrorLimit;
  return true;
}

bool ControlVoltages(const ProofFault& fault, TShortTestData& expectation) {
  if (fault.kind != FaultClass::Voltage || expectation.U_Control >= 1) return false;
  expectation.U_Control = 2;
  if (expectation.Timeout == 0) expectation.Timeout = 1;
  return true;
}

constexpr std::array<Change, 5> Changes = {{{EscapeReason::Suspended, Unsuspend},
                                            {EscapeReason::Excluded, Include},
                                            {EscapeReason::Unknown, SayUnknown},
                                            {EscapeReason::VoltageControlOff, ControlVoltages},
                                            {EscapeReason::ErrorLimit, LiftErrorLimit}}};

/// The smallest resistance that counts as one: nets without any of their own.
DeviceModel WithoutResistance(DeviceModel device) {
  for (ModelResistor& resistor : device.resistors) resistor.ohm = std::min(resistor.ohm, SmallestOhm);
  device.contactOhm = 0;
  return device;
}

class Search {
 public:
  Search(const ProofFault& fault, const TShortTestData& expectation, const DeviceModel& device,
         const Finds& finds)
      : fault_(fault), expectation_(expectation), device_(device), finds_(finds) {}

  Escape Run() const {
    for (const Channel channel : fault_.channels) {
      if (!IsInRange(expectation_, channel)) return {EscapeReason::NotInExpectation, {}, {}};
    }
    std::vector<const Change*> applicable;
    for (const Change& change : Changes) {
      TShortTestData changed = expectation_;
      if (!change.make(fault_, changed)) continue;
      if (Found(changed, fault_)) return {change.reason, {}, {}};
      applicable.push_back(&change);
    }
    if (const auto ohm = OhmToBeFound(expectation_)) return {EscapeReason::Threshold, ohm, {}};
    if (const auto reason = ReasonAmong(applicable)) return {*reason, {}, {}};
    return {EscapeReason::Limits, {}, Limit()};
  }

 private:
  bool Found(const TShortTestData& expectation, const ProofFault& fault) const {
    return finds_(expectation, WithFault(device_, fault));
  }

  TShortTestData With(const std::vector<const Change*>& changes) const {
    TShortTestData changed = expectation_;
    for (const Change* change : changes) change->make(fault_, changed);
    return changed;
  }

  /// With all changes at once, then with one less at a time.
  std::optional<EscapeReason> ReasonAmong(std::vector<const Change*> changes) const {
    const TShortTestData all = With(changes);
    const bool anyOhm = OhmToBeFound(all).has_value();
    if (!Found(all, fault_) && !anyOhm) return std::nullopt;
    for (std::size_t i = 0; i < changes.size();) {
      std::vector<const Change*> fewer = changes;
      fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(i));
      const TShortTestData rest = With(fewer);
      if (Found(rest, fault_) || (anyOhm && OhmToBeFound(rest).has_value())) {
        changes = std::move(fewer);
      } else {
        ++i;
      }
    }
    return changes.empty() ? std::nullopt : std::optional(changes.front()->reason);
  }

  std::optional<double> OhmToBeFound(const TShortTestData& expectation) const {
    const bool isShort = fault_.kind == FaultClass::Short || fault_.kind == FaultClass::ResistiveShort;
    if (!isShort && fault_.kind != FaultClass::HighResistance) return std::nullopt;
    const auto found = [&](double ohm) {
      ProofFault other = fault_;
      other.ohm = ohm;
      return Found(expectation, other);
    };
    return isShort ? TurningPoint(SmallestOhm, fault_.ohm, true, found)
                   : TurningPoint(fault_.ohm, LargestOhm, false, found);
  }

  /// The rule of the procedure that hides the fault, by what would be found in its place.
  std::string Limit() const {
    if (fault_.kind == FaultClass::Tester) return fault_.staysClosed ? NeverOpensLimit : NeverClosesLimit;
    if (fault_.kind == FaultClass::Voltage) {
      ProofFault reversed = fault_;
      reversed.volts = -fault_.volts;
      if (Found(expectation_, reversed)) return fault_.volts < 0 ? NegativeLimit : PositiveFirstLimit;
      return DevicesLimit;
    }
    if (finds_(expectation_, WithFault(WithoutResistance(device_), fault_))) return FarEndLimit;
    return DevicesLimit;
  }

  const ProofFault& fault_;
  const TShortTestData& expectation_;
  const DeviceModel& device_;
  const Finds& finds_;
};

}  // namespace

Escape ReasonOf(const ProofFault& fault, const TShortTestData& expectation, const DeviceModel& device,
                const Finds& finds) {
  return Search(fault, expectation, device, finds).Run();
}

std::optional<double> TurningPoint(double low, double high, bool belowIsFound,
                                   const std::function<bool(double ohm)>& found) {
  if (found(low) != belowIsFound || found(high) == belowIsFound) return std::nullopt;
  while (high / low > 1 + TurningTolerance) {
    const double middle = std::sqrt(low * high);
    (found(middle) == belowIsFound ? low : high) = middle;
  }
  return belowIsFound ? low : high;
}

std::optional<double> LargestJoint(Channel contact, const TShortTestData& expectation,
                                   const DeviceModel& device, const Finds& finds) {
  ProofFault joint;
  joint.kind = FaultClass::HighResistance;
  joint.channels = {contact};
  return TurningPoint(SmallestOhm, LargestOhm, false, [&](double ohm) {
    joint.ohm = ohm;
    return finds(expectation, WithFault(device, joint));
  });
}

std::optional<double> SmallestInsulation(Channel a, Channel b, const TShortTestData& expectation,
                                         const DeviceModel& device, const Finds& finds) {
  ProofFault leak;
  leak.kind = FaultClass::Short;
  leak.channels = {a, b};
  return TurningPoint(SmallestOhm, LargestOhm, true, [&](double ohm) {
    leak.ohm = ohm;
    return finds(expectation, WithFault(device, leak));
  });
}

}  // namespace kxbench::proof
