#pragma once

#include <cmath>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "contracts/BrenmorHWDevice.h"
#include "tests/support/CallLog.h"
#include "tests/support/FakeClock.h"

/// The procedures a second time, as plainly as they can be written: no thought of speed, of the call stack or
/// of sharing anything with the code under test. Both run against the same fake device, and their calls must
/// be the same to the last one.

namespace shorttest::testkit {

/// What the plain procedures throw for a driver error.
class PlainError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The pair matrix as two full squares; a pair is written on both sides of the diagonal.
struct PlainMatrix {
  explicit PlainMatrix(int channels)
      : count(channels),
        state(static_cast<std::size_t>(channels), std::vector<int>(static_cast<std::size_t>(channels), 0)),
        ohm(static_cast<std::size_t>(channels),
            std::vector<double>(static_cast<std::size_t>(channels), -1.0)),
        volts(static_cast<std::size_t>(channels), 0.0) {
    for (int i = 0; i < channels; ++i) At(state, i, i) = 8;
  }

  bool AllSuspended() const {
    int suspended = 0;
    for (int i = 0; i < count; ++i) suspended += Get(i, i) == 9 ? 1 : 0;
    return suspended == count;
  }
  int Get(int i, int j) const { return state[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)]; }
  double GetR(int i, int j) const { return ohm[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)]; }
  double Volts(int i) const { return volts[static_cast<std::size_t>(i)]; }

  void Set(int i, int j, int newState, double newOhm) {
    At(state, i, j) = At(state, j, i) = newState;
    At(ohm, i, j) = At(ohm, j, i) = newOhm;
  }

  void Put(int i, int j, int newState, double newOhm) {
    if (newState == 0 || Get(i, j) != 0) return;
    Set(i, j, newState, newOhm);
    for (int k = 0; k < count; ++k) {
      if (newState == 2) Put(i, k, Get(j, k), GetR(j, k));
      if (newState == 2) Put(j, k, Get(i, k), GetR(i, k));
      if (Get(i, k) == 2) Put(j, k, newState, newOhm);
      if (Get(j, k) == 2) Put(i, k, newState, newOhm);
    }
  }

  void Suspend(int channel, double u) {
    for (int k = 0; k < count; ++k) {
      if (Get(k, k) == 9 && Get(channel, channel) == 9) continue;
      if (Get(k, channel) != 8) Set(k, channel, 4, -1.0);
    }
    Set(channel, channel, 9, -1.0);
    volts[static_cast<std::size_t>(channel)] = u;
  }

  int count;
  std::vector<std::vector<int>> state;
  std::vector<std::vector<double>> ohm;
  std::vector<double> volts;

 private:
  template <typename Item>
  static Item& At(std::vector<std::vector<Item>>& square, int i, int j) {
    return square[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
  }
};

/// What the plain procedures are told; the names are those of the fields of TShortTestData.
struct PlainOptions {
  int von = 1;
  double schwelle = 10.0;
  double schwelle2 = 10.0;
  int uControl = 2;
  int lastRelaisKarte = 0;
  int lastRelais = 0;
  int timeout = 5000;
  int maxError = 10;
  int cards = 1;
};

/// Relays and instrument, call by call.
class PlainTester {
 public:
  PlainTester(CallLog& log, FakeClock& clock) : log_(log), clock_(clock) {}

  static void CheckError() {
    if (brenmor_bus_get_error() == 0) return;
    char* const text = brenmor_bus_get_error_msg();
    const std::string message = text;
    brenmor_free_mem(text);
    throw PlainError(message);
  }

  static void Connect(int channel, int line) {
    brenmor_bus_write(128 + 2 * ((channel - 1) / 48) + line, 0, 128 + (channel - 1) % 48);
    CheckError();
  }

  void Release(int channel, int line) {
    brenmor_bus_write(128 + 2 * ((channel - 1) / 48) + line, 0, (channel - 1) % 48);
    CheckError();
    log_.Add("wait 1000 us");
  }

  static void Prepare(int cards, bool reset) {
    for (int k = 0; k < cards; ++k) {
      for (int line = 0; line <= 1; ++line) {
        if (reset) brenmor_bus_write(128 + 2 * k + line, 0, 64);
        brenmor_bus_write(128 + 2 * k + line, 0, 176 + line);
        brenmor_bus_write(128 + 2 * k + line, 0, 178 + line);
      }
      CheckError();
    }
  }

  static void ReleaseAll(int cards) {
    for (int address = 128; address < 128 + 2 * cards; ++address) brenmor_bus_write(address, 0, 64);
  }

  /// The card behind the range, where the relay lies that is closed when every channel up to the last of a
  /// card is suspended.
  static void ReleaseBehind(const PlainOptions& options, int channels, bool allSuspended) {
    if (allSuspended && options.von + channels - 1 == 48 * options.cards) {
      brenmor_bus_write(129 + 2 * options.cards, 0, 64);
    }
  }

  static void Termination(const PlainOptions& options, bool on) {
    if (options.lastRelaisKarte <= 0 || options.lastRelais <= 0) return;
    brenmor_relay_set(options.lastRelaisKarte - 1, options.lastRelais - 1, on ? 1 : 0);
    if (on) CheckError();
  }

  static double Voltage() {
    const double volts = brenmor_adx_read(8, 2, 20);
    CheckError();
    return volts;
  }

  static double Resistance(double reference) {
    const int range = reference < 179.99 ? 1 : reference < 1799.9 ? 2 : reference < 17999 ? 3 : 4;
    const double unit = range == 1 ? 1.0 : 1000.0;
    const double tolerance = std::pow(10.0, range - 1);
    double previous = 0.0;
    double current = 0.0;
    for (int count = 1; count <= 101; ++count) {
      previous = current;
      current = brenmor_adx_read(10, range, 2) * unit;
      if (std::fabs(current - previous) < tolerance) break;
    }
    CheckError();
    return current;
  }

  double Discharge(const PlainOptions& options, double limit, double from, double to,
                   const std::function<bool(double)>& progress) {
    if (options.uControl < 1) return 0.0;
    double volts = Voltage();
    if (std::fabs(volts) <= limit || options.uControl != 2) return volts;
    const std::uint32_t start = clock_.TickCount();
    while (true) {
      volts = Voltage();
      if (std::fabs(volts) <= limit) return volts;
      const auto elapsed = static_cast<double>(static_cast<std::int32_t>(clock_.TickCount() - start));
      if (progress(from + elapsed / options.timeout * (to - from))) return volts;
      if (elapsed > options.timeout) return volts;
    }
  }

 private:
  CallLog& log_;
  FakeClock& clock_;
};

}  // namespace shorttest::testkit
