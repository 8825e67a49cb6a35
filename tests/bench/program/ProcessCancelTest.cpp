#include <csignal>

#include "tests/bench/program/ProcessFixture.h"

/// Checks that are stopped.

namespace {

using testing::EndsWith;

class KxbenchCancel : public KxbenchProcess {
 protected:
  KxbenchCancel() { environment_["FAKE_LOG"] = Log(); }

  std::string Log() const { return (folder_.Path() / "log").string(); }
};

// Windows tells a program of Ctrl-C through its console: tests/ui/terminal/InterruptTest.cpp.
#ifndef _WIN32

class KxbenchSignal : public KxbenchCancel, public testing::WithParamInterface<int> {};

TEST_P(KxbenchSignal, IsTheCancelButton) {
  Does("wait.dat", "wait\n");
  const ProcessResult result = Kxbench({"check", "wait.dat"}).RunAndSignal(GetParam(), Log());
  EXPECT_EQ(result.status, 3);
  EXPECT_THAT(result.output, EndsWith("CANCELLED: the check was stopped\n"));
  EXPECT_EQ(result.errors, "kxbench: ShortTest(\"wait.dat\"): cancelled\n");
  EXPECT_EQ(folder_.Read("log"), "waiting\nrelays open\ncommand destroyed\nlibrary unloaded\n");
}

INSTANTIATE_TEST_SUITE_P(Signals, KxbenchSignal, testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST_F(KxbenchCancel, SignalCancelsWithoutProgressToo) {
  Does("wait.dat", "wait\n");
  const ProcessResult result =
      Kxbench({"--progress", "none", "--format", "records", "check", "wait.dat"}).RunAndSignal(SIGINT, Log());
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.output, "");
}

TEST_F(KxbenchCancel, SignalCancelsWithWindowsToo) {
  Does("wait.dat", "wait\n");
  const ProcessResult result =
      Kxbench({"--progress", "window", "check", "wait.dat"}).RunAndSignal(SIGINT, Log());
  EXPECT_EQ(result.status, 3);
  EXPECT_THAT(folder_.Read("log"), testing::HasSubstr("relays open\n"));
}

#endif

TEST_F(KxbenchCancel, CancelEndsTheScriptAfterTheCommand) {
  Does("good.dat", EmptyReport);
  Does("cancel.dat", "cancel\n");
  folder_.Write("night.kx", "ShortTest(\"good.dat\")\nShortTest(\"cancel.dat\")\nShortTest(\"good.dat\")\n");
  const ProcessResult result = Run({"--format", "records", "run", "night.kx"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.output, "Kurzschlusstest|0|0||0||\n");
  EXPECT_EQ(result.errors, "kxbench: night.kx:2: cancelled\n");
}

TEST_F(KxbenchCancel, CancelGoesBeforeEarlierFindings) {
  Does("bad.dat", "record Kurzschlusstest|0|1||0||\n");
  Does("cancel.dat", "cancel\n");
  folder_.Write("night.kx", "ShortTest(\"bad.dat\")\nShortTest(\"cancel.dat\")\n");
  EXPECT_EQ(Run({"run", "night.kx"}).status, 3);
}

TEST_F(KxbenchCancel, CheckWithoutARecordIsNoPass) {
  Does("closed.dat", "close\n");
  const ProcessResult result = Run({"check", "closed.dat"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.errors,
            "kxbench: ShortTest(\"closed.dat\"): the check ended without a record: it was not finished\n");
}

TEST_F(KxbenchCancel, ReaderThatGoesAwayDoesNotKillTheProgram) {
  Does("good.dat", EmptyReport);
  Process process = Kxbench({"--format", "records", "check", "good.dat"});
  process.outputUnread = true;
  const ProcessResult result = process.Run();
  EXPECT_EQ(result.status, 2) << "not ended by a signal, which would be 141";
  EXPECT_THAT(result.errors, testing::StartsWith("kxbench: cannot write to standard output: "));
}

}  // namespace
