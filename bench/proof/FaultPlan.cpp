#include "bench/proof/FaultPlan.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>

#include "bench/wiring/ChannelNets.h"

namespace kxbench::proof {

namespace {

constexpr double ShortOhm = 0.1;
constexpr double ResistiveShortPart = 0.9;
constexpr double HighResistanceTimes = 1.5;
constexpr double SourceVolts = 12;

/// What a voltage has fallen to after that part of the waiting time, V: just below the limit of a check,
/// which takes a reading of exactly 0.7 V as waited for, and as a finding.
constexpr double HarmlessVolts = 0.69;

/// The part of the waiting time that a capacitor needs.
constexpr double PartOfTheWait = 0.5;

using ChannelPair = std::pair<Channel, Channel>;

/// `count` of the pairs, every choice equally probable, in their order.
std::vector<ChannelPair> Sample(std::vector<ChannelPair> pairs, std::size_t count, std::mt19937_64& random) {
  if (pairs.size() <= count) return pairs;
  std::vector<ChannelPair> chosen;
  for (std::size_t i = 0; i < pairs.size() && chosen.size() < count; ++i) {
    if (random() % (pairs.size() - i) < count - chosen.size()) chosen.push_back(pairs[i]);
  }
  return chosen;
}

class Planner {
 public:
  Planner(const TShortTestData& expectation, const PlanOptions& options)
      : expectation_(expectation), options_(options), random_(options.seed) {
    wiring::ChannelNets nets = wiring::NetsOf(expectation);
    nets_ = std::move(nets.nets);
    singles_ = std::move(nets.unconnected);
    singles_.insert(singles_.end(), nets.suspended.begin(), nets.suspended.end());
    std::sort(singles_.begin(), singles_.end());
    all_ = nets_;
    for (const Channel channel : singles_) all_.push_back({channel});
    std::sort(all_.begin(), all_.end());
  }

  FaultPlan Plan() {
    Contacts(FaultClass::Open, 0);
    Shorts(FaultClass::Short, ShortOhm);
    Shorts(FaultClass::ResistiveShort, ResistiveShortPart * UpperThreshold());
    Pairs(FaultClass::Swapped, ContactPairs());
    Pairs(FaultClass::Misplaced, UnusedPairs());
    Contacts(FaultClass::HighResistance, HighResistanceTimes * expectation_.Schwelle);
    Voltages();
    if (options_.testerFaults) Relays();
    return std::move(plan_);
  }

 private:
  /// The one that a check works with: it takes the lower one's place where that is greater.
  double UpperThreshold() const { return std::max(expectation_.Schwelle, expectation_.Schwelle2); }

  void Add(ProofFault fault) {
    ++plan_.totals[fault.kind];
    plan_.faults.push_back(std::move(fault));
  }

  void Contacts(FaultClass kind, double ohm) {
    for (const diagnosis::Net& net : nets_) {
      for (const Channel channel : net) {
        ProofFault fault;
        fault.kind = kind;
        fault.channels = {channel};
        fault.ohm = ohm;
        Add(std::move(fault));
      }
    }
  }

  void Shorts(FaultClass kind, double ohm) {
    for (std::size_t i = 0; i < all_.size(); ++i) {
      for (std::size_t j = i + 1; j < all_.size(); ++j) {
        ProofFault fault;
        fault.kind = kind;
        fault.channels = {all_[i].back(), all_[j].back()};
        fault.ohm = ohm;
        Add(std::move(fault));
      }
    }
  }

  std::vector<ChannelPair> ContactPairs() const {
    std::vector<ChannelPair> pairs;
    for (std::size_t i = 0; i < nets_.size(); ++i) {
      for (std::size_t j = i + 1; j < nets_.size(); ++j) {
        for (const Channel a : nets_[i]) {
          for (const Channel b : nets_[j]) pairs.emplace_back(a, b);
        }
      }
    }
    return pairs;
  }

  std::vector<ChannelPair> UnusedPairs() const {
    std::vector<ChannelPair> pairs;
    for (const diagnosis::Net& net : nets_) {
      for (const Channel contact : net) {
        for (const Channel unused : singles_) pairs.emplace_back(contact, unused);
      }
    }
    return pairs;
  }

  void Pairs(FaultClass kind, std::vector<ChannelPair> pairs) {
    plan_.totals[kind] = pairs.size();
    const std::vector<ChannelPair> chosen = Sample(std::move(pairs), options_.largestSample, random_);
    for (const auto& [a, b] : chosen) {
      ProofFault fault;
      fault.kind = kind;
      fault.channels = {a, b};
      plan_.faults.push_back(std::move(fault));
    }
  }

  void Voltages() {
    for (const diagnosis::Net& net : all_) {
      ProofFault fault;
      fault.kind = FaultClass::Voltage;
      fault.channels = {net.front()};
      for (const double volts : {SourceVolts, -SourceVolts}) {
        fault.volts = volts;
        Add(fault);
      }
      // Only with voltage control 2 a check waits at all.
      if (expectation_.U_Control != 2 || expectation_.Timeout < 1) continue;
      fault.volts = SourceVolts;
      const double wait_s = expectation_.Timeout / 1000.0;
      fault.tauSeconds = PartOfTheWait * wait_s / std::log(SourceVolts / HarmlessVolts);
      plan_.mustPass.push_back(fault);
    }
  }

  void Relays() {
    for (Channel channel = expectation_.von; channel <= expectation_.bis; ++channel) {
      for (const int line : {0, 1}) {
        for (const bool closed : {false, true}) {
          ProofFault fault;
          fault.kind = FaultClass::Tester;
          fault.channels = {channel};
          fault.line = line;
          fault.staysClosed = closed;
          Add(std::move(fault));
        }
      }
    }
  }

  const TShortTestData& expectation_;
  const PlanOptions& options_;
  std::mt19937_64 random_;
  diagnosis::Nets nets_;          // of two contacts and more
  std::vector<Channel> singles_;  // in no net
  diagnosis::Nets all_;
  FaultPlan plan_;
};

}  // namespace

FaultPlan PlanFaults(const TShortTestData& expectation, const PlanOptions& options) {
  return Planner(expectation, options).Plan();
}

}  // namespace kxbench::proof
