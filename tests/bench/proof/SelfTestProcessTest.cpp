#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

#include "tests/bench/program/Process.h"
#include "tests/bench/program/TemporaryFolder.h"

/// `kxbench selftest` with its real module on the simulated tester.

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class SelfTestProcess : public testing::Test {
 protected:
  ProcessResult Kxbench(const std::vector<std::string>& arguments) {
    const ProcessResult result = Prepared(arguments).Run();
    if (result.status <= 1) {
      EXPECT_THAT(folder_.Read("trace"),
                  HasSubstr("# end: 0 channel relays closed, 0 auxiliary relays closed"));
    }
    return result;
  }

  Process Prepared(const std::vector<std::string>& arguments) {
    Process process;
    process.program = KXBENCH_PROGRAM;
    process.arguments = arguments;
    process.folder = folder_.Path().string();
    process.environment["BRENMOR_TRACE"] = (folder_.Path() / "trace").string();
    return process;
  }

  void Tester(const std::string& description) { folder_.Write("tester.device", description); }

  TemporaryFolder folder_;
};

TEST_F(SelfTestProcess, OfAGoodTesterHasNoDefects) {
  Tester("cards 2\n");
  const ProcessResult result = Kxbench({"--device", "tester.device", "selftest"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.output, "Self-test of the channels 1 to 96, cards 1, 2\n\nno defects\n");
}

TEST_F(SelfTestProcess, NamesCardChannelRelayAndLine) {
  Tester("cards 2\nstuck-closed 50 1\nwire 3 4\n");
  const ProcessResult result = Kxbench({"--device", "tester.device", "selftest"});
  EXPECT_EQ(result.status, 1) << result.errors;
  EXPECT_THAT(result.output, HasSubstr("  card 2, channel 50, relay 2 on line 1: never opens\n"));
  EXPECT_THAT(result.output, HasSubstr("  card 1, channel 3: not empty, connected to another channel\n"));
  EXPECT_THAT(result.output, EndsWith("FAIL: 3 defects\n"));
}

TEST_F(SelfTestProcess, ForOtherProgramsIsOneObject) {
  Tester("cards 2\nstuck-closed 50 1\n");
  const ProcessResult result =
      Kxbench({"--device", "tester.device", "selftest", "--channels", "49-60", "--format", "json"});
  EXPECT_EQ(result.status, 1) << result.errors;
  EXPECT_EQ(
      result.output,
      "{\"format\":\"selftest\",\"version\":1,\"verdict\":\"fail\",\"channels\":[49,60],\"cards\":[2],"
      "\"defects\":[{\"kind\":\"never-opens\",\"card\":2,\"line\":1,\"channel\":50,\"certain\":true}]}\n");
}

TEST_F(SelfTestProcess, WithoutATesterCannotRun) {
  const ProcessResult result = Kxbench({"selftest"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.errors, StartsWith("kxbench: selftest: "));
}

TEST_F(SelfTestProcess, HasNoMoreChannelsThanATester) {
  EXPECT_EQ(Kxbench({"selftest", "--channels", "1-241"}).errors,
            "kxbench: --channels: a tester has 240 channels at most\n");
}

#ifndef _WIN32
TEST_F(SelfTestProcess, CtrlCEndsItWithEveryRelayOpen) {
  Tester("cards 5\n");
  Process process = Prepared({"--device", "tester.device", "selftest"});
  const ProcessResult result = process.RunAndSignal(SIGINT, (folder_.Path() / "trace").string());
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "kxbench: selftest: cancelled\n");
  EXPECT_THAT(folder_.Read("trace"), HasSubstr("# end: 0 channel relays closed, 0 auxiliary relays closed"));
}
#endif

}  // namespace
