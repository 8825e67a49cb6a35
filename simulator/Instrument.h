#pragma once

#include <cstdint>
#include <random>

#include "simulator/DeviceDescription.h"

namespace simulator {

/// The measuring instrument: turns the true value between the lines into what it displays.
///
/// Readings have seven significant digits. A resistance range ends at its full scale; above it, and for an
/// open circuit, the reading is OverRange, without noise or drift, so that two of them agree.
class Instrument {
 public:
  /// Reading beyond the full scale, in the unit of the range.
  static constexpr double OverRange = 1e9;

  /// Resistance of either line to the tester's ground while a voltage is read, Ohm.
  static constexpr double InputOhm = 10e6;

  static constexpr double FullScaleVolts = 200.0;
  static constexpr int ResistanceRanges = 6;

  explicit Instrument(const DeviceDescription& description);

  /// Largest resistance that range 1 to 6 measures, Ohm: 200 Ohm, and ten times more with every range;
  /// range 6 goes on to 2 GOhm because no range follows it.
  static double FullScaleOhm(int range);

  /// What one unit of the range's readings stands for, Ohm: 1, 1000 (ranges 2 to 4) or 1000000 (5 and 6).
  static double UnitOhm(int range);

  /// Displays `ohm` in the unit of the range. REQUIRES: range in 1 .. 6.
  double ReadResistance(int range, double ohm);

  /// Displays `volts`; beyond the full scale OverRange with their sign.
  double ReadVoltage(double volts);

  /// A relay was switched: the resistance readings settle anew.
  void StartSettling() { readingsSinceSwitching_ = 0; }

 private:
  double Disturbed(double value, const Noise& noise);

  Noise resistanceNoise_;
  Noise voltageNoise_;
  Drift drift_;
  std::mt19937_64 random_;
  std::int64_t readingsSinceSwitching_ = 0;
};

}  // namespace simulator
