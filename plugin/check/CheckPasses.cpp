#include "plugin/check/CheckPasses.h"

#include "plugin/check/CheckForm.h"
#include "plugin/hardware/Bus.h"
#include "plugin/hardware/Measurement.h"

namespace {

constexpr double VoltagePassStart = 0.25;
constexpr double IsolationPassStart = 0.5;
constexpr double PairPassStart = 0.75;

// Step `index` of `steps` within one of the four passes, each of which covers a quarter of the whole check.
double Position(std::int32_t index, std::int32_t steps, double passStart) {
  return static_cast<double>(index) / (4.0 * steps) + passStart;
}

bool IsSuspended(const TShortTestData& data, std::int32_t index) {
  return data.Get(index, index) == CellState::Suspended;
}

// Calls `action` for channel index i and every channel known to be connected to it, ascending.
template <typename Action>
void ForNetOf(const TShortTestData& work, std::int32_t i, std::int32_t high, Action action) {
  for (std::int32_t k = 0; k <= high; ++k) {
    if (k == i || work.Get(k, i) == CellState::Connected) action(k);
  }
}

// A result of a pass at which the driver of the check skips the passes that follow, whatever was found
// before.
std::int32_t ErrorsThatEndTheCheck(const TShortTestData& data) { return data.MaxError; }

// Enters the measured state of a pair and returns it.
CellState PutMeasured(TShortTestData& work, std::int32_t i, std::int32_t j, double threshold, double ohm) {
  const CellState measured = threshold > ohm ? CellState::Connected : CellState::NotConnected;
  work.Put(i, j, measured, ohm);
  return measured;
}

// True when the net of i, taken out of the bundle on line 1 and measured against it, is not isolated.
bool NetIsConnected(const TShortTestData& data, TShortTestData& work, std::int32_t i, double& ohm) {
  const std::int32_t high = data.Highconnections();
  ForNetOf(work, i, high, [&](std::int32_t k) { ReleaseChannel(data.von + k, 1); });
  ConnectChannel(data.von + i, 0);
  ohm = MeasureResistance(work.Schwelle2);
  const bool connected = work.Schwelle2 > ohm;
  if (!connected) {
    for (std::int32_t k = 0; k <= high; ++k) work.Put(k, i, CellState::NotConnected, ohm);
  }
  ReleaseChannel(data.von + i, 0);
  ForNetOf(work, i, high, [&](std::int32_t k) { ConnectChannel(data.von + k, 1); });
  return connected;
}

// Measures one candidate against all candidates while it is on line 1. False when the error limit is reached.
bool CheckCandidate(const TShortTestData& data, TShortTestData& work, const TConnFound& candidates,
                    std::int32_t q, std::int32_t& errors) {
  for (const TConnFoundItem& candidate : candidates) {
    const std::int32_t p = candidate.x;
    if (work.Get(p, q) != CellState::Unknown || data.Get(p, q) == CellState::ExcludedPair) continue;
    ConnectChannel(data.von + p, 0);
    const double ohm = MeasureResistance(work.Schwelle2);
    if (PutMeasured(work, p, q, work.Schwelle2, ohm) != data.Get(p, q)) ++errors;
    // Tested after every measurement, whether or not it counted.
    if (errors >= data.MaxError) return false;
    ReleaseChannel(data.von + p, 0);
  }
  return true;
}

}  // namespace

std::int32_t CheckConnectionPass(const TShortTestData& data, TShortTestData& work) {
  const std::int32_t high = data.Highconnections();
  std::int32_t errors = 0;
  if (UpdateProgress(0.0)) return 0;
  PrepareCards(data, true);
  for (std::int32_t i = 0; i < high; ++i) {
    if (UpdateProgress(Position(i + 1, high + 2, 0.0))) return errors;
    for (std::int32_t j = i + 1; j <= high; ++j) {
      if (data.Get(i, j) != CellState::Connected || work.Get(i, j) != CellState::Unknown) continue;
      ConnectChannel(data.von + i, 0);
      ConnectChannel(data.von + j, 1);
      const double ohm = MeasureResistance(work.Schwelle);
      if (PutMeasured(work, i, j, work.Schwelle, ohm) == CellState::NotConnected) {
        ++errors;
        // Both channels stay switched on: the driver of the check opens everything.
        if (errors >= data.MaxError) return errors;
      }
      ReleaseChannel(data.von + i, 0);
      ReleaseChannel(data.von + j, 1);
    }
  }
  return errors;
}

std::int32_t CheckVoltagePass(const TShortTestData& data, TShortTestData& work) {
  const std::int32_t high = data.Highconnections();
  if (UpdateProgress(VoltagePassStart)) return 0;

  // With every channel suspended this is the channel after `bis`. It is switched all the same: the traces of
  // existing testers have it.
  std::int32_t k = 0;
  while (k <= high && IsSuspended(data, k)) ++k;
  ConnectChannel(data.von + k, 1);

  while (k < high) {
    ++k;
    if (UpdateProgress(Position(k, high + 1, VoltagePassStart))) return 0;
    if (IsSuspended(data, k)) continue;
    ConnectChannel(data.von + k, 0);
    const double volts = WaitForDischarge(data, VoltageLimit, Position(k, high + 1, VoltagePassStart),
                                          Position(k + 1, high + 1, VoltagePassStart), UpdateProgress);
    // The signed value is compared, as results have always been judged: a reading below -0.7 V passes.
    if (!(volts < VoltageLimit)) {
      // The first pair cannot tell which of its two channels is live; the first one is named.
      work.SuspendChannel(k == 1 ? 0 : k, volts);
      return ErrorsThatEndTheCheck(data);
    }
    ConnectChannel(data.von + k, 1);
    ReleaseChannel(data.von + k, 0);
  }
  return 0;
}

TConnFound CheckIsolationPass(const TShortTestData& data, TShortTestData& work) {
  const std::int32_t high = data.Highconnections();
  TConnFound candidates;
  if (UpdateProgress(IsolationPassStart)) return {};
  PrepareCards(data, false);  // keeps the bundle on line 1
  for (std::int32_t i = 0; i <= high; ++i) {
    if (UpdateProgress(Position(i + 1, high + 2, IsolationPassStart))) return {};
    if (IsSuspended(data, i)) continue;
    double ohm = 0.0;
    if (NetIsConnected(data, work, i, ohm)) candidates.push_back({i, ohm});
  }
  return candidates;
}

std::int32_t CheckPairPass(const TShortTestData& data, TShortTestData& work, const TConnFound& candidates) {
  std::int32_t errors = 0;
  if (candidates.empty()) return 0;
  if (UpdateProgress(PairPassStart)) return 0;
  PrepareCards(data, true);
  const auto count = static_cast<std::int32_t>(candidates.size());
  for (std::int32_t a = 0; a < count; ++a) {
    if (UpdateProgress(Position(a + 1, count + 1, PairPassStart))) return errors;
    const std::int32_t q = candidates[static_cast<std::size_t>(a)].x;
    ConnectChannel(data.von + q, 1);
    if (!CheckCandidate(data, work, candidates, q, errors)) return errors;
    ReleaseChannel(data.von + q, 1);
  }
  return errors;
}
