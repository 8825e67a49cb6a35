// What naming the faults of a device costs beside measuring it, and how it grows with the channels: the
// column "x240" is the time relative to the same device with 240 channels, measured in the same run.

#include <benchmark/benchmark.h>

#include <ctime>
#include <string>

#include "bench/diagnosis/Diagnosis.h"

namespace {

using kxbench::diagnosis::Channel;
using kxbench::diagnosis::Diagnose;
using kxbench::diagnosis::Nets;
using kxbench::diagnosis::Observation;

constexpr Channel LargestTester = 240;

// Wires from the first half of the channels to the second, in plugs of 24 contacts.
Observation Cable(Channel channels) {
  constexpr Channel pins = 24;
  Observation observation;
  for (Channel i = 1; i <= channels / 2; ++i) observation.expected.push_back({i, i + channels / 2});
  for (Channel i = 0; i < channels; ++i) {
    const Channel pin = i % pins + 1;
    observation.contacts[i + 1] = {"X" + std::to_string(i / pins), std::to_string(pin), pin};
  }
  observation.measured = observation.expected;
  return observation;
}

using Device = Observation (*)(Channel channels);

Observation SwappedPair(Channel channels) {
  Observation observation = Cable(channels);
  std::swap(observation.measured[0][1], observation.measured[1][1]);
  return observation;
}

// The worst for two faults in one place: a net of half the channels, and another, with a swap and a break.
Observation TwoFaultsInLargeNets(Channel channels) {
  Observation observation = Cable(channels);
  observation.expected = Nets(2);
  for (Channel i = 1; i <= channels; ++i) observation.expected[i <= channels / 2 ? 0 : 1].push_back(i);
  observation.measured = observation.expected;
  std::swap(observation.measured[0][0], observation.measured[1][0]);
  observation.measured[0].pop_back();
  observation.measured.push_back({channels / 2});
  return observation;
}

// Every net is open everywhere and shorted to all others.
Observation Ruined(Channel channels) {
  constexpr Channel rows = 12;
  Observation observation = Cable(channels);
  observation.expected = Nets(rows);
  observation.measured = Nets(static_cast<std::size_t>(channels / rows));
  for (Channel i = 0; i < channels; ++i) {
    observation.expected[static_cast<std::size_t>(i % rows)].push_back(i + 1);
    observation.measured[static_cast<std::size_t>(i / rows)].push_back(i + 1);
  }
  return observation;
}

double SecondsFor(const Observation& observation) {
  const std::clock_t start = std::clock();
  benchmark::DoNotOptimize(Diagnose(observation));
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

void Diagnosing(benchmark::State& state, Device device) {
  const Observation observation = device(static_cast<Channel>(state.range(0)));
  const Observation reference = device(LargestTester);
  double seconds = 0;
  double referenceSeconds = 0;
  for (auto _ : state) {
    seconds += SecondsFor(observation);
    state.PauseTiming();
    referenceSeconds += SecondsFor(reference);
    state.ResumeTiming();
  }
  state.counters["x240"] = referenceSeconds > 0 ? seconds / referenceSeconds : 0;
}

BENCHMARK_CAPTURE(Diagnosing, swapped_pair, SwappedPair)->Arg(48)->Arg(240)->Arg(480)->Arg(960);
BENCHMARK_CAPTURE(Diagnosing, two_faults, TwoFaultsInLargeNets)->Arg(48)->Arg(240)->Arg(480)->Arg(960);
BENCHMARK_CAPTURE(Diagnosing, ruined, Ruined)->Arg(48)->Arg(240)->Arg(480)->Arg(960);

}  // namespace
