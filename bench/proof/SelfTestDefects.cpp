#include "bench/proof/SelfTestDefects.h"

#include <algorithm>

namespace kxbench {

namespace {

class Conclusion {
 public:
  explicit Conclusion(const TesterReadings& readings) : readings_(readings) {}

  std::vector<TesterDefect> Draw() {
    for (const std::int32_t card : readings_.shortedCards) {
      for (const std::int32_t line : {0, 1}) {
        defects_.push_back({TesterDefectKind::NeverOpens, card, std::nullopt, line, true, 0.0});
      }
    }
    for (const ChannelReadings& of : readings_.channels) {
      if (readings_.shortedCards.contains(CardOfChannel(of.channel))) continue;
      JudgeRelays(of);
      if (of.toOthers || of.fromOthers) NotEmpty(of.channel, true);
    }
    JudgeWaysBetweenCards();
    return std::move(defects_);
  }

 private:
  void Relay(TesterDefectKind kind, std::int32_t channel, std::int32_t line, bool certain = true) {
    defects_.push_back({kind, CardOfChannel(channel), channel, line, certain, 0.0});
  }

  void NotEmpty(std::int32_t channel, bool certain) {
    const TesterDefect defect{
        TesterDefectKind::NotEmpty, CardOfChannel(channel), channel, std::nullopt, certain, 0.0};
    if (std::find(defects_.begin(), defects_.end(), defect) == defects_.end()) defects_.push_back(defect);
  }

  void JudgeRelays(const ChannelReadings& of) {
    // What one relay alone reaches on its own card ends at the other line by a relay that never opened.
    if (of.from0) Relay(TesterDefectKind::NeverOpens, of.channel, 1);
    if (of.from1) Relay(TesterDefectKind::NeverOpens, of.channel, 0);
    if (of.path || of.from0 || of.from1) return;
    const bool closes0 = of.toOthers || of.from0Anywhere;
    const bool closes1 = of.fromOthers || of.from1Anywhere;
    const bool certain = closes0 || closes1;
    if (!closes0) Relay(TesterDefectKind::NeverCloses, of.channel, 0, certain);
    if (!closes1) Relay(TesterDefectKind::NeverCloses, of.channel, 1, certain);
  }

  /// A channel that reaches the other line with all cards connected, and not with its own alone, is connected
  /// to a channel of another card with a relay that never opens.
  void JudgeWaysBetweenCards() {
    for (const ChannelReadings& of : readings_.channels) {
      if (of.from0Anywhere && !of.from0) JudgeWay(of, &ChannelReadings::from0);
      if (of.from1Anywhere && !of.from1) JudgeWay(of, &ChannelReadings::from1);
      if (readings_.shortedAcross && of.from0) JudgeWay(of, &ChannelReadings::from1);
    }
  }

  void JudgeWay(const ChannelReadings& of, bool ChannelReadings::*stuck) {
    std::vector<std::int32_t> ends;
    for (const ChannelReadings& other : readings_.channels) {
      if (other.*stuck && CardOfChannel(other.channel) != CardOfChannel(of.channel))
        ends.push_back(other.channel);
    }
    if (ends.empty()) return;
    NotEmpty(of.channel, true);
    for (const std::int32_t end : ends) NotEmpty(end, ends.size() == 1);
  }

  const TesterReadings& readings_;
  std::vector<TesterDefect> defects_;
};

}  // namespace

std::vector<TesterDefect> DefectsOf(const TesterReadings& readings) { return Conclusion(readings).Draw(); }

}  // namespace kxbench
