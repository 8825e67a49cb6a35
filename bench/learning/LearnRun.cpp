#include "bench/learning/LearnRun.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "bench/learning/DriverUse.h"
#include "bench/learning/LearnProgress.h"
#include "plugin/hardware/Bus.h"
#include "plugin/hardware/Timing.h"
#include "plugin/learn/ShorttestLearn.h"

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

/// The net of channel index `start`, ascending channel numbers; marks its members in `seen`.
std::vector<std::int32_t> NetOf(const TShortTestData& data, std::int32_t start, std::vector<bool>& seen) {
  std::vector<std::int32_t> reached = {start};
  seen[static_cast<std::size_t>(start)] = true;
  for (std::size_t next = 0; next < reached.size(); ++next) {
    for (std::int32_t j = 0; j <= data.Highconnections(); ++j) {
      if (seen[static_cast<std::size_t>(j)] || data.Get(reached[next], j) != CellState::Connected) continue;
      seen[static_cast<std::size_t>(j)] = true;
      reached.push_back(j);
    }
  }
  std::sort(reached.begin(), reached.end());
  for (std::int32_t& channel : reached) channel += data.von;
  return reached;
}

/// Learns behind a progress dialog. A cancel that comes after the last measurement counts, too: what the user
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

}  // namespace

TShortTestData PrepareData(const LearnRequest& request) {
  const bool ranged = request.firstChannel && request.lastChannel;
  const std::filesystem::path file(std::u8string(request.file.begin(), request.file.end()));
  const bool exists = std::filesystem::exists(file);
  if (!exists && !ranged) {
    throw std::invalid_argument("the file does not exist; a new one needs --channels FIRST-LAST");
  }

  TShortTestData data =
      exists ? TShortTestData(request.file) : TShortTestData(*request.firstChannel, *request.lastChannel);
  if (exists && ranged) data.SetVonBis(*request.firstChannel, *request.lastChannel);
  if (request.thresholdOhm) {
    data.Schwelle = *request.thresholdOhm;
    if (!exists) data.Schwelle2 = *request.thresholdOhm;
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
  data.SaveExpectationFile(request.file);

  DescribeLearned(data, summary);
  const DriverUse after = DriverUseSoFar();
  summary.readings = after.readings - before.readings;
  summary.relayOperations = after.relayOperations - before.relayOperations;
  summary.seconds = SecondsSince(start);
  summary.end = LearnEnd::Learned;
}

void DescribeLearned(const TShortTestData& data, LearnSummary& summary) {
  summary.firstChannel = data.von;
  summary.lastChannel = data.bis;
  std::vector<bool> seen(static_cast<std::size_t>(data.Highconnections()) + 1, false);
  for (std::int32_t i = 0; i <= data.Highconnections(); ++i) {
    if (!IsInUse(data, i)) {
      summary.suspended.push_back({data.von + i, data.GetVoltage(i)});
    } else if (!seen[static_cast<std::size_t>(i)]) {
      const std::vector<std::int32_t> net = NetOf(data, i, seen);
      if (net.size() > 1) {
        summary.nets.push_back(net);
      } else {
        summary.unconnected.push_back(net.front());
      }
    }
  }
}

}  // namespace kxbench
