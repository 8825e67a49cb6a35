#include "plugin/hardware/Measurement.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <string>

#include "contracts/BrenmorHWDevice.h"
#include "plugin/hardware/Bus.h"
#include "plugin/hardware/Timing.h"
#include "text/NumberText.h"
#include "text/Rounding.h"

namespace {

constexpr std::int32_t VoltageFunction = 8;
constexpr std::int32_t VoltageRange = 2;
constexpr std::int32_t VoltageSetting = 20;
constexpr std::int32_t ResistanceFunction = 10;
constexpr std::int32_t ResistanceSetting = 2;

constexpr double RangeOffset = 0.75527238;
constexpr int MaxReadings = 101;

// Settling tolerance of ranges 1 to 6, Ohm: 10^(range - 1).
constexpr std::array<double, 6> Tolerance = {1.0, 10.0, 100.0, 1000.0, 10000.0, 100000.0};

// The driver reads Ohm in range 1, kOhm in ranges 2 to 4 and MOhm in ranges 5 and 6.
double ReadOhm(int range) {
  double ohm = brenmor_adx_read(ResistanceFunction, range, ResistanceSetting);
  if (range >= 2) ohm *= 1000.0;
  if (range >= 5) ohm *= 1000.0;
  return ohm;
}

// What a procedure goes on with; `error` is for the user.
double RequireNumber(double reading, const char* error) {
  if (std::isnan(reading)) throw std::runtime_error(error);
  return reading;
}

// The procedure of WaitForDischarge, which may end on anything.
double LastVoltage(const TShortTestData& data, double limit, double posFrom, double posTo,
                   const shorttest::ProgressFunction& progress) {
  double volts = ReadVoltage();
  if (std::fabs(volts) <= limit || data.U_Control != 2) return volts;
  if (data.Timeout == 0) {
    throw std::invalid_argument(
        "TIMEOUT ist 0 ms. Um auf die Entladung zu warten, muss die Zeit ungleich 0 sein.");
  }

  const std::uint32_t start = shorttest::ActiveClock().TickCount();
  for (;;) {
    volts = ReadVoltage();
    if (limit >= std::fabs(volts)) return volts;
    // The difference is right across the wrap of the tick count.
    const auto elapsed = static_cast<std::int32_t>(shorttest::ActiveClock().TickCount() - start);
    const double position =
        posFrom + static_cast<double>(elapsed) / static_cast<double>(data.Timeout) * (posTo - posFrom);
    // Progress before the time limit, so that the user sees the last moment, too: its last call may lie a
    // little past posTo.
    if (progress(position)) return volts;
    if (elapsed > data.Timeout) return volts;
  }
}

}  // namespace

int shorttest::ResistanceRange(double reference) {
  const double nearest = RoundToEven(std::log10(reference) - RangeOffset);
  return static_cast<int>(std::max(1.0, std::min(6.0, nearest)));
}

double ReadVoltage() {
  const double volts = brenmor_adx_read(VoltageFunction, VoltageRange, VoltageSetting);
  CheckHWError();
  return volts;
}

double MeasureResistance(double reference) {
  if (!(reference > 0.0)) {
    throw std::invalid_argument("Der Schwellwert (WIDERSTAND, WIDERSTAND2) ist " +
                                shorttest::FloatToText(reference) + " Ohm. Er muss größer als 0 sein.");
  }
  const int range = shorttest::ResistanceRange(reference);
  const double tolerance = Tolerance[static_cast<std::size_t>(range - 1)];

  double current = 0.0;
  double previous = 0.0;
  int count = 0;
  do {
    previous = current;
    current = ReadOhm(range);
    ++count;
  } while (!(tolerance > std::fabs(current - previous)) && count < MaxReadings);
  CheckHWError();
  return RequireNumber(current, "Der gemessene Widerstand ist keine Zahl.");
}

double WaitForDischarge(const TShortTestData& data, double limit, double posFrom, double posTo,
                        const shorttest::ProgressFunction& progress) {
  if (data.U_Control < 1) return 0.0;
  return RequireNumber(LastVoltage(data, limit, posFrom, posTo, progress),
                       "Die gemessene Spannung ist keine Zahl.");
}
