#pragma once

#include <cstddef>
#include <vector>

#include "simulator/Circuit.h"
#include "simulator/DeviceDescription.h"

namespace simulator {

/// The device under test: a network of resistors between its points, insulation to its housing, and charged
/// capacitances.
class Device {
 public:
  explicit Device(const DeviceDescription& description);

  /// Number of nodes of a circuit that tester and device form.
  std::size_t NodeCount() const { return housing_ + 1; }

  /// Adds resistors and insulation to the circuit.
  void AddResistors(Circuit& circuit) const;

  /// Adds the capacitances to the circuit as sources of the voltage left on them.
  void AddSources(Circuit& circuit) const;

  /// Lets the capacitances discharge for `seconds` more, each with its time constant.
  void Discharge(double seconds);

  /// Whether a capacitance is left that a short circuit would discharge.
  bool HasCharge() const;

  /// Empties every capacitance whose two points are one in `circuit`. Sources that stay are left alone.
  void DischargeShorted(const Circuit& circuit);

 private:
  std::vector<Resistor> resistors_;
  std::vector<Capacitor> capacitors_;  ///< volts: at the start, 0 once shorted
  double leakageOhm_;
  Node housing_;
  double dischargedSeconds_ = 0.0;
};

}  // namespace simulator
