#include <fcntl.h>
#include <pty.h>
#include <unistd.h>

#include <csignal>
#include <functional>

#include "tests/bench/program/ProcessFixture.h"

/// A station on a terminal, and with lines from a file.

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr char GoodHarness[] = "record Verbindungstest|1|1||1||\nrecord Kurzschlusstest|0|0||0||\n";
constexpr char OpenHarness[] =
    "record fehlende Verbindung zwischen 1 und 2|0|-1|Ohm|10|0|\nrecord Verbindungstest|1|0||1||\n"
    "record Kurzschlusstest|0|0||0||\n";

/// Somebody at a terminal.
class Pty {
 public:
  Pty() {
    winsize size = {24, 80, 0, 0};
    EXPECT_EQ(openpty(&master_, &slave_, name_, nullptr, &size), 0);
    fcntl(master_, F_SETFL, O_NONBLOCK);
  }
  ~Pty() {
    close(slave_);
    close(master_);
  }
  Pty(const Pty&) = delete;
  Pty& operator=(const Pty&) = delete;

  std::string Name() const { return name_; }
  void Type(const std::string& text) {
    EXPECT_EQ(write(master_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }

  /// All that was shown so far.
  const std::string& Shown() {
    char bytes[4096];
    for (ssize_t count = 0; (count = read(master_, bytes, sizeof bytes)) > 0;) {
      shown_.append(bytes, static_cast<std::size_t>(count));
    }
    return shown_;
  }

  /// Whether the text was shown since the last one that was seen.
  bool Sees(const std::string& text) {
    if (Shown().find(text, from_) == std::string::npos) return false;
    from_ = shown_.size();
    return true;
  }

 private:
  int master_ = -1;
  int slave_ = -1;
  char name_[64] = {};
  std::string shown_;
  std::size_t from_ = 0;
};

class KxbenchStation : public KxbenchProcess {
 protected:
  Process Station(const std::vector<std::string>& arguments) {
    std::vector<std::string> all = {"station"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    Process process = Kxbench(all);
    process.environment["TERM"] = "xterm";
    process.environment["LC_ALL"] = "C";
    process.environment["FAKE_LOG"] = (folder_.Path() / "log").string();
    return process;
  }

  ProcessResult OnLines(const std::string& lines, const std::vector<std::string>& arguments) {
    Process process = Station(arguments);
    process.inputFile = folder_.Write("lines", lines);
    return process.Run();
  }

  /// Goes through `steps` on a terminal: each is tried again and again until it says that it is done.
  ProcessResult OnTerminal(const std::vector<std::string>& arguments,
                           const std::vector<std::function<bool(int process)>>& steps) {
    Process process = Station(arguments);
    process.inputFile = process.errorFile = pty_.Name();
    std::size_t done = 0;
    const ProcessResult result = process.RunAnd([&](int id) {
      pty_.Shown();
      if (done < steps.size() && steps[done](id)) ++done;
    });
    EXPECT_EQ(done, steps.size()) << pty_.Shown();
    return result;
  }

  std::function<bool(int)> Typing(const std::string& awaited, const std::string& text) {
    return [this, awaited, text](int) {
      if (!pty_.Sees(awaited)) return false;
      pty_.Type(text);
      return true;
    };
  }

  Pty pty_;
};

TEST_F(KxbenchStation, ChecksEachLine) {
  Does("good.dat", GoodHarness);
  const ProcessResult result = OnLines("S1\nS2\n\nS1\n", {"good.dat", "--output", "jsonl:a.jsonl"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.output,
            "S1: PASS\nS2: PASS\nS1: PASS\n  retest: checked once before, last: pass\n"
            "checked 3: 3 PASS, 0 FAIL; 1 retest\n");
  const std::string lines = folder_.Read("a.jsonl");
  EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 3);
  EXPECT_THAT(lines, HasSubstr("\"serial\":\"S2\""));
}

TEST_F(KxbenchStation, NamesFaultsInWords) {
  Does("bad.dat", OpenHarness);
  const ProcessResult result = OnLines("S1\n", {"bad.dat"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, StartsWith("S1: FAIL\n  open: the wire from 1 to 2"));
}

TEST_F(KxbenchStation, SwitchesTheExpectationByThePart) {
  Does("good.dat", GoodHarness);
  Does("bad.dat", OpenHarness);
  folder_.Write("line.ini", "[Parts]\n11=good.dat\n22=bad.dat\n");
  const ProcessResult result =
      OnLines("S0\n11\nS1\n22\nS2\n", {"--project", "./line", "--output", "jsonl:a.jsonl"});
  EXPECT_THAT(result.output, StartsWith("S1: PASS\nS2: FAIL\n"));
  EXPECT_THAT(result.errors, HasSubstr("S0 is no part's code"));
  EXPECT_THAT(folder_.Read("a.jsonl"), HasSubstr("\"serial\":\"S2\",\"part\":\"22\""));
}

TEST_F(KxbenchStation, RefusesToBeginWithoutAnExpectationThatCanBeRead) {
  EXPECT_EQ(OnLines("S1\n", {"none.dat"}).status, 2);
  EXPECT_THAT(OnLines("S1\n", {}).errors, HasSubstr("station needs FILE, or --project"));
}

TEST_F(KxbenchStation, ExpectationThatGetsLostIsAnErrorAndTheDayGoesOn) {
  Does("good.dat", std::string(GoodHarness) + "truncate good.dat\n");
  const ProcessResult result = OnLines("S1\nS2\n", {"good.dat", "--output", "jsonl:a.jsonl"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, testing::AllOf(HasSubstr("S1: PASS\n"), HasSubstr("S2: ERROR\n")));
  EXPECT_THAT(folder_.Read("a.jsonl"), HasSubstr("\"verdict\":\"error\""));
}

TEST_F(KxbenchStation, ResultThatIsNotStoredIsAnError) {
  Does("good.dat", GoodHarness);
  const ProcessResult result = OnLines("S1\n", {"good.dat", "--output", "json:none/{id}.json"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.output, StartsWith("S1: ERROR\n  error: result not stored: "));
}

TEST_F(KxbenchStation, FillsTheTerminal) {
  Does("good.dat", GoodHarness);
  const ProcessResult result =
      OnTerminal({"good.dat"},
                 {Typing("Serial number: ", "S1\r"), Typing("PASS  S1", "S2\r"), Typing("PASS  S2", "\x04")});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "checked 2: 2 PASS, 0 FAIL\n");
  EXPECT_THAT(pty_.Shown(), HasSubstr("############         #########  "));
}

TEST_F(KxbenchStation, EscapeEndsIt) {
  Does("good.dat", GoodHarness);
  EXPECT_EQ(OnTerminal({"good.dat"}, {Typing("Serial number: ", "half\x1b")}).status, 0);
}

TEST_F(KxbenchStation, WhatIsScannedDuringACheckNeitherCancelsItNorIsChecked) {
  Does("wait.dat", "wait\n");
  const auto waiting = [this](int) {
    if (folder_.Read("log").find("waiting") == std::string::npos) return false;
    pty_.Type("S2\r");
    return true;
  };
  const auto interrupt = [](int id) { return kill(id, SIGINT) == 0; };
  const ProcessResult result = OnTerminal({"wait.dat", "--output", "jsonl:a.jsonl"},
                                          {Typing("Serial number: ", "S1\r"), waiting, interrupt,
                                           Typing("S2 was scanned during the check", "\x04")});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "checked 1: 0 PASS, 0 FAIL, 1 cancelled\n");
  EXPECT_THAT(pty_.Shown(), testing::AllOf(HasSubstr("CANCELLED  S1"), HasSubstr("Serial number: S2"),
                                           HasSubstr("not checked: S2")));
  const std::string results = folder_.Read("a.jsonl");
  EXPECT_THAT(results, HasSubstr("\"verdict\":\"cancelled\",\"serial\":\"S1\""));
  EXPECT_THAT(results, Not(HasSubstr("\"serial\":\"S2\"")));
}

TEST_F(KxbenchStation, SignalCancelsTheCheckAndEndsTheStation) {
  Does("wait.dat", "wait\n");
  const auto end = [this](int id) {
    return folder_.Read("log").find("waiting") != std::string::npos && kill(id, SIGTERM) == 0;
  };
  const ProcessResult result = OnTerminal({"wait.dat"}, {Typing("Serial number: ", "S1\r"), end});
  EXPECT_EQ(result.status, 3);
  EXPECT_THAT(result.output, HasSubstr("1 cancelled"));
}

}  // namespace
