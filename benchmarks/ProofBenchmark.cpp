// How long `kxbench prove` takes for one fault: the plug-in's check on a simulated device, in held time. The
// column "floor_s" is what the waits of such a check take on a real tester, "faults" how many single faults
// the harness has.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>

#include "bench/proof/CheckStand.h"
#include "bench/proof/FaultPlan.h"
#include "benchmarks/Devices.h"

namespace {

using kxbench::proof::CheckOutcome;
using kxbench::proof::CheckStand;
using kxbench::proof::DeviceModel;
using kxbench::proof::FaultPlan;

/// Faults of a class are alike: every so many-th stands for the others.
constexpr std::size_t FaultsOfARun = 40;

void Prove(benchmark::State& state, const devices::Nets& nets) {
  const TShortTestData expectation = devices::Expectation(nets);
  const DeviceModel good = kxbench::proof::IdealDevice(expectation);
  const FaultPlan plan = kxbench::proof::PlanFaults(expectation, {});
  CheckStand stand;
  double floor_s = 0;
  std::size_t checks = 0;
  for (auto _ : state) {
    for (std::size_t i = 0; i < FaultsOfARun; ++i) {
      const auto& fault = plan.faults[i * plan.faults.size() / FaultsOfARun];
      const CheckOutcome outcome = stand.Check(expectation, WithFault(good, fault));
      floor_s += outcome.seconds;
      ++checks;
    }
  }
  state.counters["msAFault"] = benchmark::Counter(static_cast<double>(checks) / 1000.0,
                                                  benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
  state.counters["floor_s"] = floor_s / static_cast<double>(checks);
  state.counters["faults"] = static_cast<double>(plan.faults.size());
}

void Cable(benchmark::State& state) {
  Prove(state, devices::Cable(static_cast<std::int32_t>(state.range(0))));
}

BENCHMARK(Cable)
    ->Name("Prove/Cable")
    ->ArgName("channels")
    ->Arg(48)
    ->Arg(96)
    ->Arg(240)
    ->Arg(480)
    ->Unit(benchmark::kMillisecond);

}  // namespace
