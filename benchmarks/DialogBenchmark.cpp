// Learning in the editor dialog with a driver that answers at once: the column "xNoWindow" is the time taken
// relative to the same learning without a window, measured in the same run. Needs a screen:
// tests/support/xvfb build/linux-release/bin/dialog_benchmark

#include <benchmark/benchmark.h>
#include <wx/notebook.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <functional>

#include "benchmarks/Devices.h"
#include "benchmarks/InstantDriver.h"
#include "contracts/UserInterfaceModule.h"
#include "framework/Kxcommandinterfaces.h"
#include "plugin/editor/EditorDialog.h"
#include "plugin/editor/GUI_ShortTest.h"
#include "plugin/learn/ShorttestLearn.h"
#include "tests/support/WidgetTest.h"

namespace {

enum Page { TextPage, GridPage };

using MakeNets = devices::Nets (*)(std::int32_t channels);

double SecondsOf(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double SecondsWithoutAWindow(const devices::Nets& nets) {
  instant::Connect(nets);
  TShortTestData data(1, static_cast<std::int32_t>(nets.size()));
  return SecondsOf([&] { LearnConnections(data, [](double /*position*/) { return false; }); });
}

double SecondsInTheDialog(benchmark::State& state, const devices::Nets& nets, Page page) {
  double seconds = 0.0;
  TShortTestForm form(nullptr);
  widget_test::OnceModal([&] {
    widget_test::WaitFor([&form] { return form.Window()->IsActive(); });
    form.UpDownMax->SetPosition(static_cast<std::int32_t>(nets.size()));
    form.PageControl1->SetSelection(static_cast<std::size_t>(page));
    widget_test::Settle();
    instant::Connect(nets);
    seconds = SecondsOf([&form] { form.BT_LearnClick(); });
    if (form.Data()->Get(1, 0) == CellState::Unknown) state.SkipWithError("nothing was learned");
    form.Window()->Close();
  });
  form.ShowModal();
  return seconds;
}

void LearnInDialog(benchmark::State& state, MakeNets makeNets, Page page) {
  const devices::Nets nets = makeNets(static_cast<std::int32_t>(state.range(0)));
  double total = 0.0;
  double without = 0.0;
  for ([[maybe_unused]] auto _ : state) {
    without += SecondsWithoutAWindow(nets);
    const double seconds = SecondsInTheDialog(state, nets, page);
    state.SetIterationTime(seconds);
    total += seconds;
  }
  state.counters["xNoWindow"] = total / without;
}

void OneCardAndFive(benchmark::internal::Benchmark* benchmark) {
  benchmark->UseManualTime()->Unit(benchmark::kMillisecond)->ArgName("channels");
  for (const int channels : {48, 240}) benchmark->Arg(channels)->Iterations(1);
}

}  // namespace

// The cable is measured pair by pair and takes long; of one net most of the matrix follows from few readings,
// and each report has more to show.
BENCHMARK_CAPTURE(LearnInDialog, CableOnText, devices::Cable, TextPage)->Apply(OneCardAndFive);
BENCHMARK_CAPTURE(LearnInDialog, CableOnGrid, devices::Cable, GridPage)->Apply(OneCardAndFive);
BENCHMARK_CAPTURE(LearnInDialog, OneNetOnText, devices::OneNet, TextPage)->Apply(OneCardAndFive);
BENCHMARK_CAPTURE(LearnInDialog, OneNetOnGrid, devices::OneNet, GridPage)->Apply(OneCardAndFive);

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  UserInterface* const windows = kxCreateUserInterface();
  if (windows == nullptr) {
    std::fputs("no display can be reached\n", stderr);
    return 2;
  }
  SetApplication(windows);
  widget_test::SetWindows(windows);
  benchmark::RunSpecifiedBenchmarks();
  SetApplication(nullptr);
  kxDestroyUserInterface(windows);
  return 0;
}
