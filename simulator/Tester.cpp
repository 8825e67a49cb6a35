#include "simulator/Tester.h"

#include "simulator/DriverError.h"

namespace simulator {
namespace {

// What the driver's callers pass; anything else is a mistake of theirs and becomes an error.
constexpr std::int32_t ProbeMode = 2;
constexpr std::int32_t VoltageFunction = 8;
constexpr std::int32_t VoltageRange = 2;
constexpr std::int32_t VoltageSetting = 20;
constexpr std::int32_t ResistanceFunction = 10;
constexpr std::int32_t ResistanceSetting = 2;

/// Relays per card at which a terminating resistor may sit.
constexpr std::int32_t TerminatorRelays = 64;

/// From this generation on the instrument discharges a device by itself.
constexpr int SelfDischargingGeneration = 2;

std::string ReadingText(std::int32_t function, std::int32_t range, std::int32_t setting) {
  return "the instrument has no function " + std::to_string(function) + " with range " +
         std::to_string(range) + " and setting " + std::to_string(setting);
}

}  // namespace

Tester::Tester(const DeviceDescription& description, const TimeSource& time)
    : time_(time),
      generation_(description.generation),
      contactOhm_(description.contactOhm),
      terminator_(description.terminator),
      callFaults_(description.callFaults),
      relays_(description),
      device_(description),
      instrument_(description),
      circuit_(device_.NodeCount()),
      seconds_(time.Seconds()) {
  RelaysSwitched();  // a stuck contact or a wire of 0 Ohm may short a capacitance from the start
}

Tester::Tester(std::string cause, const TimeSource& time) : Tester(DeviceDescription{}, time) {
  unusable_ = std::move(cause);
}

void Tester::SetPendingError(const std::string& text) {
  if (!pendingError_) pendingError_ = text;
}

template <typename Result, typename Action>
Result Tester::Call(Result failed, Action&& action) {
  try {
    BeginCall();
    return action();
  } catch (const std::runtime_error& error) {
    SetPendingError(error.what());
    return failed;
  }
}

void Tester::BeginCall() {
  LetTimePass();
  ++callCount_;
  if (!unusable_.empty()) throw DriverError(unusable_);
  for (const CallFault& fault : callFaults_) {
    if (fault.first <= callCount_ && callCount_ <= fault.last) throw DriverError(fault.text);
  }
}

void Tester::LetTimePass() {
  const double now = time_.Seconds();
  if (generation_ >= SelfDischargingGeneration || TerminatorOn()) device_.Discharge(now - seconds_);
  seconds_ = now;
}

void Tester::RelaysSwitched() {
  instrument_.StartSettling();
  if (!device_.HasCharge()) return;
  circuit_.Clear(device_.NodeCount());
  relays_.AddContacts(circuit_, 0.0);
  device_.AddResistors(circuit_);
  device_.DischargeShorted(circuit_);
}

void Tester::BusWrite(std::int32_t address, std::int32_t reserved, std::int32_t value) {
  Call(false, [&] {
    if (reserved != 0) throw DriverError("bus write with " + std::to_string(reserved) + " instead of 0");
    if (relays_.Write(address, value)) RelaysSwitched();
    return true;
  });
}

void Tester::RelaySet(std::int32_t card, std::int32_t relay, std::int32_t state) {
  Call(false, [&] {
    const bool exists = terminator_ ? card == terminator_->card && relay == terminator_->relay
                                    : card >= 0 && card < MaxCards && relays_.HasCard(card) && relay >= 0 &&
                                          relay < TerminatorRelays;
    if (!exists) {
      throw DriverError("there is no terminating resistor at relay " + std::to_string(relay + 1LL) +
                        " of card " + std::to_string(card + 1LL));
    }
    if (state != 0 && state != 1) throw DriverError("a relay has no state " + std::to_string(state));
    const std::pair<int, int> address(card, relay);
    const bool switched =
        state == 1 ? closedTerminators_.insert(address).second : closedTerminators_.erase(address) != 0;
    if (switched) instrument_.StartSettling();
    return true;
  });
}

std::int32_t Tester::MsuWriteRelay(std::int32_t relay, std::int32_t mode) {
  return Call(0, [&] {
    if (mode != ProbeMode) throw DriverError("a relay is probed with mode 2, not " + std::to_string(mode));
    return relays_.Probe(relay) ? 1 : 0;
  });
}

double Tester::AdxRead(std::int32_t function, std::int32_t range, std::int32_t setting) {
  return Call(Instrument::OverRange, [&] {
    if (function == VoltageFunction && range == VoltageRange && setting == VoltageSetting) {
      return ReadVoltage();
    }
    if (function == ResistanceFunction && range >= 1 && range <= Instrument::ResistanceRanges &&
        setting == ResistanceSetting) {
      return ReadResistance(range);
    }
    throw DriverError(ReadingText(function, range, setting));
  });
}

std::int32_t Tester::AdxHwGeneration() {
  return Call(0, [&] { return generation_; });
}

double Tester::ReadResistance(int range) {
  circuit_.Clear(device_.NodeCount());
  relays_.AddContacts(circuit_, contactOhm_);
  device_.AddResistors(circuit_);
  return instrument_.ReadResistance(range, circuit_.Resistance(nodes::Line(0), nodes::Line(1)));
}

double Tester::ReadVoltage() {
  circuit_.Clear(device_.NodeCount());
  relays_.AddContacts(circuit_, contactOhm_);
  device_.AddResistors(circuit_);
  device_.AddSources(circuit_);
  for (int line = 0; line < LineCount; ++line) {
    circuit_.AddResistor(nodes::Line(line), nodes::Ground, Instrument::InputOhm);
  }
  return instrument_.ReadVoltage(circuit_.Voltage(nodes::Line(0), nodes::Line(1)));
}

}  // namespace simulator
