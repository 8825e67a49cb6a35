#include "simulator/Device.h"

#include <algorithm>
#include <cmath>

namespace simulator {
namespace {

Node NodeOf(Point point) { return point == GroundPoint ? nodes::Ground : nodes::Point(point); }

bool CanBeEmptied(const Capacitor& capacitor) {
  return capacitor.volts != 0.0 && capacitor.tauSeconds != Infinity;
}

}  // namespace

Device::Device(const DeviceDescription& description)
    : resistors_(description.resistors),
      capacitors_(description.capacitors),
      leakageOhm_(description.leakageOhm),
      housing_(nodes::Point(MaxChannels + description.innerNodes)) {}

void Device::AddResistors(Circuit& circuit) const {
  for (const Resistor& resistor : resistors_) {
    circuit.AddResistor(NodeOf(resistor.a), NodeOf(resistor.b), resistor.ohm);
  }
  if (leakageOhm_ == Infinity) return;
  for (int channel = 0; channel < MaxChannels; ++channel) {
    circuit.AddResistor(nodes::Point(channel), housing_, leakageOhm_);
  }
}

void Device::AddSources(Circuit& circuit) const {
  for (const Capacitor& capacitor : capacitors_) {
    const double left = std::exp(-dischargedSeconds_ / capacitor.tauSeconds);
    circuit.AddSource(NodeOf(capacitor.a), NodeOf(capacitor.b), capacitor.volts * left, capacitor.seriesOhm);
  }
}

void Device::Discharge(double seconds) { dischargedSeconds_ += seconds; }

bool Device::HasCharge() const { return std::any_of(capacitors_.begin(), capacitors_.end(), CanBeEmptied); }

void Device::DischargeShorted(const Circuit& circuit) {
  for (Capacitor& capacitor : capacitors_) {
    if (CanBeEmptied(capacitor) && circuit.Joined(NodeOf(capacitor.a), NodeOf(capacitor.b))) {
      capacitor.volts = 0.0;
    }
  }
}

}  // namespace simulator
