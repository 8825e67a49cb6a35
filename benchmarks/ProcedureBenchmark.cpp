// Checking and learning with a driver that answers at once, against the waits that the procedures must keep
// after every relay they open: the column "xFloor" is the time taken relative to the sum of those waits.

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>

#include "benchmarks/Devices.h"
#include "benchmarks/InstantDriver.h"
#include "benchmarks/QuietHost.h"
#include "plugin/check/ShorttestCheck.h"
#include "plugin/learn/ShorttestLearn.h"

namespace {

using MakeNets = devices::Nets (*)(std::int32_t channels);

constexpr double WaitSeconds = 0.001;  // after each relay that is opened

// Runs `procedure` with the device connected, and puts the figures into `state`.
template <typename Procedure>
void Measure(benchmark::State& state, const devices::Nets& nets, Procedure procedure) {
  double total = 0.0;
  double floor = 0.0;
  for ([[maybe_unused]] auto _ : state) {
    instant::Connect(nets);
    const auto start = std::chrono::steady_clock::now();
    procedure();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    state.SetIterationTime(taken.count());
    total += taken.count();
    floor += WaitSeconds * static_cast<double>(instant::Releases());
    if (!instant::AllOpen()) state.SkipWithError("a relay stayed closed");
  }
  state.counters["floor_s"] = floor / static_cast<double>(state.iterations());
  state.counters["xFloor"] = total / floor;
}

void Learn(benchmark::State& state, MakeNets makeNets) {
  const devices::Nets nets = makeNets(static_cast<std::int32_t>(state.range(0)));
  Measure(state, nets, [&] {
    TShortTestData data(1, static_cast<std::int32_t>(nets.size()));
    LearnConnections(data, [](double /*position*/) { return false; });
    if (data.Get(1, 0) == CellState::Unknown) state.SkipWithError("nothing was learned");
  });
}

void Check(benchmark::State& state, MakeNets expected, MakeNets connected) {
  const auto channels = static_cast<std::int32_t>(state.range(0));
  const TShortTestData data = devices::Expectation(expected(channels));
  const QuietHost host;
  Measure(state, connected(channels), [&] { RunShortTest(data); });
  if (host.Records() == 0) state.SkipWithError("the check sent no records");
}

void OneTwoAndFiveCards(benchmark::internal::Benchmark* benchmark) {
  for (const int channels : {48, 96, 240}) benchmark->Arg(channels);
  benchmark->UseManualTime()->Unit(benchmark::kMillisecond)->ArgName("channels")->Iterations(1);
}

}  // namespace

// The typical harness, then the worst nets: the more channels a net has, the more of the matrix follows from
// one measurement; two large nets that turn out shorted are the most.
BENCHMARK_CAPTURE(Check, Cable, devices::Cable, devices::Cable)->Apply(OneTwoAndFiveCards);
BENCHMARK_CAPTURE(Check, OneNet, devices::OneNet, devices::OneNet)->Apply(OneTwoAndFiveCards);
BENCHMARK_CAPTURE(Check, TwoNetsShorted, devices::TwoNets, devices::OneNet)->Apply(OneTwoAndFiveCards);
BENCHMARK_CAPTURE(Learn, Cable, devices::Cable)->Apply(OneTwoAndFiveCards);
BENCHMARK_CAPTURE(Learn, OneNet, devices::OneNet)->Apply(OneTwoAndFiveCards);
BENCHMARK_CAPTURE(Learn, TwoNets, devices::TwoNets)->Apply(OneTwoAndFiveCards);
