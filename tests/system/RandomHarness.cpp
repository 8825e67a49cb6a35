#include "tests/system/RandomHarness.h"

#include <algorithm>

namespace shorttest::testkit {
namespace {

constexpr int ChannelsPerCard = 48;
constexpr int MaxChannel = 240;

std::string Text(double value) { return std::to_string(value); }

std::string WireText(int a, int b, double ohm) {
  return "wire " + std::to_string(a) + " " + std::to_string(b) + " " + Text(std::max(ohm, 0.001)) + "\n";
}

class Maker {
 public:
  Maker(Random& random, const HarnessOptions& options) : random_(random), options_(options) {}

  RandomHarness Make() {
    ChooseRange();
    ChooseThresholds();
    MakeNets();
    if (options_.leakage) MakeLeakage();
    if (options_.voltages) MakeVoltages();
    if (options_.excludedPairs) ExcludePairs();
    DescribeTester();
    return std::move(harness_);
  }

 private:
  void ChooseRange() {
    von_ = random_.Between(1, MaxChannel - options_.channels + 1);
    bis_ = von_ + options_.channels - 1;
    harness_.blank = TShortTestData(von_, bis_);
  }

  void ChooseThresholds() {
    const std::vector<double> thresholds = {1.0,   2.5,   10.0, 10.0, 10.0,  50.0,
                                            179.9, 500.0, 5e3,  25e3, 300e3, 2e6};
    harness_.blank.Schwelle = random_.Pick(thresholds);
    // Below the connection threshold the short threshold does not count.
    harness_.blank.Schwelle2 = harness_.blank.Schwelle * (random_.Chance(0.3) ? random_.Real(0.2, 3.0) : 1.0);
    // The instrument's readings may begin too large by a part.
    drift_ = random_.Chance(0.3) ? random_.Real(0.0, 0.5) : 0.0;
    most_ = options_.netPart * harness_.blank.Schwelle / (1.0 + drift_);
    least_ = 1.3 * std::max(harness_.blank.Schwelle, harness_.blank.Schwelle2);
  }

  // Splits the channels into nets; what is left over is free.
  void MakeNets() {
    std::vector<int> channels;
    for (int channel = von_; channel <= bis_; ++channel) channels.push_back(channel);
    random_.Shuffle(channels);
    const int largest = random_.Chance(0.2) ? options_.channels : std::min(options_.channels, 6);
    std::size_t next = 0;
    while (next < channels.size()) {
      const int size = random_.Chance(0.4) ? 1 : random_.Between(1, largest);
      const std::size_t end = std::min(channels.size(), next + static_cast<std::size_t>(size));
      std::vector<int> net(channels.begin() + static_cast<std::ptrdiff_t>(next),
                           channels.begin() + static_cast<std::ptrdiff_t>(end));
      if (net.size() >= 2) {
        Wire(net);
        std::sort(net.begin(), net.end());
        harness_.nets.push_back(net);
      }
      all_.push_back(net);
      next = end;
    }
  }

  // Connects the channels of a net so that no two are more than most_ apart.
  void Wire(const std::vector<int>& net) {
    // A joint of high resistance at one end, another within: together still below the threshold.
    const double joint = random_.Chance(0.3) ? 0.4 * most_ : 0.0;
    const double rest = most_ - joint - 0.1 * most_;
    switch (random_.Below(3)) {
      case 0: {  // chain
        for (std::size_t i = 1; i < net.size(); ++i) {
          Add(net[i - 1], net[i], rest / static_cast<double>(net.size()) * random_.Real(0.0, 1.0));
        }
        break;
      }
      case 1: {  // star around a splice
        std::string line = "net";
        for (const int channel : net) line += " " + std::to_string(channel);
        harness_.description +=
            line + " each " + Text(std::max(rest / 2.0 * random_.Real(0.0, 1.0), 0.001)) + "\n";
        break;
      }
      default: {  // tree, with some wires twice
        for (std::size_t i = 1; i < net.size(); ++i) {
          const int other = net[static_cast<std::size_t>(random_.Below(static_cast<int>(i)))];
          Add(other, net[i], rest / static_cast<double>(net.size()) * random_.Real(0.0, 1.0));
          if (random_.Chance(0.2)) Add(other, net[i], rest);
        }
        break;
      }
    }
    if (joint > 0.0) {
      harness_.description +=
          "joint " + std::to_string(net.back()) + " " + Text(std::max(joint, 0.001)) + "\n";
    }
  }

  void Add(int a, int b, double ohm) { harness_.description += WireText(a, b, ohm); }

  // Weak paths between nets. They form no ring, so two nets are never closer than one path.
  void MakeLeakage() {
    for (std::size_t i = 1; i < all_.size(); ++i) {
      if (!random_.Chance(0.5)) continue;
      const auto& other = all_[static_cast<std::size_t>(random_.Below(static_cast<int>(i)))];
      const double ohm = least_ * (random_.Chance(0.5) ? random_.Real(1.0, 2.0) : random_.Real(2.0, 1000.0));
      Add(random_.Pick(all_[i]), random_.Pick(other), std::min(ohm, 1e11));
    }
  }

  void MakeVoltages() {
    std::vector<double> volts = {3.0, 5.0, 12.0, 24.0, -5.0, -12.0};
    random_.Shuffle(volts);
    harness_.blank.U_Control = random_.Between(1, 2);
    const bool charges = harness_.blank.U_Control == 2 && random_.Chance(0.5);
    const int count = random_.Between(1, 2);
    for (int i = 0; i < count; ++i) {
      const int channel = random_.Between(von_, bis_);
      const std::string start =
          "charge " + std::to_string(channel) + " " + Text(volts[static_cast<std::size_t>(i)]) + " tau ";
      // The path through the source is no connection of two channels, however many sources there are.
      const std::string series = " series " + Text(least_) + "\n";
      harness_.description += start + (charges ? Text(random_.Real(0.005, 0.05)) : "never") + series;
      if (!charges) harness_.live.push_back(channel);
    }
  }

  void ExcludePairs() {
    const int count = random_.Between(1, std::max(1, options_.channels / 3));
    for (int n = 0; n < count; ++n) {
      const int i = random_.Below(options_.channels);
      const int j = random_.Below(options_.channels);
      if (i != j) harness_.blank.SetC(i, j, CellState::ExcludedPair, NoResistance);
    }
  }

  void DescribeTester() {
    const int needed = (bis_ - 1) / ChannelsPerCard + 1;
    harness_.description += "cards " + std::to_string(random_.Between(needed, 5)) + "\n";
    if (drift_ > 0.0) {
      harness_.description += "drift " + Text(drift_) + " " + Text(random_.Real(0.5, 3.0)) + "\n";
    }
    harness_.blank.Timeout = 400;
    if (random_.Chance(0.5)) {
      harness_.blank.LastRelaisKarte = random_.Between(1, needed);
      harness_.blank.LastRelais = random_.Between(1, 64);
      if (random_.Chance(0.5)) harness_.description += "generation 1\n";
    }
  }

  Random& random_;
  const HarnessOptions& options_;
  RandomHarness harness_{"", TShortTestData(1, 1), {}, {}};
  int von_ = 1;
  int bis_ = 1;
  double drift_ = 0.0;
  double most_ = 0.0;   ///< Ohm between two channels of a net
  double least_ = 0.0;  ///< Ohm between two nets
  std::vector<std::vector<int>> all_;
};

}  // namespace

RandomHarness MakeHarness(Random& random, const HarnessOptions& options) {
  return Maker(random, options).Make();
}

}  // namespace shorttest::testkit
