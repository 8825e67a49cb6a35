#include "plugin/learn/ShorttestLearn.h"

#include <cmath>
#include <optional>
#include <string>

#include "contracts/UserInterface.h"
#include "plugin/hardware/Bus.h"
#include "plugin/hardware/LastCleanUp.h"
#include "text/NumberText.h"

using shorttest::LearnOutcome;

namespace {

constexpr double VoltageLimit = 0.5;  // V
constexpr int NearThresholdHelp = 140;

constexpr double VoltagePassStart = 0.0;
constexpr double IsolationPassStart = 0.25;
constexpr double PairPassStart = 0.5;

// Position of step `index` of a pass with `steps` steps; the pass's start when it has none to divide by.
double Position(std::int32_t index, double steps, double passStart) {
  return steps > 0.0 ? static_cast<double>(index) / steps + passStart : passStart;
}

bool IsSuspended(const TShortTestData& data, std::int32_t index) {
  return data.Get(index, index) == CellState::Suspended;
}

// True when the user cancelled instead of keeping a reading close to the threshold.
bool CancelledNearThreshold(std::int32_t channelOnLine0, std::int32_t channelOnLine1, double ohm) {
  MessageBoxRequest request;
  request.text = "Der zwischen den Kanälen " + std::to_string(channelOnLine0) + " und " +
                 std::to_string(channelOnLine1) + " gemessene Widerstand von " +
                 shorttest::FloatToFixedText(ohm, 2) + " Ohm liegt im Bereich von +- 10 % vom Schwellwert.";
  request.buttons = {mrCancel, mrIgnore};
  request.helpContext = NearThresholdHelp;
  return Application().ShowMessage(request) == mrCancel;
}

bool IsNearThreshold(double ohm, double threshold) { return ohm > 0.9 * threshold && 1.1 * threshold > ohm; }

// Measures a pair whose channels are on the lines and enters the finding; false when the user cancelled.
bool LearnPair(TShortTestData& data, std::int32_t onLine0, std::int32_t onLine1) {
  const double ohm = MeasureResistance(data.Schwelle);
  if (IsNearThreshold(ohm, data.Schwelle) &&
      CancelledNearThreshold(data.von + onLine0, data.von + onLine1, ohm)) {
    return false;
  }
  data.Put(onLine0, onLine1, data.Schwelle > ohm ? CellState::Connected : CellState::NotConnected, ohm);
  return true;
}

// `cardPastRange` has the one relay that ReleaseAllLines does not reach.
void OpenRelays(const TShortTestData& data, std::optional<std::int32_t> cardPastRange) noexcept {
  ReleaseAllLines(data);
  if (cardPastRange) shorttest::ReleaseLine(*cardPastRange, 1);
  shorttest::SwitchTerminationOff(data);
}

// Runs on every way out of LearnConnections.
void CleanUp(const TShortTestData& data, std::optional<std::int32_t> cardPastRange,
             const shorttest::ProgressFunction& progress) noexcept {
  OpenRelays(data, cardPastRange);
  try {
    progress(1.0);
  } catch (...) {
    // The relays are open; a failing display must not hide how the measurement ended.
  }
}

}  // namespace

bool shorttest::HasChannelsFor(const TShortTestData& data) {
  return data.von >= 1 && data.von <= data.bis && data.bis <= HWChannelCount;
}

void ResetLearnedCells(TShortTestData& data) {
  for (std::int32_t i = 0; i <= data.Highconnections(); ++i) {
    for (std::int32_t j = 0; j <= data.Highconnections(); ++j) {
      if (data.Get(i, j) <= CellState::Connected) data.SetC(i, j, CellState::Unknown, NoResistance);
    }
  }
}

