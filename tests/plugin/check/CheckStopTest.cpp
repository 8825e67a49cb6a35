// The user stops a check, at every progress point.
#include "tests/plugin/check/CheckBench.h"

namespace shorttest::testkit {
namespace {

class CheckStop : public CheckBench {
 protected:
  static constexpr int High = 4;  // five channels

  void SetUp() override {
    CheckBench::SetUp();
    // An expected connection that is there, one that is not, and a short: no pass is left out.
    Expect(46, "8 28 118 1128 11118");
    data.LastRelaisKarte = 1;
    data.LastRelais = 8;
    driver.Wire(46, 47);
    driver.Wire(47, 50, 0.25);
  }

  // Progress points of each pass, of the reporting and of the end.
  static constexpr int Pass1 = 1 + High;
  static constexpr int Pass2 = 1 + High;
  static constexpr int Pass3 = 1 + High + 1;
  static constexpr int Pass4 = 1 + 3;
  static constexpr int All = Pass1 + Pass2 + Pass3 + Pass4 + 1 + 1;

  static std::string CleanUp(bool hostIsTold) {
    return ReleaseAll(2) + TerminationOff(0, 7) + (hostIsTold ? "cancel test\n" : "") +
           "enable 11 12\nclose dialog\n";
  }

  /// How many more progress points there are once point n answered "stop": the first of each pass after the
  /// one that was stopped, the reporting's, and the last.
  static int PointsBehind(int n) {
    if (n <= Pass1) return 4;
    if (n <= Pass1 + Pass2) return 3;
    if (n <= Pass1 + Pass2 + Pass3 + Pass4) return 2;
    return All - n;
  }

  static std::string UpToMessages(const std::string& text, int n) {
    std::size_t at = 0;
    for (int i = 0; i < n; ++i) at = text.find("messages\n", at) + 1;
    return text.substr(0, at - 1) + "messages\n";
  }

  static std::string StopsBehind(int n) {
    std::string calls;
    for (int i = 0; i < PointsBehind(n); ++i) calls += Stopped();
    return calls;
  }

  std::string RunWhole() {
    RunShortTest(data);
    std::string text = log.Text();
    log.Clear();
    return text;
  }
};

TEST_F(CheckStop, TheDeviceReachesEveryPass) {
  RunWhole();
  EXPECT_EQ(ui.MessageCalls(), All);
  EXPECT_EQ(Records(),
            "fehlende Verbindung zwischen 48 und 49|0|1000000000|Ohm|10|0|\n"
            "Verbindungstest|2|1||2||\n"
            "Kurzschluss zwischen (46, 47) und 50|10|0,4|Ohm|100000000000001|0|\n"
            "Kurzschluss zwischen (46, 47) und 50|10|0,4|Ohm|100000000000001|0|\n"
            "Kurzschlusstest|0|2||0||\n");
}

TEST_F(CheckStop, TheButtonAtAnyPointSendsNothingAndTellsTheHost) {
  const std::string whole = RunWhole();
  const std::size_t records = host.Messages().size();
  for (int n = 1; n < All; ++n) {
    SCOPED_TRACE("pressed at progress point " + std::to_string(n));
    log.Clear();
    ui.PressCancelAt(n);
    RunShortTest(data);
    EXPECT_EQ(log.Text(), UpToMessages(whole, n) + StopsBehind(n) + CleanUp(true));
    EXPECT_EQ(environment.Cancels(), n);
    EXPECT_EQ(host.Messages().size(), records);
    EXPECT_TRUE(driver.AllRelaysOpen());
    EXPECT_FALSE(driver.TerminationOn());
    EXPECT_TRUE(ui.AllWindowsEnabled());
    EXPECT_EQ(CheckForm, nullptr);
  }
}

TEST_F(CheckStop, TheCloseBoxAtAnyPointSendsNothingAndDoesNotTellTheHost) {
  const std::string whole = RunWhole();
  const std::size_t records = host.Messages().size();
  for (int n = 1; n < All; ++n) {
    SCOPED_TRACE("closed at progress point " + std::to_string(n));
    log.Clear();
    ui.CloseBoxAt(n);
    RunShortTest(data);
    EXPECT_EQ(log.Text(), UpToMessages(whole, n) + StopsBehind(n) + CleanUp(false));
    EXPECT_EQ(environment.Cancels(), 0);
    EXPECT_EQ(host.Messages().size(), records);
    EXPECT_TRUE(driver.AllRelaysOpen());
    EXPECT_TRUE(ui.AllWindowsEnabled());
  }
}

TEST_F(CheckStop, AtTheLastPointTheRecordsAreOutAndTheHostIsStillTold) {
  ui.PressCancelAt(All);
  RunShortTest(data);
  EXPECT_EQ(host.Messages().size(), 5U);
  EXPECT_EQ(environment.Cancels(), 1);
}

TEST_F(CheckStop, WithinAWaitForDischargeTheShortPassesAreSkippedToo) {
  Expect(1, "8 18 118");
  driver.Live(3, 2.0);
  ui.PressCancelAt(2 + 1 + 1 + 2 + 1);  // first pass, its rows, voltage pass, two channels, the wait
  RunShortTest(data);
  // The wait returned a voltage above the limit: the third pass is not even begun.
  EXPECT_TRUE(log.Text().ends_with(Voltage() + Voltage() + Stopped() + Stopped() + Stopped() + ReleaseAll(1) +
                                   "cancel test\nenable 11 12\nclose dialog\n"))
      << log.Text();
  EXPECT_EQ(host.Messages().size(), 0U);
}

TEST_F(CheckStop, WithoutAHostThereIsNobodyToTell) {
  SetTestEnvironment(nullptr);
  ui.PressCancelAt(3);
  RunShortTest(data);
  EXPECT_TRUE(driver.AllRelaysOpen());
  EXPECT_TRUE(ui.AllWindowsEnabled());
  EXPECT_EQ(host.Messages().size(), 0U);
}

TEST_F(CheckStop, TheNextCheckStartsAfresh) {
  ui.PressCancelAt(3);
  RunShortTest(data);
  RunShortTest(data);
  EXPECT_EQ(host.Messages().size(), 5U);
}

}  // namespace
}  // namespace shorttest::testkit
