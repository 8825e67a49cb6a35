#include "bench/learning/MeasureRun.h"

#include <stdexcept>
#include <string>
#include <utility>

#include "bench/learning/LearnProgress.h"
#include "bench/wiring/ChannelNets.h"
#include "plugin/hardware/Bus.h"
#include "plugin/learn/ShorttestLearn.h"

namespace kxbench {

namespace {

bool SaysWhetherConnected(CellState expected) {
  return expected == CellState::Connected || expected == CellState::NotConnected;
}

/// What was measured without the pairs of which the expectation does not say whether they are connected: a
/// check finds nothing wrong with those either.
TShortTestData WithoutUnsaid(const TShortTestData& expected, TShortTestData measured) {
  for (std::int32_t i = 1; i <= measured.Highconnections(); ++i) {
    for (std::int32_t j = 0; j < i; ++j) {
      const bool unsaid = !SaysWhetherConnected(expected.Get(i, j));
      if (unsaid && measured.Get(i, j) == CellState::Connected) {
        measured.SetC(i, j, CellState::NotConnected, NoResistance);
      }
    }
  }
  return measured;
}

std::vector<MeasuredResistance> ResistancesOf(const TShortTestData& expected,
                                              const TShortTestData& measured) {
  std::vector<MeasuredResistance> resistances;
  for (std::int32_t i = 0; i <= measured.Highconnections(); ++i) {
    for (std::int32_t j = i + 1; j <= measured.Highconnections(); ++j) {
      const bool wanted = expected.Get(i, j) == CellState::Connected;
      const double ohm = measured.GetR(i, j);
      if (ohm == NoResistance || (!wanted && measured.Get(i, j) != CellState::Connected)) continue;
      resistances.push_back({measured.von + i, measured.von + j, ohm});
    }
  }
  return resistances;
}

}  // namespace

void MeasureDevice(const std::string& file, MeasureSummary& summary) {
  const TShortTestData expected(file);
  if (!InitHardware()) throw std::runtime_error("Konnte Anzahl Kanäle nicht ermitteln.");
  if (!shorttest::HasChannelsFor(expected)) {
    throw std::runtime_error("the channels " + std::to_string(expected.von) + " to " +
                             std::to_string(expected.bis) + " are not among the tester's channels 1 to " +
                             std::to_string(HWChannelCount));
  }
  TShortTestData measured = expected;
  {
    LearnProgress progress("Measuring");
    const auto outcome =
        LearnConnections(measured, [&progress](double position) { return progress.Report(position); });
    if (outcome == shorttest::LearnOutcome::Stopped || progress.Cancelled()) {
      summary.end = MeasureEnd::Cancelled;
      return;
    }
  }
  DescribeMeasured(expected, measured, summary);
}

void DescribeMeasured(const TShortTestData& expected, const TShortTestData& measured,
                      MeasureSummary& summary) {
  for (std::int32_t i = 0; i <= measured.Highconnections(); ++i) {
    const bool suspendedNow = measured.Get(i, i) == CellState::Suspended;
    if (!suspendedNow || expected.Get(i, i) == CellState::Suspended) continue;
    summary.charged.push_back({measured.von + i, measured.GetVoltage(i)});
  }
  if (!summary.charged.empty()) {
    summary.end = MeasureEnd::Charged;
    return;
  }
  wiring::ChannelNets nets = wiring::NetsOf(WithoutUnsaid(expected, measured));
  summary.nets = std::move(nets.nets);
  summary.unconnected = std::move(nets.unconnected);
  summary.resistances = ResistancesOf(expected, measured);
  summary.end = MeasureEnd::Measured;
}

}  // namespace kxbench
