#include "bench/proof/SelfTestVoltages.h"

#include <cmath>
#include <set>

#include "plugin/hardware/Bus.h"
#include "plugin/hardware/Measurement.h"

namespace kxbench {

namespace {

/// What learning takes for a voltage.
constexpr double LiveVolts = 0.5;

class VoltageSearch {
 public:
  VoltageSearch(const std::vector<std::int32_t>& channels, const SelfTestProgress& progress)
      : channels_(channels), progress_(progress) {}

  std::map<std::int32_t, double> Find() {
    quiet_ = ReadVoltage();
    AgainstGround();
    // On either line, because a relay that never closes hides a channel from the other.
    AgainstLower(0, 1.0 / 3.0);
    AgainstLower(1, 2.0 / 3.0);
    return std::move(live_);
  }

 private:
  /// A relay that never opens may have put a live channel on a line already.
  double VoltsOnTop() const { return ReadVoltage() - quiet_; }

  static bool IsLive(double volts) { return std::fabs(volts) >= LiveVolts; }

  void Note(std::int32_t channel, double volts) {
    if (IsLive(volts)) live_.emplace(channel, volts);
  }

  void Step(std::size_t index, double start) const {
    progress_(start + static_cast<double>(index) / static_cast<double>(channels_.size()) / 3.0);
  }

  void AgainstGround() {
    for (std::size_t i = 0; i < channels_.size(); ++i) {
      Step(i, 0.0);
      for (const std::int32_t line : {0, 1}) {
        ConnectChannel(channels_[i], line);
        const double volts = VoltsOnTop();
        ReleaseChannel(channels_[i], line);
        Note(channels_[i], line == 0 ? volts : -volts);
      }
    }
  }

  /// Each channel on `line`, against the lower ones on the other. Live ones stay out: two of them on one line
  /// would be shorted.
  void AgainstLower(std::int32_t line, double start) {
    std::vector<std::int32_t> bundle;
    for (std::size_t i = 0; i < channels_.size(); ++i) {
      Step(i, start);
      const std::int32_t channel = channels_[i];
      if (live_.contains(channel)) continue;
      ConnectChannel(channel, line);
      const double volts = VoltsOnTop();
      if (IsLive(volts)) FindPartner(channel, line, bundle);
      ReleaseChannel(channel, line);
      if (live_.contains(channel)) continue;
      ConnectChannel(channel, 1 - line);
      bundle.push_back(channel);
    }
    for (const std::int32_t channel : bundle) ReleaseChannel(channel, 1 - line);
  }

  /// Of a source between two channels either pole is live. `channel` is closed on `line`, and so is `bundle`
  /// on the other, all of which but the partner are left closed.
  void FindPartner(std::int32_t channel, std::int32_t line, std::vector<std::int32_t>& bundle) {
    const double volts = VoltsOnTop();
    Note(channel, line == 0 ? volts : -volts);
    for (auto lower = bundle.begin(); lower != bundle.end(); ++lower) {
      ReleaseChannel(*lower, 1 - line);
      if (!IsLive(VoltsOnTop())) {
        Note(*lower, line == 0 ? -volts : volts);
        bundle.erase(lower);
        return;
      }
      ConnectChannel(*lower, 1 - line);
    }
  }

  const std::vector<std::int32_t>& channels_;
  const SelfTestProgress& progress_;
  double quiet_ = 0.0;
  std::map<std::int32_t, double> live_;
};

}  // namespace

std::map<std::int32_t, double> LiveChannels(const TestedCards& cards,
                                            const std::vector<std::int32_t>& channels,
                                            const SelfTestProgress& progress) {
  std::set<std::int32_t> used;
  for (const std::int32_t channel : channels) used.insert(CardOfChannel(channel));
  cards.ConnectOnly({used.begin(), used.end()});
  return VoltageSearch(channels, progress).Find();
}

}  // namespace kxbench
