#include <fcntl.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <fstream>

#include "tests/bench/program/WitnessFixture.h"

/// Output that is not taken, has gone or never was there: the relays are opened all the same.

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class StuckOutput : public WitnessBench {
 protected:
  /// The calls of a check of a.dat that nothing disturbed.
  std::string UndisturbedLog() {
    EXPECT_EQ(Kxbench({"check", "a.dat"}).Run().status, 0);
    const std::string log = folder_.Read("log");
    ForgetLog();
    return log;
  }

  /// True once the check of a.dat has made its last call.
  bool HasMeasured(const std::string& undisturbed) const {
    const std::string calls = undisturbed.substr(0, undisturbed.rfind("calls "));
    return folder_.Read("log").size() >= calls.size();
  }
};

/// When to send the next signal: of signals that come at once, only one may be heard.
class NowAndThen {
 public:
  bool Due() { return looks_++ % Looks == 0; }
  int Sent() const { return (looks_ + Looks - 1) / Looks; }

 private:
  static constexpr int Looks = 30;
  int looks_ = 0;
};

TEST_F(StuckOutput, RecordsWaitForTheirReaderWithTheRelaysOpen) {
  const std::string undisturbed = UndisturbedLog();
  Process process = Kxbench({"--format", "records", "check", "a.dat"});
  process.outputStuck = true;
  NowAndThen signals;
  const ProcessResult result = process.RunAnd([&](int id) {
    if (!HasMeasured(undisturbed) || !signals.Due()) return;
    EXPECT_TRUE(Log().closed.empty());
    kill(id, SIGTERM);
  });
  EXPECT_GE(signals.Sent(), 2) << "the second ends the wait";
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.errors,
            std::string(NothingExpected) + "kxbench: cancelled: nobody read standard output\n");
  EXPECT_EQ(folder_.Read("log"), undisturbed);
}

TEST_F(StuckOutput, SecondSignalEndsACancelledCheckToo) {
  Process process = Kxbench({"check", "a.dat"});
  process.outputStuck = true;
  NowAndThen signals;
  const ProcessResult result = process.RunAnd([&](int id) {
    if (!folder_.Read("log").empty() && signals.Due()) kill(id, SIGINT);
  });
  EXPECT_EQ(result.status, 3);
  EXPECT_TRUE(Log().closed.empty());
  EXPECT_EQ(Log().loaded, 1) << "the check opened its relays itself";
}

TEST_F(StuckOutput, ReaderThatHasGoneIsAnError) {
  Process process = Kxbench({"check", "a.dat"});
  process.outputUnread = true;
  const ProcessResult result = process.Run();
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.errors,
              StartsWith(std::string(NothingExpected) + "kxbench: cannot write to standard output: "));
  EXPECT_TRUE(Log().closed.empty());
}

TEST_F(StuckOutput, ErrorsThatNobodyReadsChangeNothing) {
  Process process = Kxbench({"--format", "records", "check", "a.dat"});
  process.errorsUnread = true;
  const ProcessResult result = process.Run();
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, HasSubstr("Kurzschlusstest|"));
}

TEST_F(StuckOutput, StreamsThatWereClosedGoToNoOtherFile) {
  const std::string undisturbed = UndisturbedLog();
  Process process = Kxbench({"check", "a.dat"});
  process.streamsClosed = true;
  EXPECT_EQ(process.Run().status, 2) << "the report could not be written";
  EXPECT_EQ(folder_.Read("log"), undisturbed);
}

/// A terminal that is stopped, as by Ctrl-S, and that nobody reads.
class StoppedTerminal {
 public:
  StoppedTerminal() {
    EXPECT_EQ(openpty(&master_, &slave_, name_, nullptr, nullptr), 0);
    EXPECT_EQ(tcflow(slave_, TCOOFF), 0);
  }
  ~StoppedTerminal() {
    tcflow(slave_, TCOON);
    close(slave_);
    close(master_);
  }
  StoppedTerminal(const StoppedTerminal&) = delete;
  StoppedTerminal& operator=(const StoppedTerminal&) = delete;

  std::string Name() const { return name_; }
  void GoOn() { EXPECT_EQ(tcflow(slave_, TCOON), 0); }

 private:
  int master_ = -1;
  int slave_ = -1;
  char name_[64] = {};
};

// What is to be told, here a warning, waits; the check does not.
TEST_F(StuckOutput, StoppedTerminalHoldsNoCheckUp) {
  const std::string undisturbed = UndisturbedLog();
  StoppedTerminal terminal;
  Process process = Kxbench({"--format", "records", "--progress", "terminal", "check", "a.dat"});
  process.environment["TERM"] = "xterm";
  process.errorFile = terminal.Name();
  const ProcessResult result = process.RunAnd([&](int) {
    if (HasMeasured(undisturbed)) terminal.GoOn();
  });
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, HasSubstr("Kurzschlusstest|"));
  EXPECT_EQ(folder_.Read("log"), undisturbed);
}

TEST_F(StuckOutput, StoppedTerminalHearsASignal) {
  const StoppedTerminal terminal;
  Process process = Kxbench({"--progress", "terminal", "check", "a.dat"});
  process.environment["TERM"] = "xterm";
  process.errorFile = terminal.Name();
  NowAndThen signals;
  const ProcessResult result = process.RunAnd([&](int id) {
    if (!folder_.Read("log").empty() && signals.Due()) kill(id, SIGHUP);
  });
  EXPECT_EQ(result.status, 3);
  EXPECT_TRUE(Log().closed.empty());
}

}  // namespace
