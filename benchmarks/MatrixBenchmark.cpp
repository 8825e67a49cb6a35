// How the work on the connection matrix grows with the number of channels: the column "x48" is the time
// relative to the same device with 48 channels, measured in the same run.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <ctime>

#include "plugin/data/ShorttestData.h"

namespace {

constexpr std::int32_t OneCard = 48;

using Device = void (*)(TShortTestData& data, std::int32_t channels);

void Connect(TShortTestData& data, std::int32_t first, std::int32_t last) {
  for (std::int32_t i = first; i < last; ++i) data.Put(i, i + 1, CellState::Connected, 0.1);
}

// Every pair that the findings so far leave open is entered as measured open, as learning does.
void EnterOpenPairs(TShortTestData& data, std::int32_t channels) {
  for (std::int32_t i = 0; i < channels; ++i) {
    for (std::int32_t j = i + 1; j < channels; ++j) {
      if (data.Get(i, j) == CellState::Unknown) data.Put(i, j, CellState::NotConnected, 1e6);
    }
  }
}

// A cable: each channel of one half is wired to one of the other.
void Cable(TShortTestData& data, std::int32_t channels) {
  for (std::int32_t i = 0; i < channels / 2; ++i) data.Put(i, i + channels / 2, CellState::Connected, 0.1);
  EnterOpenPairs(data, channels);
}

void NothingConnected(TShortTestData& data, std::int32_t channels) { EnterOpenPairs(data, channels); }

void OneNet(TShortTestData& data, std::int32_t channels) { Connect(data, 0, channels - 1); }

// The worst: every pair between the two follows from the one that is found, each from the one before.
void TwoNetsThatTurnOutShorted(TShortTestData& data, std::int32_t channels) {
  Connect(data, 0, channels / 2 - 1);
  Connect(data, channels / 2, channels - 1);
  data.Put(0, channels / 2, CellState::Connected, 0.1);
}

// Time of the processor, so that other programs on the machine do not count.
double SecondsFor(Device device, std::int32_t channels) {
  TShortTestData data(1, channels);
  const std::clock_t start = std::clock();
  device(data, channels);
  const std::clock_t end = std::clock();
  benchmark::DoNotOptimize(data.Get(channels - 1, 0));
  return static_cast<double>(end - start) / CLOCKS_PER_SEC;
}

double MeanSecondsForOneCard(Device device) {
  constexpr int Times = 500;
  double total = 0.0;
  for (int n = 0; n < Times; ++n) total += SecondsFor(device, OneCard);
  return total / Times;
}

void Matrix(benchmark::State& state, Device device) {
  double total = 0.0;
  for ([[maybe_unused]] auto _ : state) {
    const double seconds = SecondsFor(device, static_cast<std::int32_t>(state.range(0)));
    state.SetIterationTime(seconds);
    total += seconds;
  }
  state.counters["x48"] = total / static_cast<double>(state.iterations()) / MeanSecondsForOneCard(device);
}

void FromOneCardToTwenty(benchmark::internal::Benchmark* benchmark) {
  for (const int channels : {48, 96, 240, 480, 960}) benchmark->Arg(channels);
  benchmark->UseManualTime()->Unit(benchmark::kMillisecond)->ArgName("channels");
}

}  // namespace

BENCHMARK_CAPTURE(Matrix, Cable, Cable)->Apply(FromOneCardToTwenty);
BENCHMARK_CAPTURE(Matrix, NothingConnected, NothingConnected)->Apply(FromOneCardToTwenty);
BENCHMARK_CAPTURE(Matrix, OneNet, OneNet)->Apply(FromOneCardToTwenty);
BENCHMARK_CAPTURE(Matrix, TwoNetsThatTurnOutShorted, TwoNetsThatTurnOutShorted)->Apply(FromOneCardToTwenty);
