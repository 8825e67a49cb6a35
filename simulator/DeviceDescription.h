#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "simulator/TesterLayout.h"

namespace simulator {

/// A point of the device under test: a channel (0 .. MaxChannels - 1, channel number - 1) or an inner node
/// (from MaxChannels).
using Point = int;

/// Stands in for the second point of a source against the tester's ground.
inline constexpr Point GroundPoint = -1;

inline constexpr double Infinity = std::numeric_limits<double>::infinity();

struct Resistor {
  Point a;
  Point b;
  double ohm;  ///< 0 or more
};

/// A charged capacitance: U(t) = volts * exp(-t / tauSeconds), `a` positive against `b`. With an infinite
/// time constant it is a source that stays.
struct Capacitor {
  Point a;
  Point b;
  double volts;
  double tauSeconds;
  double seriesOhm;  ///< above 0
};

/// A relay whose contact does not follow its coil. Card, line and relay count from 0.
struct StuckRelay {
  int card;
  int line;
  int relay;
  bool closed;
};

/// Calls `first` .. `last` (counted from 1) fail with a text.
struct CallFault {
  std::int64_t first;
  std::int64_t last;
  std::string text;
};

/// Standard deviation of the readings: absolute in Ohm or volts, and relative.
struct Noise {
  double absolute = 0.0;
  double relative = 0.0;
};

/// The n-th resistance reading (n = 0, 1, ...) after a relay was switched is too large by the fraction
/// `fraction` * exp(-n / readings) of the true value.
struct Drift {
  double fraction = 0.0;
  double readings = 1.0;
};

/// Relay that carries the terminating resistor; both count from 0.
struct TerminatorAddress {
  int card;
  int relay;
};

/// Everything the simulated tester is told: its own make-up and faults, and the device connected to it.
/// Written as text, see docs/device-description.md.
struct DeviceDescription {
  // the tester
  std::array<bool, MaxCards> fittedCards{true};
  bool missingFirstCardIsError = false;  ///< else its line resets and its probe fail without a pending error
  int generation = 2;
  std::optional<TerminatorAddress> terminator;  ///< none: one at every relay of every card
  double contactOhm = 0.0;
  Noise resistanceNoise;
  Noise voltageNoise;
  std::uint64_t seed = 0;
  Drift drift;
  std::vector<StuckRelay> stuckRelays;
  std::vector<CallFault> callFaults;

  // the device
  int innerNodes = 0;
  std::vector<Resistor> resistors;
  std::vector<Capacitor> capacitors;
  double leakageOhm = Infinity;  ///< from every channel to the device's housing
};

}  // namespace simulator
