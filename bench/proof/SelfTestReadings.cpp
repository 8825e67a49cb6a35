#include "bench/proof/SelfTestReadings.h"

#include <algorithm>

#include "bench/proof/SelfTestWays.h"
#include "plugin/hardware/Bus.h"
#include "plugin/hardware/Measurement.h"

namespace kxbench {

namespace {

/// A relay's contact and the way to it have less.
constexpr double ConnectedOhm = 10.0;

/// What is empty has more: the fixture's insulation and that of the cards.
constexpr double InsulatedOhm = 100'000.0;

bool Connected() { return MeasureResistance(ConnectedOhm) < ConnectedOhm; }
bool Reaches() { return LinesReachEachOther(); }

class Readings {
 public:
  Readings(const TestedCards& cards, const std::vector<std::int32_t>& channels,
           const SelfTestProgress& progress)
      : cards_(cards), progress_(progress) {
    for (const std::int32_t channel : channels) result_.channels.emplace_back().channel = channel;
  }

  TesterReadings Take() {
    MeasureOwnPaths();
    MeasureTogether();
    // With the lines connected across cards every relay may matter, and none can be told.
    if (!result_.shortedAcross) MeasureWays(cards_, progress_, result_);
    return std::move(result_);
  }

 private:
  static constexpr double OwnPathsEnd = 0.6;

  std::vector<std::int32_t> Cards() const {
    std::set<std::int32_t> cards;
    for (const ChannelReadings& of : result_.channels) cards.insert(CardOfChannel(of.channel));
    return {cards.begin(), cards.end()};
  }

  void Step(std::size_t index, double start, double end) const {
    progress_(start +
              (end - start) * static_cast<double>(index) / static_cast<double>(result_.channels.size()));
  }

  /// Each channel's two relays, with the other cards cut off, so that what is found is on this card.
  void MeasureOwnPaths() {
    std::int32_t card = 0;
    for (std::size_t i = 0; i < result_.channels.size(); ++i) {
      Step(i, 0.0, OwnPathsEnd);
      ChannelReadings& of = result_.channels[i];
      if (CardOfChannel(of.channel) != card) {
        card = CardOfChannel(of.channel);
        cards_.ConnectOnly({card});
        if (Reaches()) result_.shortedCards.insert(card);
      }
      if (!result_.shortedCards.contains(card)) MeasureOwnPath(of);
    }
  }

  static void MeasureOwnPath(ChannelReadings& of) {
    ConnectChannel(of.channel, 0);
    ConnectChannel(of.channel, 1);
    of.path = Connected();
    ReleaseChannel(of.channel, 1);
    of.from0 = Reaches();
    ConnectChannel(of.channel, 1);
    ReleaseChannel(of.channel, 0);
    of.from1 = Reaches();
    ReleaseChannel(of.channel, 1);
  }

  void MeasureTogether() {
    std::vector<std::int32_t> cards = Cards();
    std::erase_if(cards, [this](std::int32_t card) { return result_.shortedCards.contains(card); });
    if (cards.empty()) return;
    cards_.ConnectOnly(cards);
    result_.shortedAcross = Reaches();
    if (result_.shortedAcross) return;  // nothing else can be told apart any more
    MeasureAllOn(0, &ChannelReadings::from0Anywhere);
    MeasureAllOn(1, &ChannelReadings::from1Anywhere);
    MeasureBundle();
    MeasurePairs();
  }

  bool IsCutOff(const ChannelReadings& of) const {
    return result_.shortedCards.contains(CardOfChannel(of.channel));
  }

  std::vector<ChannelReadings*> ConnectedChannels() {
    std::vector<ChannelReadings*> all;
    for (ChannelReadings& of : result_.channels) {
      if (!IsCutOff(of)) all.push_back(&of);
    }
    return all;
  }

  /// Every channel on one line and none on the other; only when that reaches something, one by one.
  void MeasureAllOn(std::int32_t line, bool ChannelReadings::*anywhere) {
    const std::vector<ChannelReadings*> all = ConnectedChannels();
    for (const ChannelReadings* of : all) ConnectChannel(of->channel, line);
    const bool reaches = Reaches();
    for (const ChannelReadings* of : all) ReleaseChannel(of->channel, line);
    if (!reaches) return;
    for (ChannelReadings* of : all) {
      ConnectChannel(of->channel, line);
      of->*anywhere = Reaches();
      ReleaseChannel(of->channel, line);
    }
  }

  /// Each channel on line 0 against the others on line 1. Channels that reach something by themselves stay
  /// out: they would hide the rest.
  void MeasureBundle() {
    std::vector<ChannelReadings*> bundle = ConnectedChannels();
    std::erase_if(bundle, [](const ChannelReadings* of) { return of->from1Anywhere; });
    for (const ChannelReadings* of : bundle) ConnectChannel(of->channel, 1);
    for (std::size_t i = 0; i < bundle.size(); ++i) {
      progress_(OwnPathsEnd +
                (1.0 - OwnPathsEnd) * static_cast<double>(i) / static_cast<double>(bundle.size()));
      ChannelReadings& of = *bundle[i];
      if (of.from0Anywhere) continue;
      ReleaseChannel(of.channel, 1);
      ConnectChannel(of.channel, 0);
      of.toOthers = Reaches();
      ReleaseChannel(of.channel, 0);
      ConnectChannel(of.channel, 1);
    }
    for (const ChannelReadings* of : bundle) ReleaseChannel(of->channel, 1);
  }

  /// Which channels are reached from those that reach others. What two channels with a path of their own have
  /// with each other tells nothing new, so only pairs with a channel without one are measured.
  void MeasurePairs() {
    for (ChannelReadings& from : result_.channels) {
      if (!from.toOthers) continue;
      progress_(1.0);
      ConnectChannel(from.channel, 0);
      for (ChannelReadings* to : ConnectedChannels()) {
        const bool isOther = to != &from && !to->from1Anywhere && !to->from0Anywhere && !to->fromOthers;
        if (!isOther || (from.path && to->path)) continue;
        ConnectChannel(to->channel, 1);
        to->fromOthers = Reaches();
        ReleaseChannel(to->channel, 1);
      }
      ReleaseChannel(from.channel, 0);
    }
  }

  const TestedCards& cards_;
  const SelfTestProgress& progress_;
  TesterReadings result_;
};

}  // namespace

bool LinesReachEachOther() { return MeasureResistance(InsulatedOhm) < InsulatedOhm; }

TesterReadings MeasureChannels(const TestedCards& cards, const std::vector<std::int32_t>& channels,
                               const SelfTestProgress& progress) {
  return Readings(cards, channels, progress).Take();
}

}  // namespace kxbench
