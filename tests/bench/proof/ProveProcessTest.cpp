#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "tests/bench/program/Process.h"
#include "tests/bench/program/TemporaryFolder.h"

/// `kxbench prove` with its real module, and against the plug-in's library on the simulated tester.

namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// Faults of each example that are checked through the plug-in's library, too, which takes real time; fewer
/// where sanitizers or Wine take theirs on top.
#if defined(SHORTTEST_SLOWED)
constexpr const char* FaultsThroughPlugin = "4";
#else
constexpr const char* FaultsThroughPlugin = "40";
#endif

std::string Example(const std::string& harness) {
  const auto file = std::filesystem::path(EXAMPLES_FOLDER) / harness / (harness + ".dat");
  return std::filesystem::absolute(file).string();
}

class ProveProcess : public testing::Test {
 protected:
  Process Kxbench(const std::vector<std::string>& arguments) {
    Process process;
    process.program = KXBENCH_PROGRAM;
    process.arguments = arguments;
    process.folder = folder_.Path().string();
    process.environment["LC_ALL"] = "C";  // the stored files have a decimal point
    return process;
  }

  ProcessResult Prove(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"--progress", "none", "prove"});
    return Kxbench(arguments).Run();
  }

  /// A harness of four channels, (1, 3) and (2, 4), with thresholds of 10 Ohm.
  std::string SmallHarness(const std::string& changes = "", const std::string& lastRow = "1218") {
    return folder_.Write("small.dat",
                         "[BEREICH]\r\nSTART=1\r\nENDE=4\r\nWIDERSTAND=10\r\nWIDERSTAND2=10\r\n[OPTION]\r\n"
                         "U_KONTROLLE=2\r\nLASTRELAISKARTE=0\r\nLASTRELAIS=0\r\nTIMEOUT=100\r\n" +
                             (changes.empty() ? std::string("MAX ERROR=10\r\n") : changes) +
                             "[DATEN]\r\n8888\r\n1888\r\n2188\r\n" + lastRow + "\r\n");
  }

  TemporaryFolder folder_;
};

class ProvedExample : public ProveProcess, public testing::WithParamInterface<const char*> {};

TEST_P(ProvedExample, FindsAllButVoltagesAndAgreesWithThePlugin) {
  const ProcessResult result =
      Prove({Example(GetParam()), "--format", "json", "--through-plugin", FaultsThroughPlugin});
  EXPECT_EQ(result.status, 1) << result.errors;
  const auto proof = nlohmann::json::parse(result.output);
  EXPECT_EQ(proof["complete"], true);
  EXPECT_EQ(proof["goodDevice"]["passes"], true);
  EXPECT_EQ(proof["capacitors"]["reported"], 0);
  for (const auto& one : proof["classes"]) {
    EXPECT_EQ(one["simulated"], one["total"]);
    EXPECT_EQ(one["escaped"], one["class"] == "voltage" ? 2 : 0) << one;
  }
  for (const auto& escape : proof["escapes"]) EXPECT_EQ(escape["reason"], "limits") << escape;
  EXPECT_EQ(proof["throughPlugin"]["checked"], std::stoi(FaultsThroughPlugin));
  EXPECT_EQ(proof["throughPlugin"]["different"], 0);
}

INSTANTIATE_TEST_SUITE_P(Harnesses, ProvedExample,
                         testing::Values("trailer-adapter", "atx-extension", "crossover-cable",
                                         "null-modem-cable"),
                         [](const auto& row) {
                           std::string name = row.param;
                           std::erase(name, '-');
                           return name;
                         });

