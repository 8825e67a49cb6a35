// Whole checks, call by call.
#include <gmock/gmock.h>

#include "tests/plugin/check/CheckBench.h"

namespace shorttest::testkit {
namespace {

class CheckDriver : public CheckBench {
 protected:
  static std::string Begin() {
    return "create dialog\nclear\nbus 128 0 64\nbus 129 0 64\nerror?\nbar 0\nshow\ndisable all but 99\n";
  }
  static std::string End(int cards) { return ReleaseAll(cards) + "enable 11 12\nclose dialog\n"; }

  void Check() { RunShortTest(data); }
};

TEST_F(CheckDriver, AGoodDevice) {
  Expect(1, "8 28 118");
  driver.Wire(1, 2);
  Check();
  std::string calls = Begin();
  // expected connections
  calls += Bar(0.0) + PrepareAfterReset(1);
  calls += Bar(1.0 / 16.0) + Connect(1, 0) + Connect(2, 1) + LowResistance() + Release(1, 0) + Release(2, 1);
  calls += Bar(2.0 / 16.0);
  // voltages
  calls += Bar(0.25) + Connect(1, 1);
  calls += Bar(1.0 / 12.0 + 0.25) + Connect(2, 0) + Voltage() + Connect(2, 1) + Release(2, 0);
  calls += Bar(2.0 / 12.0 + 0.25) + Connect(3, 0) + Voltage() + Connect(3, 1) + Release(3, 0);
  // each net against all others
  calls += Bar(0.5) + PrepareWithoutReset(1);
  calls += Bar(1.0 / 16.0 + 0.5) + Release(1, 1) + Release(2, 1) + Connect(1, 0) + HighResistance();
  calls += Release(1, 0) + Connect(1, 1) + Connect(2, 1);
  calls += Bar(2.0 / 16.0 + 0.5) + Release(1, 1) + Release(2, 1) + Connect(2, 0) + HighResistance();
  calls += Release(2, 0) + Connect(1, 1) + Connect(2, 1);
  calls += Bar(3.0 / 16.0 + 0.5) + Release(3, 1) + Connect(3, 0) + HighResistance();
  calls += Release(3, 0) + Connect(3, 1);
  // records
  calls += Bar(1.0) + "send Verbindungstest|1|1||1||\nsend Kurzschlusstest|0|0||0||\n" + Bar(1.0);
  EXPECT_EQ(log.Text(), calls + End(1));
  EXPECT_EQ(CheckForm, nullptr);
}

TEST_F(CheckDriver, AShortedDevice) {
  Expect(47, "8 18 118");
  driver.Wire(47, 49, 0.5);
  Check();
  const std::string text = log.Text();
  std::string calls = Bar(0.75) + PrepareAfterReset(2);
  calls += Bar(1.0 / 12.0 + 0.75) + Connect(47, 1) + Connect(49, 0) + LowResistance();
  calls += Release(49, 0) + Release(47, 1);
  calls += Bar(2.0 / 12.0 + 0.75) + Connect(49, 1) + Release(49, 1);
  calls += Bar(1.0) + "send Kurzschluss zwischen 47 und 49|10|0,5|Ohm|100000000000001|0|\n";
  calls += "send Kurzschlusstest|0|1||0||\n" + Bar(1.0) + End(2);
  EXPECT_TRUE(text.ends_with(calls)) << text;
}

// Its relay lies on a card that the range does not need; nothing may stay closed.
TEST_F(CheckDriver, WithEveryChannelSuspendedTheOneAfterTheRangeIsOpenedOnItsOwnCard) {
  Expect(47, "9 49");
  Check();
  const std::string text = log.Text();
  EXPECT_THAT(text, ::testing::HasSubstr(Connect(49, 1)));
  EXPECT_TRUE(text.ends_with(ReleaseAll(1) + "bus 131 0 64\nenable 11 12\nclose dialog\n")) << text;
  EXPECT_TRUE(driver.AllRelaysOpen());
}

TEST_F(CheckDriver, WithEveryChannelSuspendedAndTheNextOneOnTheSameCardTheCleanUpIsTheUsual) {
  Expect(46, "9 49");
  Check();
  EXPECT_TRUE(log.Text().ends_with(End(1))) << log.Text();
  EXPECT_TRUE(driver.AllRelaysOpen());
}

TEST_F(CheckDriver, AnEmptyRangeBeforeTheFirstCardHasNothingAfterIt) {
  data = TShortTestData(1, 0);
  Check();
  EXPECT_TRUE(log.Text().ends_with(End(1))) << log.Text();
  EXPECT_TRUE(driver.AllRelaysOpen());
}

TEST_F(CheckDriver, AnEmptyRangeThatStartsOnACardOfItsOwnIsOpenedThere) {
  data = TShortTestData(100, 5);
  Check();
  EXPECT_THAT(log.Text(), ::testing::HasSubstr(Connect(100, 1)));
  EXPECT_TRUE(log.Text().ends_with(ReleaseAll(1) + "bus 133 0 64\nenable 11 12\nclose dialog\n"));
  EXPECT_TRUE(driver.AllRelaysOpen());
}

TEST_F(CheckDriver, ASingleChannel) {
  Expect(240, "8");
  Check();
  std::string calls = Begin() + Bar(0.0) + PrepareAfterReset(5) + Bar(0.25) + Connect(240, 1);
  calls += Bar(0.5) + PrepareWithoutReset(5) + Bar(1.0 / 8.0 + 0.5) + Release(240, 1) + Connect(240, 0);
  calls += HighResistance() + Release(240, 0) + Connect(240, 1);
  calls += Bar(1.0) + "send Kurzschlusstest|0|0||0||\n" + Bar(1.0);
  EXPECT_EQ(log.Text(), calls + End(5));
}

TEST_F(CheckDriver, AnEmptyRangeMeasuresNothingAndSendsTheSummary) {
  data = TShortTestData(4, 3);
  Check();
  std::string calls = Begin() + Bar(0.0) + PrepareAfterReset(1) + Bar(0.25) + Connect(4, 1);
  calls += Bar(0.5) + PrepareWithoutReset(1) + Bar(1.0) + "send Kurzschlusstest|0|0||0||\n" + Bar(1.0);
  EXPECT_EQ(log.Text(), calls + End(1));
}

// --- one at a time ---

TEST_F(CheckDriver, ACheckOutOfARunningOneIsRefusedAndDoesNotDisturbIt) {
  Expect(1, "8 28 118");
  driver.Wire(1, 2);
  Check();
  const std::string alone = log.Text();
  const int messages = ui.MessageCalls();

  log.Clear();
  int refused = 0;
  ui.WithinMessages([&] {
    EXPECT_THROW(Check(), std::logic_error);
    ++refused;
  });
  Check();
  EXPECT_EQ(log.Text(), alone);
  EXPECT_EQ(refused, messages);
}

// --- the terminating resistor ---

TEST_F(CheckDriver, TheTerminatingResistorIsOnFromBeforeTheFirstPassUntilTheLinesAreReset) {
  Expect(1, "8");
  data.LastRelaisKarte = 2;
  data.LastRelais = 6;
  Check();
  const std::string text = log.Text();
  EXPECT_TRUE(text.starts_with(Begin() + TerminationOn(1, 5) + Bar(0.0))) << text;
  EXPECT_TRUE(text.ends_with(ReleaseAll(1) + TerminationOff(1, 5) + "enable 11 12\nclose dialog\n")) << text;
}

TEST_F(CheckDriver, WithoutATerminatingResistorItsRelayIsNeverSwitched) {
  for (const auto& [card, relay] : {std::pair(0, 2), std::pair(2, 0), std::pair(-1, 2), std::pair(2, -1)}) {
    Expect(1, "8 18");
    data.LastRelaisKarte = card;
    data.LastRelais = relay;
    Check();
  }
  EXPECT_EQ(log.Count("relay"), 0);
}

// --- which passes run ---

TEST_F(CheckDriver, TooManyOpenConnectionsSkipTheOtherPasses) {
  Expect(1, "8 28 118 1128");
  data.MaxError = 2;
  driver.Short(1, 3);
  Check();
  EXPECT_EQ(log.Count("read 8"), 0);
  EXPECT_EQ(log.Count("read 10"), 4);
  EXPECT_EQ(Records(),
            "fehlende Verbindung zwischen 1 und 2|0|1000000000|Ohm|10|0|\n"
            "fehlende Verbindung zwischen 3 und 4 -  ABBRUCH|0|1000000000|Ohm|10|0|\n"
            "Verbindungstest|2|0||2||\n"
            "Kurzschlusstest|0|0||0||\n");
}

TEST_F(CheckDriver, OpenConnectionsBelowTheLimitLetAllPassesRun) {
  Expect(1, "8 28 118 1128");
  data.MaxError = 3;
  driver.Wire(1, 3, 0.25);
  Check();
  EXPECT_EQ(Records(),
            "fehlende Verbindung zwischen 1 und 2|0|1000000000|Ohm|10|0|\n"
            "fehlende Verbindung zwischen 3 und 4|0|1000000000|Ohm|10|0|\n"
            "Verbindungstest|2|0||2||\n"
            "Kurzschluss zwischen (1, 2) und 3 -  ABBRUCH|10|0,25|Ohm|100000000000001|0|\n"
            "Kurzschlusstest|0|1||0||\n");
}

TEST_F(CheckDriver, ALiveChannelSkipsTheShortPasses) {
  Expect(1, "8 18 118");
  data.U_Control = 1;
  driver.Live(3, 5.312);
  driver.Short(1, 2);
  Check();
  EXPECT_EQ(log.Count("read 10"), 0);
  EXPECT_EQ(Records(),
            "Spannung an Kanal 3|0,7|5,312|V|||\n"
            "Kurzschlusstest|0|0||0||\n");
}

TEST_F(CheckDriver, ALiveChannelBesideAnOpenConnection) {
  Expect(1, "8 28 118");
  data.U_Control = 1;
  driver.Live(3, 5.0);
  Check();
  EXPECT_EQ(Records(),
            "Spannung an Kanal 3|0,7|5|V|||\n"
            "fehlende Verbindung zwischen 1 und 2|0|1000000000|Ohm|10|0|\n"
            "Verbindungstest|1|0||1||\n"
            "Kurzschlusstest|0|0||0||\n");
}

TEST_F(CheckDriver, AnErrorLimitOfZeroRunsTheFirstPassAlone) {
  Expect(1, "8 28 118");
  data.MaxError = 0;
  driver.Wire(1, 2);
  driver.Live(3, 99.0);
  Check();
  EXPECT_EQ(log.Count("read 8"), 0);
  EXPECT_EQ(log.Count("read 10"), 1);
  EXPECT_EQ(Records(), "Verbindungstest|1|1||1||\nKurzschlusstest|0|0||0||\n");
}

TEST_F(CheckDriver, OneCheckCanFindMoreErrorsThanTheLimitOfAPass) {
  // Two open connections, then as many shorts as the limit allows a pass of its own.
  Expect(1, "8 28 118 1128 11118 111118 1111118 11111118 111111118 1111111118");
  data.MaxError = 3;
  for (const int channel : {5, 6, 7, 8, 9}) driver.Wire(channel, channel + 1, 0.5);
  Check();
  // 5 to 10 are one net now: three pairs were measured as shorted before the pass ended.
  EXPECT_EQ(log.Count("send fehlende Verbindung"), 2);
  EXPECT_EQ(log.Count("send Kurzschluss zwischen"), 1);
  EXPECT_NE(Records().find("Kurzschluss zwischen 5 und (6, 7, 8) -  ABBRUCH|10|0,5|"), std::string::npos)
      << Records();
}

TEST_F(CheckDriver, PassesThreeAndFourRunAsAPair) {
  Expect(1, "8 18");
  driver.Short(1, 2);
  Check();
  EXPECT_EQ(log.Count("read 10"), 3);
}

// --- thresholds ---

TEST_F(CheckDriver, TheShortThresholdIsNeverBelowTheConnectionThreshold) {
  Expect(1, "8 18");
  data.Schwelle = 100.0;
  data.Schwelle2 = 5.0;
  driver.Wire(1, 2, 50.0);
  Check();
  EXPECT_EQ(Records(),
            "Kurzschluss zwischen 1 und 2|100|50|Ohm|100000000000001|0|\n"
            "Kurzschlusstest|0|1||0||\n");
  EXPECT_EQ(data.Schwelle2, 5.0);
}

TEST_F(CheckDriver, ConnectionsAreMeasuredAgainstTheThresholdOfTheExpectation) {
  Expect(1, "8 28 128");
  data.Schwelle = 100.0;
  driver.Wire(1, 2, 50.0);
  driver.Wire(2, 3, 150.0);
  Check();
  EXPECT_EQ(Records(),
            "fehlende Verbindung zwischen 2 und 3|0|150|Ohm|100|0|\n"
            "Verbindungstest|2|1||2||\n"
            "Kurzschlusstest|0|0||0||\n");
}

TEST_F(CheckDriver, AHigherShortThresholdIsKept) {
  Expect(1, "8 28 118");
  data.Schwelle = 10.0;
  data.Schwelle2 = 5000.0;
  driver.Wire(1, 2, 2.0);
  driver.Wire(2, 3, 4000.0);
  Check();
  EXPECT_EQ(log.Count("read 10 1 2"), 2);  // 2 Ohm takes a second reading
  EXPECT_GT(log.Count("read 10 3 2"), 0);
  // 1 and 3 were measured with 4002 Ohm; 2 and 3 then took over the 2 Ohm of 1 and 2.
  EXPECT_EQ(Records(),
            "Verbindungstest|1|1||1||\n"
            "Kurzschluss zwischen (1, 2) und 3|5000|2|Ohm|100000000000001|0|\n"
            "Kurzschluss zwischen (1, 2) und 3|5000|2|Ohm|100000000000001|0|\n"
            "Kurzschlusstest|0|2||0||\n");
}

// --- excluded pairs and suspended channels ---

TEST_F(CheckDriver, AnExcludedPairMayBeConnectedOrNot) {
  for (const bool wired : {false, true}) {
    Expect(1, "8 38 118");
    if (wired) driver.Short(1, 2);
    Check();
  }
  EXPECT_EQ(Records(), "Kurzschlusstest|0|0||0||\nKurzschlusstest|0|0||0||\n");
}

TEST_F(CheckDriver, ASuspendedChannelMayCarryAVoltage) {
  Expect(1, "8 49 248");
  driver.Live(2, 24.0);
  driver.Wire(1, 3);
  Check();
  EXPECT_EQ(Records(), "Verbindungstest|1|1||1||\nKurzschlusstest|0|0||0||\n");
  EXPECT_EQ(log.Count("bus 128 0 129") + log.Count("bus 129 0 129"), 0);
}

// --- windows ---

TEST_F(CheckDriver, TheOtherWindowsAreDisabledDuringTheCheckAndEnabledAfterIt) {
  Expect(1, "8 18");
  int looked = 0;
  ui.WithinMessages([&] {
    ++looked;
    EXPECT_FALSE(ui.Enabled(11));
    EXPECT_FALSE(ui.Enabled(12));
    EXPECT_TRUE(ui.Enabled(FakeUserInterface::DialogHandle));
    EXPECT_NE(CheckForm, nullptr);
  });
  Check();
  EXPECT_GT(looked, 5);
  EXPECT_TRUE(ui.Enabled(11));
  EXPECT_TRUE(ui.Enabled(12));
  EXPECT_FALSE(ui.Enabled(13));  // was disabled before, by somebody else
}

TEST_F(CheckDriver, TheExpectationIsLeftAsItWas) {
  Expect(1, "8 28 118 4449");
  data.SetC(1, 0, CellState::Connected, 3.5);
  Check();
  EXPECT_EQ(MatrixText(data), "8 28 118 4449");
  EXPECT_EQ(data.GetR(1, 0), 3.5);
}

TEST_F(CheckDriver, ASecondCheckKnowsNothingOfTheFirst) {
  Expect(1, "8 28");
  Check();
  driver.Wire(1, 2);
  Check();
  EXPECT_TRUE(Records().ends_with("Verbindungstest|1|1||1||\nKurzschlusstest|0|0||0||\n"));
}

}  // namespace
}  // namespace shorttest::testkit
