// What reading a harness's documents costs, and how it grows: the column "x1000" is the time relative to a
// document of 1,000 wires, measured in the same run. "import" goes on to the expectation file.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <set>
#include <string>

#include "bench/documents/ChannelMap.h"
#include "bench/documents/WiringListReader.h"
#include "bench/wiring/ExpectationWriter.h"

namespace {

using namespace kxbench::documents;

constexpr int Reference = 1000;

// Wires from connectors of 48 pins to splices, five on each: 5,000 wires are within what an expectation can
// have, 2,400 channels.
std::string WireList(int wires) {
  const int pins = std::min(wires, 2400);
  std::string text = "wire;from connector;from pin;to connector;to pin;colour\n";
  for (int wire = 0; wire < wires; ++wire) {
    const int pin = wire % pins;
    text += "W" + std::to_string(wire) + ";X" + std::to_string(pin / 48 + 1) + ";" +
            std::to_string(pin % 48 + 1) + ";S" + std::to_string(pin / 5 + 1) + ";;red\n";
  }
  return text;
}

std::set<std::string> SplicesOf(const WiringDocument& document) {
  std::set<std::string> splices;
  for (const PlacedPin& pin : document.pins) {
    if (pin.pin.connector.starts_with('S')) splices.insert(pin.pin.connector);
  }
  return splices;
}

void Read(const std::string& text) { benchmark::DoNotOptimize(ReadWiringList("list.csv", text)); }

void Import(const std::string& text) {
  const WiringDocument list = ReadWiringList("list.csv", text);
  const WiringDocument document = WithSplices(list, SplicesOf(list));
  const Wiring wiring = WiringOf(document, AssignChannels(document, 1));
  const std::string file = (std::filesystem::temp_directory_path() / "kxbench-benchmark.dat").string();
  kxbench::wiring::WriteExpectation(file, {1, wiring.pins.rbegin()->first, wiring.nets},
                                    kxbench::wiring::OptionsFrom::Defaults);
  std::filesystem::remove(file);
}

double SecondsFor(void (*step)(const std::string& text), const std::string& text) {
  const std::clock_t start = std::clock();
  step(text);
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

void WiringLists(benchmark::State& state, void (*step)(const std::string& text)) {
  const std::string text = WireList(static_cast<int>(state.range(0)));
  const std::string reference = WireList(Reference);
  double seconds = 0;
  double referenceSeconds = 0;
  for (auto _ : state) {
    seconds += SecondsFor(step, text);
    state.PauseTiming();
    referenceSeconds += SecondsFor(step, reference);
    state.ResumeTiming();
  }
  state.counters["x1000"] = referenceSeconds > 0 ? seconds / referenceSeconds : 0;
}

BENCHMARK_CAPTURE(WiringLists, read, Read)->Arg(1000)->Arg(5000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WiringLists, import, Import)
    ->Arg(1000)
    ->Arg(2400)
    ->Arg(5000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