TEST_F(ProveProcess, EndsWellWhenWhatEscapesIsAccepted) {
  const ProcessResult result = Prove({SmallHarness(), "--accept", "excluded,limits"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_THAT(result.output, HasSubstr("PROVED: 2 faults escape, 2 of them accepted\n"));
}

TEST_F(ProveProcess, ExcludedPairsEscapeAndAreNamed) {
  const ProcessResult result = Prove(
      {SmallHarness("", "1238"), "--format", "json", "--accept", "limits", "--output", "csv:faults.csv"});
  EXPECT_EQ(result.status, 0) << "the other three pairs of the two nets are measured\n" << result.errors;
  const std::string csv = folder_.Read("faults.csv");
  EXPECT_THAT(csv, StartsWith("class,channels,value,result,"));
  EXPECT_THAT(csv, HasSubstr("\r\nshort,3 4,0.1 Ohm,found,yes,exactly,,,\r\n"));
}

TEST_F(ProveProcess, ErrorLimitOfNoneIsTheReasonOfEveryShort) {
  const ProcessResult result = Prove({SmallHarness("MAX ERROR=0\r\n"), "--format", "json"});
  EXPECT_EQ(result.status, 1);
  const auto proof = nlohmann::json::parse(result.output);
  EXPECT_EQ(proof["classes"][1]["escaped"], 1);
  for (const auto& escape : proof["escapes"]) {
    if (escape["class"] == "short") {
      EXPECT_EQ(escape["reason"], "error-limit");
    }
  }
}

TEST_F(ProveProcess, AnExpectationThatNoDeviceCanMeetIsTheFirstResult) {
  const ProcessResult result = Prove({SmallHarness("", "2218"), "--accept", "limits"});
  EXPECT_EQ(result.status, 1) << result.errors;
  EXPECT_THAT(result.output, HasSubstr("The good device does not pass."));
  EXPECT_THAT(result.output, HasSubstr("NOT PROVED: the good device does not pass; "));
}

TEST_F(ProveProcess, TheSameWithAnyNumberOfProcesses) {
  const std::string file = SmallHarness();
  const ProcessResult one = Prove({file, "--jobs", "1"});
  const ProcessResult three = Prove({file, "--jobs", "3"});
  EXPECT_EQ(one.output, three.output);
  EXPECT_EQ(three.status, 1);
}

TEST_F(ProveProcess, TakesAGoodDeviceInPlaceOfTheIdealOne) {
  folder_.Write("worn.device", "wire 1 3 9\nwire 2 4 9\n");
  Process process = Kxbench({"--device", "worn.device", "prove", SmallHarness(), "--format", "json"});
  const auto proof = nlohmann::json::parse(process.Run().output);
  EXPECT_EQ(proof["goodDevice"]["passes"], true);
  ASSERT_EQ(proof["classes"][1]["escaped"], 1) << "0.1 Ohm between 9 and 9";
  EXPECT_EQ(proof["escapes"][0]["limit"], "docs/limits.md#far-end-short");
  folder_.Write("charged.device", "wire 1 3\ncharge 2 5V tau 1\n");
  process.arguments[1] = "charged.device";
  const ProcessResult refused = process.Run();
  EXPECT_EQ(refused.status, 2);
  EXPECT_EQ(refused.errors, "kxbench: --device: the device is charged: a proof needs a good one\n");
}

TEST_F(ProveProcess, NamesThresholdsThatWouldFindMore) {
  folder_.Write("good.device", "wire 1 3\nwire 2 4\nleakage 30k\n");
  const ProcessResult result =
      Kxbench({"--device", "good.device", "prove", SmallHarness(), "--suggest"}).Run();
  EXPECT_THAT(result.output, HasSubstr("3 times away from the good device:\n  WIDERSTAND 1 Ohm\n"));
  // Two channels of a net have 15 kOhm to the housing together, and the other net as much.
  EXPECT_THAT(result.output, HasSubstr("  WIDERSTAND2 10000 Ohm\n"));
}

TEST_F(ProveProcess, RefusesWhatItCannotRead) {
  EXPECT_THAT(Prove({"missing.dat"}).errors, StartsWith("kxbench: missing.dat: cannot be read: "));
  const std::string file = SmallHarness();
  EXPECT_EQ(Prove({file, "--accept", "luck"}).status, 2);
  EXPECT_EQ(Prove({file, "--output", "pdf:proof.pdf"}).status, 2);
  EXPECT_EQ(Prove({file, "--jobs", "0"}).status, 2);
  EXPECT_EQ(Prove({file, "--output", "json:no/such/folder.json"}).status, 2);
}

#ifndef _WIN32
TEST_F(ProveProcess, CtrlCLeavesAReportThatSaysItIsNotComplete) {
  // Far more faults than can be simulated before the interrupt.
  Process process = Kxbench({"prove", Example("generated-240"), "--progress", "none", "--format", "json",
                             "--output", "json:proof.json"});
  int looks = 0;
  const ProcessResult result = process.RunAnd([&looks](int child) {
    if (++looks == 30) kill(child, SIGINT);
  });
  EXPECT_EQ(result.status, 3) << result.errors;
  EXPECT_THAT(result.errors, HasSubstr("cancelled"));
  EXPECT_EQ(nlohmann::json::parse(result.output)["complete"], false);
  EXPECT_EQ(nlohmann::json::parse(folder_.Read("proof.json"))["complete"], false);
}
#endif

}  // namespace
