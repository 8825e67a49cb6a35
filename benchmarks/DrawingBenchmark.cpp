// What drawing a harness costs, and how it grows with the channels: the column "x240" is the time relative to
// the same harness with 240 channels, measured in the same run.

#include <benchmark/benchmark.h>

#include <ctime>
#include <random>
#include <string>

#include "bench/drawing/Drawing.h"

namespace {

using kxbench::drawing::HarnessPicture;
using kxbench::drawing::HtmlOf;

constexpr std::int32_t LargestTester = 240;
constexpr std::int32_t PinsOfConnector = 24;

HarnessPicture Connectors(std::int32_t channels) {
  HarnessPicture picture;
  for (std::int32_t i = 0; i < channels; ++i) {
    picture.pins.push_back({i + 1, "X" + std::to_string(i / PinsOfConnector + 1),
                            std::to_string(i % PinsOfConnector + 1), "", false});
  }
  return picture;
}

HarnessPicture Straight(std::int32_t channels) {
  HarnessPicture picture = Connectors(channels);
  const auto half = static_cast<std::size_t>(channels / 2);
  for (std::size_t i = 0; i < half; ++i) picture.nets.push_back({"", {i, i + half}});
  return picture;
}

// Nets of two to four pins, drawn at random, as in the example of 240 channels: the worst for the order of
// lines.
HarnessPicture AtRandom(std::int32_t channels) {
  HarnessPicture picture = Connectors(channels);
  std::vector<std::size_t> pins(picture.pins.size());
  for (std::size_t i = 0; i < pins.size(); ++i) pins[i] = i;
  std::mt19937 random(1);
  for (std::size_t i = pins.size(); i > 1; --i) std::swap(pins[i - 1], pins[random() % i]);
  while (pins.size() > 4) {
    const auto size = static_cast<std::ptrdiff_t>(2 + random() % 3);
    picture.nets.push_back({"", {pins.end() - size, pins.end()}});
    pins.erase(pins.end() - size, pins.end());
  }
  return picture;
}

// One connector for each two channels, so that there are most places to try.
HarnessPicture ManyConnectors(std::int32_t channels) {
  HarnessPicture picture = AtRandom(channels);
  for (std::size_t i = 0; i < picture.pins.size(); ++i)
    picture.pins[i].connector = "X" + std::to_string(i / 2);
  return picture;
}

using Harness = HarnessPicture (*)(std::int32_t channels);

double SecondsFor(const HarnessPicture& picture) {
  const std::clock_t start = std::clock();
  benchmark::DoNotOptimize(HtmlOf(picture));
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

void Drawing(benchmark::State& state, Harness harness) {
  const HarnessPicture picture = harness(static_cast<std::int32_t>(state.range(0)));
  const HarnessPicture reference = harness(LargestTester);
  double seconds = 0;
  double referenceSeconds = 0;
  for (auto _ : state) {
    seconds += SecondsFor(picture);
    state.PauseTiming();
    referenceSeconds += SecondsFor(reference);
    state.ResumeTiming();
  }
  state.counters["x240"] = referenceSeconds > 0 ? seconds / referenceSeconds : 0;
}

BENCHMARK_CAPTURE(Drawing, straight, Straight)->Arg(48)->Arg(240)->Arg(960)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Drawing, at_random, AtRandom)
    ->Arg(48)
    ->Arg(240)
    ->Arg(960)
    ->Arg(3072)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Drawing, many_connectors, ManyConnectors)
    ->Arg(48)
    ->Arg(240)
    ->Arg(960)
    ->Unit(benchmark::kMillisecond);

}  // namespace
