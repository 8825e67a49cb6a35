// What the program takes besides the waits: `kxbench check` of a cable of 48 channels from start to exit, and
// the memory of a check of 240 channels.

#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "benchmarks/Devices.h"
#include "benchmarks/InstantDriver.h"
#include "benchmarks/QuietHost.h"
#include "plugin/check/ShorttestCheck.h"

namespace {

namespace fs = std::filesystem;

constexpr double WaitSeconds = 0.001;  // after each relay that is opened

// A line of the kernel's account of this process, in KiB.
long StatusKiB(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    long value = 0;
    if (word == name + ":" && status >> value) return value;
  }
  return 0;
}

// Lets the peak of the resident memory start anew from where it is.
void ForgetPeak() { std::ofstream("/proc/self/clear_refs") << "5"; }

fs::path ProgramFolder() { return fs::read_symlink("/proc/self/exe").parent_path(); }

// Runs kxbench with the instant driver; its exit status.
int RunKxbench(const fs::path& expectation) {
  const std::string program = ProgramFolder() / "kxbench";
  const std::string file = expectation;
  std::string words[] = {program, "--progress", "none", "--format", "records", "check", file};
  char* arguments[std::size(words) + 1] = {};
  for (std::size_t i = 0; i < std::size(words); ++i) arguments[i] = words[i].data();
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", 1, 0);
  pid_t child = 0;
  const int error = posix_spawn(&child, program.c_str(), &actions, nullptr, arguments, environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = -1;
  if (error == 0) waitpid(child, &status, 0);
  return error == 0 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// The driver's releases in a check of this process stand for those in the other: they are the same calls.
double FloorSeconds(const TShortTestData& data, const devices::Nets& nets) {
  const QuietHost host;
  instant::Connect(nets);
  RunShortTest(data);
  return WaitSeconds * static_cast<double>(instant::Releases());
}

void StartToExit(benchmark::State& state) {
  const devices::Nets nets = devices::Cable(48);
  TShortTestData data = devices::Expectation(nets);
  const fs::path file = fs::temp_directory_path() / ("start-to-exit-" + std::to_string(getpid()) + ".dat");
  data.SaveExpectationFile(file);
  const double floor = FloorSeconds(data, nets);
  setenv("LD_LIBRARY_PATH", (ProgramFolder() / "instant").c_str(), 1);
  RunKxbench(file);  // the first start reads the libraries from the disk
  double worst = 0.0;
  for ([[maybe_unused]] auto _ : state) {
    const auto start = std::chrono::steady_clock::now();
    if (RunKxbench(file) != 0) {
      state.SkipWithError("kxbench found something or failed");
      break;
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    state.SetIterationTime(taken.count());
    worst = std::max(worst, taken.count() - floor);
  }
  unsetenv("LD_LIBRARY_PATH");
  fs::remove(file);
  state.counters["floor_s"] = floor;
  state.counters["msAboveFloor"] = 1000.0 * worst;
}

// Two nets that turn out shorted nest the matrix's work deepest.
void MemoryOfACheck(benchmark::State& state) {
  const TShortTestData data = devices::Expectation(devices::TwoNets(240));
  const QuietHost host;
  instant::Connect(devices::OneNet(240));
  double mebibytes = 0.0;
  for ([[maybe_unused]] auto _ : state) {
    ForgetPeak();
    const long before = StatusKiB("VmRSS");
    RunShortTest(data);
    mebibytes = static_cast<double>(StatusKiB("VmHWM") - before) / 1024.0;
  }
  state.counters["MiBAboveStart"] = mebibytes;
}

}  // namespace

BENCHMARK(MemoryOfACheck)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(StartToExit)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);
