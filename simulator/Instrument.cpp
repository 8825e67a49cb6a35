#include "simulator/Instrument.h"

#include <array>
#include <charconv>
#include <cmath>

namespace simulator {
namespace {

constexpr int DisplayedDigits = 7;

/// Rounds to the digits of the display. By way of the decimal text, because only that way the result is the
/// number nearest to the digits displayed.
double Displayed(double value) {
  std::array<char, 32> text;
  const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value,
                                          std::chars_format::scientific, DisplayedDigits - 1);
  if (error != std::errc()) return value;
  std::from_chars(text.data(), end, value);
  return value;
}

}  // namespace

Instrument::Instrument(const DeviceDescription& description)
    : resistanceNoise_(description.resistanceNoise),
      voltageNoise_(description.voltageNoise),
      drift_(description.drift),
      random_(description.seed) {}

double Instrument::FullScaleOhm(int range) {
  constexpr std::array<double, ResistanceRanges> ohm{200.0, 2e3, 20e3, 200e3, 2e6, 2e9};
  return ohm[static_cast<std::size_t>(range - 1)];
}

double Instrument::UnitOhm(int range) {
  if (range == 1) return 1.0;
  return range <= 4 ? 1e3 : 1e6;
}

double Instrument::Disturbed(double value, const Noise& noise) {
  if (noise.relative == 0.0 && noise.absolute == 0.0) return value;
  std::normal_distribution<double> deviation;
  const double relative = noise.relative * deviation(random_);
  return value * (1.0 + relative) + noise.absolute * deviation(random_);
}

double Instrument::ReadResistance(int range, double ohm) {
  const auto readings = static_cast<double>(readingsSinceSwitching_++);
  if (std::isinf(ohm)) return OverRange;
  const double settling = 1.0 + drift_.fraction * std::exp(-readings / drift_.readings);
  const double read = Disturbed(ohm * settling, resistanceNoise_);
  if (read > FullScaleOhm(range)) return OverRange;
  return Displayed(read / UnitOhm(range));
}

double Instrument::ReadVoltage(double volts) {
  const double read = Disturbed(volts, voltageNoise_);
  if (std::abs(read) > FullScaleVolts) return std::copysign(OverRange, read);
  return Displayed(read);
}

}  // namespace simulator