void LearnVoltagePass(TShortTestData& data, const shorttest::ProgressFunction& progress) {
  PrepareCards(data, true);
  const std::int32_t high = data.Highconnections();
  const double steps = 4.0 * high;

  // With every channel suspended this is the channel after `bis`. It is switched all the same: the
  // sequence of the relays is fixed.
  std::int32_t first = 0;
  while (first <= high && IsSuspended(data, first)) ++first;
  ConnectChannel(data.von + first, 1);

  for (std::int32_t i = first + 1; i <= high; ++i) {
    if (progress(Position(i, steps, VoltagePassStart))) return;
    if (IsSuspended(data, i)) continue;
    ConnectChannel(data.von + i, 0);
    const double volts = WaitForDischarge(data, VoltageLimit, Position(i, steps, VoltagePassStart),
                                          Position(i + 1, steps, VoltagePassStart), progress);
    // Strict, while the wait ends at the limit itself: exactly 0.5 V suspends the channel.
    if (std::fabs(volts) < VoltageLimit) {
      ConnectChannel(data.von + i, 1);
    } else {
      // At the first comparison the voltage may sit on the reference channel as well. Its relay on line 1
      // stays closed until the pair pass resets the lines.
      if (i == 1) data.SuspendChannel(0, volts);
      data.SuspendChannel(i, volts);
    }
    ReleaseChannel(data.von + i, 0);
  }
}

TConnFound LearnIsolationPass(TShortTestData& data, const shorttest::ProgressFunction& progress) {
  PrepareCards(data, false);  // keeps the bundle on line 1
  const std::int32_t high = data.Highconnections();
  const double steps = 4.0 * high;

  TConnFound candidates;
  for (std::int32_t i = 0; i <= high; ++i) {
    if (progress(Position(i, steps, IsolationPassStart))) return candidates;
    if (IsSuspended(data, i)) continue;
    ReleaseChannel(data.von + i, 1);
    ConnectChannel(data.von + i, 0);
    const double ohm = MeasureResistance(data.Schwelle);
    if (data.Schwelle > ohm) {
      candidates.push_back({i, ohm});
    } else {
      for (std::int32_t j = 0; j <= high; ++j) data.Put(i, j, CellState::NotConnected, ohm);
    }
    ReleaseChannel(data.von + i, 0);
    ConnectChannel(data.von + i, 1);
  }
  return candidates;
}

LearnOutcome LearnPairPass(TShortTestData& data, const TConnFound& candidates,
                           const shorttest::ProgressFunction& progress) {
  PrepareCards(data, true);
  const std::int32_t last = static_cast<std::int32_t>(candidates.size()) - 1;
  const auto index = [&candidates](std::int32_t c) { return candidates[static_cast<std::size_t>(c)].x; };

  for (std::int32_t a = 0; a <= last; ++a) {
    if (progress(Position(a, 2.0 * last, PairPassStart))) return LearnOutcome::Stopped;
    ConnectChannel(data.von + index(a), 1);
    for (std::int32_t b = a + 1; b <= last; ++b) {
      if (data.Get(index(b), index(a)) != CellState::Unknown) continue;
      ConnectChannel(data.von + index(b), 0);
      // The caller's clean-up opens the relays.
      if (!LearnPair(data, index(b), index(a))) return LearnOutcome::Stopped;
      ReleaseChannel(data.von + index(b), 0);
    }
    ReleaseChannel(data.von + index(a), 1);
  }
  return LearnOutcome::Learned;
}

LearnOutcome LearnConnections(TShortTestData& data, const shorttest::ProgressFunction& progress) {
  const shorttest::TesterInUse use;
  struct Guard {
    const TShortTestData& data;
    std::optional<std::int32_t> cardPastRange;
    const shorttest::ProgressFunction& progress;
    ~Guard() { CleanUp(data, cardPastRange, progress); }
  } const guard{data, shorttest::CardPastRange(data), progress};
  const shorttest::LastCleanUp lastCleanUp([&guard] { OpenRelays(guard.data, guard.cardPastRange); });

  bool stopped = false;
  const shorttest::ProgressFunction watched = [&progress, &stopped](double position) {
    const bool stop = progress(position);
    stopped = stopped || stop;
    return stop;
  };

  ResetLearnedCells(data);
  shorttest::SwitchTerminationOn(data);
  if (watched(0.01)) return LearnOutcome::Stopped;
  // A stop is not handed from pass to pass: each stops at its own first progress call.
  LearnVoltagePass(data, watched);
  const TConnFound candidates = LearnIsolationPass(data, watched);
  const LearnOutcome outcome = LearnPairPass(data, candidates, watched);
  return stopped ? LearnOutcome::Stopped : outcome;
}
