#pragma once

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "plugin/data/ShorttestData.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeDriver.h"
#include "tests/support/PlainTester.h"

namespace shorttest::testkit {

/// A random device and a random test of it, the same for the same seed: everything that can be odd is odd now
/// and then. Applied to two fake drivers, it makes them answer alike.
class RandomCase {
 public:
  explicit RandomCase(unsigned seed) : random_(seed) {
    channels = Below(4) == 0 ? 1 + Below(12) : 1 + Below(6);
    options.von = Below(2) == 0 ? 1 : 40 + Below(12);
    options.cards = (options.von + channels - 2) / 48 + 1;
    options.schwelle = Pick({10.0, 10.0, 1.0, 200.0});
    options.schwelle2 = Pick({10.0, 10.0, 2.0, 300.0, 5000.0});
    options.uControl = static_cast<int>(Pick({2, 2, 2, 1, 0, -1, 3}));
    options.timeout = static_cast<int>(Pick({400, 400, 50, -100}));
    options.maxError = static_cast<int>(Pick({10, 10, 3, 2, 1, 0, -1}));
    options.lastRelaisKarte = static_cast<int>(Pick({0, 1, 2, -1}));
    options.lastRelais = static_cast<int>(Pick({0, 3, 7}));
    matrix = RandomMatrix();
    failAt = Below(4) == 0 ? 1 + Below(150) : 0;
    stopAt = Below(4) == 0 ? 1 + Below(40) : 0;
    onlyOneStop = Below(2) == 0;
    closeBox = Below(2) == 0;
    deviceSeed_ = static_cast<unsigned>(random_());
  }

  TShortTestData Data() const {
    TShortTestData data(options.von, options.von + channels - 1);
    data.Schwelle = options.schwelle;
    data.Schwelle2 = options.schwelle2;
    data.U_Control = options.uControl;
    data.Timeout = options.timeout;
    data.MaxError = options.maxError;
    data.LastRelaisKarte = options.lastRelaisKarte;
    data.LastRelais = options.lastRelais;
    for (int i = 0; i < channels; ++i) {
      for (int j = 0; j <= i; ++j) {
        data.SetC(i, j, static_cast<CellState>(matrix.Get(i, j)), matrix.GetR(i, j));
      }
    }
    data.voltages = matrix.volts;
    return data;
  }

  /// Connects the device to a driver, and makes the driver fail where this case says so.
  void ConnectTo(FakeDriver& driver) const {
    std::mt19937 random(deviceSeed_);
    const auto below = [&random](int count) {
      return static_cast<int>(random() % static_cast<unsigned>(count));
    };
    const auto channel = [&] { return options.von + below(channels); };
    const std::vector<double> resistances = {0.0, 0.4, 5.0, 9.4, 9.99, 10.0, 10.9, 12.0, 150.0, 900.0};
    const std::vector<double> voltages = {0.3, 0.5, 0.6, 0.7, 2.0, -0.6, -2.0, 24.0};
    for (int i = below(2 * channels); i > 0; --i) {
      const int a = channel();
      const int b = channel();
      if (a != b) driver.Wire(a, b, resistances[static_cast<std::size_t>(below(10))]);
    }
    for (int i = below(3); i > 1; --i) driver.Live(channel(), voltages[static_cast<std::size_t>(below(8))]);
    for (int i = below(3); i > 1; --i) {
      driver.Charge(channel(), voltages[static_cast<std::size_t>(below(8))], 0.7);
    }
    if (below(8) == 0) {
      // An instrument that reads whatever it likes.
      const auto seed = static_cast<unsigned>(random());
      driver.AllReadings([seed](int number) {
        const unsigned mixed = (seed + static_cast<unsigned>(number)) * 2654435761U >> 20U;
        return mixed % 7 == 0 ? -3.0 : static_cast<double>(mixed % 40) * 0.5;
      });
    }
    if (failAt != 0) driver.FailAt(failAt, "fault");
  }

  int channels = 1;
  PlainOptions options;
  PlainMatrix matrix{1};
  int failAt = 0;  ///< failing driver call; 0: none
  int stopAt = 0;  ///< progress call at which the user stops; 0: never
  bool onlyOneStop = false;
  bool closeBox = false;

 private:
  int Below(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  double Pick(const std::vector<double>& values) {
    return values[static_cast<std::size_t>(Below(static_cast<int>(values.size())))];
  }

  /// Mostly sensible nets, with pairs of every other state strewn in.
  PlainMatrix RandomMatrix() {
    PlainMatrix random(channels);
    for (int i = Below(channels); i > 0; --i) random.Put(Below(channels), Below(channels), 2, 0.5);
    for (int i = 0; i < channels; ++i) {
      for (int j = 0; j < i; ++j) random.Put(i, j, 1, -1.0);
    }
    for (int n = Below(4); n > 1; --n) {
      const int i = Below(channels);
      const int j = Below(channels);
      if (i != j) random.Set(i, j, static_cast<int>(Pick({0, 1, 2, 3, 3, 4, 5})), -1.0);
    }
    if (Below(4) == 0) random.Suspend(Below(channels), 1.0);
    if (Below(30) == 0) {
      for (int i = 0; i < channels; ++i) random.Suspend(i, 1.0);
    }
    return random;
  }

  std::mt19937 random_;
  unsigned deviceSeed_ = 0;
};

}  // namespace shorttest::testkit
