#include <csignal>
#include <cstdlib>
#include <random>
#include <string>

#include "tests/bench/program/WitnessFixture.h"

/// However the program ends, the driver's own log shows every relay open. KXBENCH_MOMENTS and KXBENCH_SEED
/// choose other moments than the usual ones, and more of them.

namespace {

using testing::EndsWith;
using testing::HasSubstr;

#ifdef _WIN32
constexpr unsigned UsualMoments = 2;  // starting a program takes long there
#else
constexpr unsigned UsualMoments = 6;
#endif

unsigned Number(const char* variable, unsigned usual) {
  const char* value = std::getenv(variable);
  return value == nullptr ? usual : static_cast<unsigned>(std::stoul(value));
}

struct Way {
  const char* name;
  const char* words;  ///< for WITNESS_END, with % for the call
  bool survived;      ///< the program can finish, or end by itself
};

struct Job {
  const char* name;
  std::vector<std::string> arguments;
};

class EveryEnd : public WitnessBench, public testing::WithParamInterface<std::tuple<Job, Way>> {
 protected:
  static const Job& TheJob() { return std::get<0>(GetParam()); }
  static const Way& TheWay() { return std::get<1>(GetParam()); }

  /// Calls of an undisturbed run, which is the test of the log too.
  long Calls() {
    environment_.erase("WITNESS_END");
    EXPECT_EQ(Kxbench(TheJob().arguments).Run().status, 0);
    const WitnessLog log = Log();
    EXPECT_TRUE(log.closed.empty());
    EXPECT_GT(log.mostClosed, 8U);
    EXPECT_TRUE(log.terminated);
    EXPECT_EQ(log.loaded, 1) << "nothing had to be opened";
    ForgetLog();
    return log.calls;
  }

  void EndAt(long call) {
    std::string words = TheWay().words;
    words.replace(words.find('%'), 1, std::to_string(call));
    environment_["WITNESS_END"] = words;
    SCOPED_TRACE(words);
    const ProcessResult result = Kxbench(TheJob().arguments).Run();
    const WitnessLog log = Log();
    EXPECT_TRUE(log.closed.empty()) << log.closed.size() << " relays closed";
    if (!TheWay().survived) {
      EXPECT_EQ(result.status, 2);
      EXPECT_EQ(log.loaded, 2) << "the guard had to open the relays";
      EXPECT_THAT(result.errors, EndsWith(": every relay was opened\n"));
    }
    ForgetLog();
  }
};

TEST_P(EveryEnd, LeavesNoRelayClosed) {
  const long calls = Calls();
  std::mt19937 random(Number("KXBENCH_SEED", 1));
  const unsigned moments = Number("KXBENCH_MOMENTS", UsualMoments);
  for (unsigned i = 0; i < moments; ++i) {
    EndAt(std::uniform_int_distribution<long>(1, calls)(random));
    if (HasFailure()) return;
  }
}

const std::vector<Way> Ways = {
    {"Exit", "exit %", false},
    {"QuickExit", "quick-exit %", false},
    {"Kill", "kill %", false},
    {"Abort", "abort %", false},
    {"Terminate", "terminate %", false},
    {"Throw", "throw %", true},  // caught but in a clean-up
#ifndef _WIN32
    {"SegmentationFault", "signal % 11", false},
    {"Quit", "signal % 3", false},
    {"BusError", "signal % 7", false},
    {"UserSignal", "signal % 10", false},
    {"Terminated", "signal % 15", true},
    {"Interrupted", "signal % 2", true},
    {"HungUp", "signal % 1", true},
    {"GuardKilled", "signal-guard % 9", true},
    {"GuardAborted", "signal-guard % 6", true},
    {"GuardTerminated", "signal-guard % 15", true},
    {"GuardHungUp", "signal-guard % 1", true},
    {"GuardQuit", "signal-guard % 3", true},  // handed on, but the last calls may come first
#endif
};

INSTANTIATE_TEST_SUITE_P(
    Jobs, EveryEnd,
    testing::Combine(testing::Values(Job{"Check", {"check", "a.dat"}}, Job{"Learn", {"learn", "a.dat"}}),
                     testing::ValuesIn(Ways)),
    [](const auto& row) { return std::string(std::get<0>(row.param).name) + std::get<1>(row.param).name; });

class SelfTestEnds : public WitnessBench, public testing::WithParamInterface<Way> {};

// On the witness driver no path ever closes, so an undisturbed self-test has findings.
TEST_P(SelfTestEnds, LeavesNoRelayClosed) {
  const std::vector<std::string> selfTest = {"selftest", "--channels", "40-60"};
  EXPECT_EQ(Kxbench(selfTest).Run().status, 1);
  const WitnessLog whole = Log();
  EXPECT_TRUE(whole.closed.empty());
  EXPECT_GT(whole.mostClosed, 20U);
  ForgetLog();
  std::mt19937 random(Number("KXBENCH_SEED", 1));
  for (unsigned i = 0; i < Number("KXBENCH_MOMENTS", UsualMoments / 2); ++i) {
    std::string words = GetParam().words;
    words.replace(words.find('%'), 1,
                  std::to_string(std::uniform_int_distribution<long>(1, whole.calls)(random)));
    environment_["WITNESS_END"] = words;
    SCOPED_TRACE(words);
    Kxbench(selfTest).Run();
    EXPECT_TRUE(Log().closed.empty());
    ForgetLog();
  }
}

INSTANTIATE_TEST_SUITE_P(, SelfTestEnds,
                         testing::Values(Way{"Kill", "kill %", false}, Way{"Abort", "abort %", false},
                                         Way{"Throw", "throw %", true}),
                         [](const auto& row) { return std::string(row.param.name); });

class Guard : public WitnessBench {};

TEST_F(Guard, SaysHowItEndedInOneLine) {
  environment_["WITNESS_END"] = "kill 50";
  const ProcessResult result = Kxbench({"--format", "records", "check", "a.dat"}).Run();
  EXPECT_EQ(result.output, "");
#ifdef _WIN32
  const std::string how = "ended in the middle of its work (exit status 9)";
#else
  const std::string how = "was ended by signal 9 (Killed)";
#endif
  EXPECT_EQ(result.errors,
            std::string(NothingExpected) + "kxbench: the program " + how + ": every relay was opened\n");
}

TEST_F(Guard, OpensTheCardsThatTheBusHas) {
  environment_["WITNESS_END"] = "kill 50";
  Kxbench({"check", "a.dat"}).Run();
  const std::string log = folder_.Read("log");
  EXPECT_THAT(log.substr(log.rfind("loaded")),
              testing::StartsWith("loaded\nbus_write 128 0 64\nbus_write 129 0 64\n"
                                  "bus_write 130 0 64\nbus_write 131 0 64\n"));
  EXPECT_THAT(log, HasSubstr("bus_write 254 0 64\nbus_write 255 0 64\n"));
}

TEST_F(Guard, HasNothingToOpenBeforeADriverIsLoaded) {
  environment_["WITNESS_END"] = "quick-exit 0";
  const ProcessResult result = Kxbench({"check", "a.dat"}).Run();
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.errors, EndsWith(": no driver had been loaded, no relay was switched\n"));
  EXPECT_EQ(Log().loaded, 1);
}

TEST_F(Guard, PassesTheExitStatusOn) {
  EXPECT_EQ(Kxbench({"check", "a.dat"}).Run().status, 0);
  EXPECT_EQ(Kxbench({"check", "none.dat"}).Run().status, 2);
}

}  // namespace
