#include "bench/proof/SelfTestWays.h"

#include <algorithm>
#include <iterator>

#include "plugin/hardware/Bus.h"

namespace kxbench {

namespace {

using ChannelList = std::vector<const ChannelReadings*>;

/// The channels of a card that are tried, and the line on which they are.
struct WayEnd {
  std::int32_t card = 0;
  std::int32_t line = 0;
  ChannelList channels;
};

bool HasDefect(const ChannelReadings& of) { return !of.path || of.from0 || of.from1; }

bool ReachesOthers(const ChannelReadings& of) {
  return of.from0Anywhere || of.from1Anywhere || of.toOthers || of.fromOthers;
}

/// Between two cards of which one piece each is connected: line 0's of one and line 1's of the other. Line 0
/// then reaches line 1 through the fixture alone.
class WayReadings {
 public:
  WayReadings(const TestedCards& cards, const SelfTestProgress& progress, TesterReadings& readings)
      : cards_(cards), progress_(progress), readings_(readings) {}

  void Take() {
    std::set<std::int32_t> tested;
    for (const ChannelReadings& of : readings_.channels) tested.insert(CardOfChannel(of.channel));
    for (auto one = tested.begin(); one != tested.end(); ++one) {
      for (auto other = std::next(one); other != tested.end(); ++other) {
        // The shorted one first.
        if (IsShorted(*other)) {
          Between(*other, *one);
        } else {
          Between(*one, *other);
        }
      }
    }
  }

 private:
  bool IsShorted(std::int32_t card) const { return readings_.shortedCards.contains(card); }

  void Between(std::int32_t from, std::int32_t to) {
    for (const std::int32_t fromLine : {0, 1}) {
      for (const std::int32_t toLine : {1 - fromLine, fromLine}) {
        const bool all = IsShorted(from);
        MeasureBetween({from, fromLine, ChannelsOf(from, all)}, {to, toLine, ChannelsOf(to, all)});
      }
    }
  }

  ChannelList ChannelsOf(std::int32_t card, bool all) const {
    ChannelList channels;
    for (const ChannelReadings& of : readings_.channels) {
      if (CardOfChannel(of.channel) == card && (all || HasDefect(of))) channels.push_back(&of);
    }
    return channels;
  }

  void MeasureBetween(const WayEnd& from, const WayEnd& to) {
    if (from.channels.empty() || to.channels.empty() || !ConnectPieces(from, to)) return;
    if (!Reaches(from, from.channels, to, to.channels)) return;
    const bool always = Reaches(from, {}, to, {});
    for (const ChannelReadings* end : to.channels) {
      progress_(1.0);
      if (!Reaches(from, from.channels, to, {end})) continue;
      const bool alone = Reaches(from, {}, to, {end});
      if (alone && IsShorted(from.card) && (NeverOpens(*end, to.line) || !always)) {
        readings_.wiredToShorted.push_back({from.card, end->channel});
      }
      for (const ChannelReadings* start : from.channels) {
        if (!Reaches(from, {start}, to, {end})) continue;
        const bool startStuck = NeverOpens(*start, from.line);
        const bool endStuck = NeverOpens(*end, to.line);
        if (!startStuck && alone) continue;
        if (!endStuck && Reaches(from, {start}, to, {})) continue;
        readings_.ways.push_back({start->channel, from.line, startStuck, end->channel, to.line, endStuck});
      }
    }
  }

  /// What a relay alone reaches ends at the other line's, which never opened.
  static bool NeverOpens(const ChannelReadings& of, std::int32_t line) {
    return line == 0 ? of.from1 : of.from0;
  }

  /// Both channels on the same line: the piece of one card is reached by way of its other piece.
  bool ConnectPieces(const WayEnd& from, const WayEnd& to) {
    if (from.line != to.line) {
      cards_.ConnectPieces({{from.card, from.line}, {to.card, to.line}});
      return true;
    }
    const std::int32_t other = 1 - from.line;
    if (const auto join = JoinOf(from.card)) {
      cards_.ConnectPieces({{from.card, other}, {to.card, to.line}});
      CloseBoth(*join);
      return true;
    }
    if (const auto join = JoinOf(to.card)) {
      cards_.ConnectPieces({{from.card, from.line}, {to.card, other}});
      CloseBoth(*join);
      return true;
    }
    return false;
  }

  /// A channel that joins the two pieces of a card; 0 where they are joined anyhow, none where nothing does.
  std::optional<std::int32_t> JoinOf(std::int32_t card) const {
    if (IsShorted(card)) return 0;
    for (const ChannelReadings& of : readings_.channels) {
      if (CardOfChannel(of.channel) == card && !HasDefect(of) && !ReachesOthers(of)) return of.channel;
    }
    return std::nullopt;
  }

  static void CloseBoth(std::int32_t channel) {
    if (channel == 0) return;
    ConnectChannel(channel, 0);
    ConnectChannel(channel, 1);
  }

  static bool Reaches(const WayEnd& from, const ChannelList& starts, const WayEnd& to,
                      const ChannelList& ends) {
    for (const ChannelReadings* of : starts) ConnectChannel(of->channel, from.line);
    for (const ChannelReadings* of : ends) ConnectChannel(of->channel, to.line);
    const bool reaches = LinesReachEachOther();
    for (const ChannelReadings* of : starts) ReleaseChannel(of->channel, from.line);
    for (const ChannelReadings* of : ends) ReleaseChannel(of->channel, to.line);
    return reaches;
  }

  const TestedCards& cards_;
  const SelfTestProgress& progress_;
  TesterReadings& readings_;
};

}  // namespace

void MeasureWays(const TestedCards& cards, const SelfTestProgress& progress, TesterReadings& readings) {
  WayReadings(cards, progress, readings).Take();
}

}  // namespace kxbench
