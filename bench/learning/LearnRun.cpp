#include "bench/learning/LearnRun.h"

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include "bench/learning/DriverUse.h"
#include "bench/learning/LearnDifference.h"
#include "bench/learning/LearnProgress.h"
#include "bench/learning/NearMisses.h"
#include "bench/wiring/ChannelNets.h"
#include "bench/wiring/ExpectationFacts.h"
#include "plugin/data/ExpectationText.h"
#include "plugin/hardware/Bus.h"
#include "plugin/hardware/Timing.h"
#include "plugin/learn/ShorttestLearn.h"
#include "text/FileAccess.h"
#include "text/Paths.h"

namespace kxbench {

namespace {

/// Refuses a range that the hardware does not have, before one of its channels is switched.
void RequireChannels(const TShortTestData& data) {
  if (shorttest::HasChannelsFor(data)) return;
  throw std::runtime_error("the channels " + std::to_string(data.von) + " to " + std::to_string(data.bis) +
                           " are not among the tester's channels 1 to " + std::to_string(HWChannelCount));
}

bool IsInUse(const TShortTestData& data, std::int32_t index) {
  return data.Get(index, index) != CellState::Suspended;
}

/// Pairs of channels in use of which nothing is known. A finished procedure leaves none.
std::int64_t UndecidedPairs(const TShortTestData& data) {
  std::int64_t undecided = 0;
  for (std::int32_t i = 1; i <= data.Highconnections(); ++i) {
    for (std::int32_t j = 0; j < i; ++j) {
      const bool open = data.Get(i, j) == CellState::Unknown;
      undecided += open && IsInUse(data, i) && IsInUse(data, j) ? 1 : 0;
    }
  }
  return undecided;
}

/// Learns under a progress dialog. A cancel that comes after the last measurement counts, too: what the user
/// has cancelled is not saved.
shorttest::LearnOutcome LearnInto(TShortTestData& data) {
  LearnProgress progress;
  const auto outcome =
      LearnConnections(data, [&progress](double position) { return progress.Report(position); });
  return progress.Cancelled() ? shorttest::LearnOutcome::Stopped : outcome;
}

double SecondsSince(std::int64_t start) {
  const auto counts = static_cast<double>(PerfCounterNow() - start);
  return counts / static_cast<double>(shorttest::ActiveClock().Frequency());
}

bool Exists(const LearnRequest& request) {
  return std::filesystem::exists(shorttest::PathFromUtf8(request.file));
}

/// The old expectation; none where nothing of it is kept.
std::optional<TShortTestData> OldData(const LearnRequest& request) {
  if (request.makeNew || !Exists(request)) return std::nullopt;
  const std::string damage = wiring::FactsOf(request.file).damage;
  if (!damage.empty()) throw DamagedExpectation(damage);
  return TShortTestData(request.file);
}

/// Nothing of the file that is not whole may stay: whatever stood in it could be read as the expectation.
void SaveAnew(const TShortTestData& data, const std::string& file) {
  shorttest::ReplaceWholeFile(shorttest::AbsolutePath(file), shorttest::WriteExpectationText(data, ""));
}

}  // namespace

TShortTestData PrepareData(const LearnRequest& request) {
  const bool ranged = request.firstChannel && request.lastChannel;
  const std::optional<TShortTestData> old = OldData(request);
  if (!old && !ranged) {
    throw std::invalid_argument("the file does not exist; a new one needs --channels FIRST-LAST");
  }

  TShortTestData data = old ? *old : TShortTestData(*request.firstChannel, *request.lastChannel);
  if (old && ranged) data.SetVonBis(*request.firstChannel, *request.lastChannel);
  if (request.thresholdOhm) {
    data.Schwelle = *request.thresholdOhm;
    if (!old) data.Schwelle2 = *request.thresholdOhm;
  }
  if (request.voltageControl) data.U_Control = *request.voltageControl;
  return data;
}

void LearnFile(const LearnRequest& request, LearnSummary& summary) {
  const std::int64_t start = PerfCounterNow();
  const DriverUse before = DriverUseSoFar();
  TShortTestData data = PrepareData(request);
  if (!InitHardware()) throw std::runtime_error("Konnte Anzahl Kanäle nicht ermitteln.");
  RequireChannels(data);
  if (LearnInto(data) == shorttest::LearnOutcome::Stopped) {
    summary.end = LearnEnd::Cancelled;
    return;
  }
  const std::int64_t undecided = UndecidedPairs(data);
  if (undecided > 0)
    throw std::runtime_error(std::to_string(undecided) + " pairs of channels stayed undecided");
  if (request.makeNew) {
    SaveAnew(data, request.file);
  } else {
    if (request.beforeReplacing && Exists(request)) {
      request.beforeReplacing(DifferenceOf(TShortTestData(request.file), data));
    }
    data.SaveExpectationFile(request.file);
  }

  DescribeLearned(data, summary);
  const DriverUse after = DriverUseSoFar();
  summary.readings = after.readings - before.readings;
  summary.relayOperations = after.relayOperations - before.relayOperations;
  summary.seconds = SecondsSince(start);
  summary.end = LearnEnd::Learned;
}

void DescribeLearned(const TShortTestData& data, LearnSummary& summary) {
  wiring::ChannelNets learned = wiring::NetsOf(data);
  summary.firstChannel = data.von;
  summary.lastChannel = data.bis;
  for (const std::int32_t channel : learned.suspended) {
    summary.suspended.push_back({channel, data.GetVoltage(channel - data.von)});
  }
  summary.nearMisses = NearMissesOf(data, learned.unconnected);
  summary.nets = std::move(learned.nets);
  summary.unconnected = std::move(learned.unconnected);
}

}  // namespace kxbench
