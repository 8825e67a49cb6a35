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
    for (const WayBetweenCards& way : readings_.ways) {
      NotEmpty(way.from, !way.fromStuck || IsOnlyStart(way));
      NotEmpty(way.to, !way.toStuck || IsOnlyEnd(way));
    }
    for (const WayToShorted& way : readings_.wiredToShorted) {
      NotEmpty(way.channel, true);
      AddOnce({TesterDefectKind::NotEmpty, way.card, std::nullopt, std::nullopt, true, 0.0});
    }
    return std::move(defects_);
  }

 private:
  void Relay(TesterDefectKind kind, std::int32_t channel, std::int32_t line, bool certain = true) {
    AddOnce({kind, CardOfChannel(channel), channel, line, certain, 0.0});
  }

  void NotEmpty(std::int32_t channel, bool certain) {
    for (TesterDefect& defect : defects_) {
      if (defect.kind != TesterDefectKind::NotEmpty || defect.channel != channel) continue;
      defect.certain = defect.certain || certain;
      return;
    }
    defects_.push_back(
        {TesterDefectKind::NotEmpty, CardOfChannel(channel), channel, std::nullopt, certain, 0.0});
  }

  void AddOnce(const TesterDefect& defect) {
    if (std::find(defects_.begin(), defects_.end(), defect) == defects_.end()) defects_.push_back(defect);
  }

  void JudgeRelays(const ChannelReadings& of) {
    // What one relay alone reaches on its own card ends at the other line by a relay that never opened.
    if (of.from0) Relay(TesterDefectKind::NeverOpens, of.channel, 1);
    if (of.from1) Relay(TesterDefectKind::NeverOpens, of.channel, 0);
    if (of.path || of.from0 || of.from1) return;
    const bool closes0 = of.toOthers || of.from0Anywhere || IsOnWay(of.channel, 0);
    const bool closes1 = of.fromOthers || of.from1Anywhere || IsOnWay(of.channel, 1);
    const bool certain = closes0 || closes1;
    if (!closes0) Relay(TesterDefectKind::NeverCloses, of.channel, 0, certain);
    if (!closes1) Relay(TesterDefectKind::NeverCloses, of.channel, 1, certain);
  }

  /// A channel that reaches the other line with all cards connected, and not with its own alone, is connected
  /// to a channel of another card with a relay that never opens.
  void JudgeWaysBetweenCards() {
    for (const ChannelReadings& of : readings_.channels) {
      if (of.from0Anywhere && !of.from0) JudgeWay(of, &ChannelReadings::from0, 1);
      if (of.from1Anywhere && !of.from1) JudgeWay(of, &ChannelReadings::from1, 0);
      if (readings_.shortedAcross && of.from0) JudgeWay(of, &ChannelReadings::from1, 0);
    }
  }

  /// A way from channel `of` to `line`: it ends at a channel of another card that showed its relay by
  /// `stuck`.
  void JudgeWay(const ChannelReadings& of, bool ChannelReadings::*stuck, std::int32_t line) {
    NotEmpty(of.channel, true);
    const std::vector<std::int32_t> ends = OnOtherCards(of, stuck, true);
    for (const std::int32_t end : ends) NotEmpty(end, ends.size() == 1);
    if (!ends.empty()) return;
    // Or at one that did not, because its other relay never closes.
    const std::vector<std::int32_t> hidden = OnOtherCards(of, &ChannelReadings::path, false);
    if (hidden.size() != 1) return;
    NotEmpty(hidden.front(), true);
    std::erase_if(defects_, [&hidden](const TesterDefect& defect) {
      return defect.channel == hidden.front() && defect.kind == TesterDefectKind::NeverCloses;
    });
    Relay(TesterDefectKind::NeverCloses, hidden.front(), 1 - line);
    Relay(TesterDefectKind::NeverOpens, hidden.front(), line);
  }

  bool IsOnWay(std::int32_t channel, std::int32_t line) const {
    return std::any_of(readings_.ways.begin(), readings_.ways.end(), [&](const WayBetweenCards& way) {
      return (way.from == channel && way.fromLine == line) || (way.to == channel && way.toLine == line);
    });
  }

  /// Of several relays of one line of a card that never open, each has the ways of all.
  bool IsOnlyStart(const WayBetweenCards& way) const {
    return std::none_of(readings_.ways.begin(), readings_.ways.end(), [&](const WayBetweenCards& other) {
      return other.from != way.from && CardOfChannel(other.from) == CardOfChannel(way.from) &&
             other.fromLine == way.fromLine && other.to == way.to && other.toLine == way.toLine;
    });
  }
  bool IsOnlyEnd(const WayBetweenCards& way) const {
    return std::none_of(readings_.ways.begin(), readings_.ways.end(), [&](const WayBetweenCards& other) {
      return other.to != way.to && CardOfChannel(other.to) == CardOfChannel(way.to) &&
             other.toLine == way.toLine && other.from == way.from && other.fromLine == way.fromLine;
    });
  }

  std::vector<std::int32_t> OnOtherCards(const ChannelReadings& of, bool ChannelReadings::*reading,
                                         bool value) const {
    std::vector<std::int32_t> channels;
    for (const ChannelReadings& other : readings_.channels) {
      const bool tested = !readings_.shortedCards.contains(CardOfChannel(other.channel));
      const bool elsewhere = CardOfChannel(other.channel) != CardOfChannel(of.channel);
      if (tested && elsewhere && other.*reading == value) channels.push_back(other.channel);
    }
    return channels;
  }

  const TesterReadings& readings_;
  std::vector<TesterDefect> defects_;
};

}  // namespace

std::vector<TesterDefect> DefectsOf(const TesterReadings& readings) { return Conclusion(readings).Draw(); }

}  // namespace kxbench
