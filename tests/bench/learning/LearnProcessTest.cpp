#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>

#include "tests/bench/program/Process.h"
#include "tests/bench/program/TemporaryFolder.h"

/// `kxbench learn` with its real module on the simulated tester.

namespace {

using testing::HasSubstr;
using testing::StartsWith;

std::string Example(const std::string& harness, const std::string& file) {
  return std::filesystem::absolute(std::filesystem::path(EXAMPLES_FOLDER) / harness / file).string();
}

std::string Content(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

class LearnProcess : public testing::Test {
 protected:
  Process Kxbench(const std::vector<std::string>& arguments) {
    Process process;
    process.program = KXBENCH_PROGRAM;
    process.arguments = arguments;
    process.folder = folder_.Path().string();
    process.environment["BRENMOR_TRACE"] = Trace();
    // The stored files have a decimal point.
    process.environment["LC_ALL"] = "C";
    return process;
  }

  std::string Trace() const { return (folder_.Path() / "trace").string(); }

  /// A copy of an example's expectation file.
  void Copy(const std::string& harness) {
    std::filesystem::copy_file(Example(harness, harness + ".dat"), folder_.Path() / "copy.dat",
                               std::filesystem::copy_options::overwrite_existing);
  }

  TemporaryFolder folder_;
};

class LearnExample : public LearnProcess, public testing::WithParamInterface<const char*> {};

TEST_P(LearnExample, AgainGivesTheStoredFile) {
  const std::string harness = GetParam();
  Copy(harness);
  const ProcessResult result =
      Kxbench({"--device", Example(harness, "good.device"), "learn", "copy.dat"}).Run();
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_THAT(result.output, StartsWith("Learned "));
  EXPECT_EQ(folder_.Read("copy.dat"), Content(Example(harness, harness + ".dat")));
}

INSTANTIATE_TEST_SUITE_P(Harnesses, LearnExample,
                         testing::Values("trailer-adapter", "atx-extension", "crossover-cable",
                                         "null-modem-cable"),
                         [](const auto& row) {
                           std::string name = row.param;
                           std::erase(name, '-');
                           return name;
                         });

TEST_F(LearnProcess, ThenCheckOfTheSameDeviceFindsNothing) {
  const std::string device = Example("trailer-adapter", "good.device");
  EXPECT_EQ(Kxbench({"--device", device, "learn", "new.dat", "--channels", "1-30"}).Run().status, 0);
  const ProcessResult result = Kxbench({"--device", device, "check", "new.dat"}).Run();
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_THAT(result.output, HasSubstr("  Verbindungstest  7    expected 7\n"));
}

#ifndef _WIN32
TEST_F(LearnProcess, CtrlCLeavesTheFileAsItWas) {
  Copy("trailer-adapter");
  // The trace shows that learning has begun; a channel that stays charged keeps it busy.
  const ProcessResult result =
      Kxbench({"--device", Example("trailer-adapter", "charged-capacitor.device"), "learn", "copy.dat"})
          .RunAndSignal(SIGINT, Trace());
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "kxbench: learn copy.dat: cancelled, nothing was saved\n");
  EXPECT_EQ(folder_.Read("copy.dat"), Content(Example("trailer-adapter", "trailer-adapter.dat")));
}
#endif

TEST_F(LearnProcess, RangeBeyondTheTesterIsRefused) {
  const ProcessResult result = Kxbench({"--device", Example("trailer-adapter", "good.device"), "learn",
                                        "new.dat", "--channels", "1-49"})
                                   .Run();
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors,
            "kxbench: learn new.dat: the channels 1 to 49 are not among the tester's channels 1 to 48\n");
  EXPECT_FALSE(std::filesystem::exists(folder_.Path() / "new.dat"));
}

TEST_F(LearnProcess, WithoutADeviceIsOneClearLine) {
  Process process = Kxbench({"learn", "new.dat", "--channels", "1-48"});
  process.environment["BRENMOR_DEVICE"] = "";
  const ProcessResult result = process.Run();
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.errors, StartsWith("kxbench: learn new.dat: "));
  EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
}

}  // namespace
