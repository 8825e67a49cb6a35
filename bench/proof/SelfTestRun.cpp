#include "bench/proof/SelfTestRun.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "bench/proof/SelfTestDefects.h"
#include "bench/proof/SelfTestReadings.h"
#include "bench/proof/SelfTestRelays.h"
#include "bench/proof/SelfTestVoltages.h"
#include "plugin/hardware/Bus.h"

namespace kxbench {

namespace {

constexpr double VoltagesEnd = 0.5;

/// Thrown when the user stops the test.
struct SelfTestStopped {};

bool Contains(const std::vector<std::int32_t>& cards, std::int32_t card) {
  return std::find(cards.begin(), cards.end(), card) != cards.end();
}

bool Before(const TesterDefect& a, const TesterDefect& b) {
  return std::tie(a.card, a.channel, a.kind, a.line) < std::tie(b.card, b.channel, b.kind, b.line);
}

/// Progress within a part of the whole.
SelfTestProgress Part(const SelfTestRequest& request, double start, double end) {
  return [&request, start, end](double position) {
    if (request.progress && request.progress(start + (end - start) * position)) throw SelfTestStopped();
  };
}

/// The channels to be tested, on cards that answer; the others' cards are defects.
std::vector<std::int32_t> ChannelsToTest(const std::vector<std::int32_t>& answering,
                                         SelfTestSummary& summary) {
  std::vector<std::int32_t> channels;
  for (std::int32_t channel = summary.firstChannel; channel <= summary.lastChannel; ++channel) {
    const std::int32_t card = CardOfChannel(channel);
    if (Contains(answering, card)) channels.push_back(channel);
    std::vector<std::int32_t>& cards = summary.cards;
    if (Contains(answering, card) && !Contains(cards, card)) cards.push_back(card);
  }
  for (std::int32_t card = CardOfChannel(summary.firstChannel); card <= CardOfChannel(summary.lastChannel);
       ++card) {
    if (Contains(answering, card)) continue;
    summary.defects.push_back({TesterDefectKind::NoCard, card, std::nullopt, std::nullopt, true, 0.0});
  }
  return channels;
}

/// Voltages first: the instrument must not measure resistances on a live fixture.
std::vector<TesterDefect> DefectsOfChannels(const TestedCards& cards,
                                            const std::vector<std::int32_t>& channels,
                                            const SelfTestRequest& request) {
  std::vector<TesterDefect> defects;
  if (channels.empty()) return defects;
  for (const auto& [channel, volts] : LiveChannels(cards, channels, Part(request, 0.0, VoltagesEnd))) {
    defects.push_back(
        {TesterDefectKind::Voltage, CardOfChannel(channel), channel, std::nullopt, true, volts});
  }
  if (!defects.empty()) return defects;
  return DefectsOf(MeasureChannels(cards, channels, Part(request, VoltagesEnd, 1.0)));
}

}  // namespace

void TestTester(const SelfTestRequest& request, SelfTestSummary& summary) {
  const shorttest::TesterInUse inUse;
  const std::vector<std::int32_t> answering = AnsweringCards();
  summary.firstChannel = request.firstChannel.value_or(1);
  summary.lastChannel = request.lastChannel.value_or(answering.back() * SelfTestChannelsPerCard);
  const std::vector<std::int32_t> channels = ChannelsToTest(answering, summary);
  try {
    const TestedCards cards(answering);
    for (const TesterDefect& defect : DefectsOfChannels(cards, channels, request))
      summary.defects.push_back(defect);
  } catch (const SelfTestStopped&) {
    summary.end = SelfTestEnd::Cancelled;
    return;
  }
  std::sort(summary.defects.begin(), summary.defects.end(), Before);
  summary.end = SelfTestEnd::Tested;
}

}  // namespace kxbench
