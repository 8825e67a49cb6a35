#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "plugin/data/ShorttestData.h"

namespace shorttest::testkit {

/// Random choices that are the same everywhere for the same seed.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  /// 0 .. count - 1. REQUIRES: count > 0.
  int Below(int count) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(count)); }
  int Between(int low, int high) { return low + Below(high - low + 1); }
  double Real(double low, double high) {
    return low + (high - low) * static_cast<double>(engine_() >> 11U) / 9007199254740992.0;
  }
  bool Chance(double probability) { return Real(0.0, 1.0) < probability; }

  template <typename Item>
  const Item& Pick(const std::vector<Item>& items) {
    return items[static_cast<std::size_t>(Below(static_cast<int>(items.size())))];
  }
  template <typename Item>
  void Shuffle(std::vector<Item>& items) {
    for (int i = static_cast<int>(items.size()) - 1; i > 0; --i) {
      std::swap(items[static_cast<std::size_t>(i)], items[static_cast<std::size_t>(Below(i + 1))]);
    }
  }

 private:
  std::mt19937_64 engine_;
};

/// What a random harness may have.
struct HarnessOptions {
  int channels = 10;
  double netPart = 0.8;   ///< most that may lie between two channels of a net, as a part of the threshold
  bool voltages = false;  ///< channels that carry a voltage or a charge
  bool excludedPairs = false;
  bool leakage = false;  ///< weak paths between nets, above the threshold each
};

/// A device that can be learned without a doubt: what is connected lies well below the threshold, what is not
/// well above.
struct RandomHarness {
  std::string description;             ///< of device and tester, for the simulated tester
  TShortTestData blank;                ///< range, thresholds, options and excluded pairs, unlearned
  std::vector<std::vector<int>> nets;  ///< channels that belong together, two or more; others are free
  std::vector<int> live;               ///< channels with a voltage that stays
};

RandomHarness MakeHarness(Random& random, const HarnessOptions& options);

}  // namespace shorttest::testkit
