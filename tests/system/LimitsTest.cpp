// Defects that the procedure cannot see, each with its reason. A test here that fails has found that a limit
// is gone: then docs/limits.md is out of date.
#include <gmock/gmock.h>

#include "plugin/hardware/Bus.h"
#include "tests/bench/program/TemporaryFolder.h"
#include "tests/system/SystemBench.h"

namespace shorttest::testkit {
namespace {

using ::testing::HasSubstr;

class Limits : public SystemBench {
 protected:
  /// Learns a good device with this description, over channels 1 to 8.
  void LearnFrom(const std::string& good) {
    Connect(good);
    data.U_Control = 1;
    Learn(data);
  }

  std::string CheckWith(const std::string& device) {
    Connect(device);
    return Check(data);
  }

  TShortTestData data{1, 8};
};

// A channel that cannot be switched onto line 0 measures as connected to nothing, and that settles all its
// pairs: what it is shorted to is never measured with it.
TEST_F(Limits, ARelayStuckOpenOnAFreeChannelHidesItsShort) {
  LearnFrom("net 1 2\n");
  EXPECT_EQ(Findings(CheckWith("net 1 2\nwire 3 7\n")), 1);
  EXPECT_EQ(Findings(CheckWith("net 1 2\nwire 3 7\nstuck-open 7 0\n")), 0);
}

// Nor is it in the bundle when the other channel is measured against that.
TEST_F(Limits, ARelayStuckOpenOnTheOtherLineOfAFreeChannelHidesItsShortToo) {
  LearnFrom("net 1 2\n");
  EXPECT_EQ(Findings(CheckWith("net 1 2\nwire 3 7\nstuck-open 3 1\n")), 0);
  EXPECT_EQ(Findings(CheckWith("net 1 2\nwire 3 7\nstuck-open 7 1\n")), 0);
}

TEST_F(Limits, ARelayStuckOpenOnAChannelOfANetIsSeenAsAnOpenWire) {
  LearnFrom("net 1 2\n");
  EXPECT_THAT(CheckWith("net 1 2\nstuck-open 1 0\n"), HasSubstr("fehlende Verbindung zwischen 1 und 2"));
}

// A channel that cannot leave line 1 takes part in every measurement. It belongs to the net of 1, so 1 and 8
// look connected through it.
TEST_F(Limits, ARelayStuckClosedHidesAnOpenWireOfItsNet) {
  LearnFrom("net 1 5 8\n");
  EXPECT_EQ(Findings(CheckWith("net 1 5 8\ndisconnect 8\n")), 2);
  EXPECT_EQ(Findings(CheckWith("net 1 5 8\ndisconnect 8\nstuck-closed 5 1\n")), 0);
}

// A net is measured from each of its channels. Where the way within the net and the short together reach the
// threshold, that channel's reading settles the whole net as isolated.
TEST_F(Limits, AShortAtTheFarEndOfANetIsNotSeen) {
  LearnFrom("wire 1 2 8\n");
  EXPECT_EQ(Findings(CheckWith("wire 1 2 8\nwire 2 3 1\n")), 2);
  EXPECT_EQ(Findings(CheckWith("wire 1 2 8\nwire 2 3 4\n")), 0);  // 4 Ohm at 2, but 12 Ohm from 1
}

// Measured against all others, either net shows the short: 8 Ohm at most. The pair measured first, 1 and 3,
// has both nets' wires in its way, 12 Ohm, and stands for all pairs of the two nets.
TEST_F(Limits, AShortBetweenTheFarEndsOfTwoNetsIsNotSeen) {
  LearnFrom("wire 1 2 4\nwire 3 4 4\n");
  EXPECT_EQ(Findings(CheckWith("wire 1 2 4\nwire 3 4 4\nwire 2 4 1\n")), 2);
  EXPECT_EQ(Findings(CheckWith("wire 1 2 4\nwire 3 4 4\nwire 2 4 4\n")), 0);
}

// Readings that creep settle at once when they creep by less than 1 Ohm.
TEST_F(Limits, AShortWhoseReadingFallsSlowlyIsNotSeen) {
  LearnFrom("net 1 2\n");
  EXPECT_EQ(Findings(CheckWith("net 1 2\nwire 3 7 8\n")), 1);
  EXPECT_EQ(Findings(CheckWith("net 1 2\nwire 3 7 8\ndrift 0.5 1\n")), 1) << "12 Ohm, 9.5, 8.5";
  EXPECT_EQ(Findings(CheckWith("net 1 2\nwire 3 7 8\ndrift 0.5 30\n")), 0) << "12 Ohm, 11.9";
}

// The check compares the voltage with its sign: a channel with a negative one joins the bundle. The next
// channel that is not wired to the bundle has a positive voltage against it.
TEST_F(Limits, ANegativeVoltageIsToldOfTheNextChannelOutsideTheBundle) {
  LearnFrom("net 1 7\n");
  EXPECT_THAT(CheckWith("net 1 7\ncharge 6 24 tau never\n"), HasSubstr("Spannung an Kanal 6|"));
  EXPECT_THAT(CheckWith("net 1 7\ncharge 6 -24 tau never\n"), HasSubstr("Spannung an Kanal 8|"));
}

TEST_F(Limits, ANegativeVoltageWithoutAChannelOutsideTheBundleIsNotSeen) {
  LearnFrom("net 1 7 8\n");
  EXPECT_EQ(Findings(CheckWith("net 1 7 8\ncharge 6 24 tau never\n")), 1);
  EXPECT_EQ(Findings(CheckWith("net 1 7 8\ncharge 6 -24 tau never\n")), 0) << "7 and 8 are wired to 1";
  LearnFrom("net 1 2\n");
  EXPECT_EQ(Findings(CheckWith("net 1 2\ncharge 8 -24 tau never\n")), 0) << "the last channel";
}

// A source that floats shows itself between its own poles alone: when the higher one is measured, and then
// with the lower one's sign.
TEST_F(Limits, AFloatingSourceWithItsPlusPoleOnTheLowerChannelIsNotSeen) {
  LearnFrom("net 1 2\n");
  for (int low = 1; low <= 8; ++low) {
    for (int high = low + 1; high <= 8; ++high) {
      if (high == 2) continue;  // 1 and 2 are one net
      const std::string poles[] = {std::to_string(low) + " ", std::to_string(high) + " "};
      SCOPED_TRACE(poles[0] + poles[1]);
      EXPECT_EQ(Findings(CheckWith("net 1 2\ncapacitor " + poles[1] + poles[0] + "24 tau never\n")), 1);
      EXPECT_EQ(Findings(CheckWith("net 1 2\ncapacitor " + poles[0] + poles[1] + "24 tau never\n")), 0);
    }
  }
}

// Through the insulation the bundle takes on nearly the voltage of the channel that is measured against it.
TEST_F(Limits, APositiveVoltageWithLowInsulationIsNotSeen) {
  LearnFrom("net 1 2\n");
  EXPECT_EQ(Findings(CheckWith("net 1 2\ncharge 6 24 tau never\nleakage 1M\n")), 1);
  EXPECT_EQ(Findings(CheckWith("net 1 2\ncharge 6 24 tau never\nleakage 100k\n")), 0);
}

// The first channel is what all others are compared with: its voltage appears with the opposite sign.
TEST_F(Limits, APositiveVoltageOnTheFirstChannelIsNotSeen) {
  LearnFrom("net 3 4\n");
  EXPECT_EQ(Findings(CheckWith("net 3 4\ncharge 1 24 tau never\n")), 0);
  EXPECT_THAT(CheckWith("net 3 4\ncharge 1 -24 tau never\n"), HasSubstr("Spannung an Kanal 1|"));
}

// At the first comparison the check cannot tell which of the two channels is live.
TEST_F(Limits, AVoltageOnTheSecondChannelIsToldOfTheFirst) {
  LearnFrom("net 3 4\n");
  EXPECT_THAT(CheckWith("net 3 4\ncharge 2 24 tau never\n"), HasSubstr("Spannung an Kanal 1|"));
}

// A channel that is learned with a voltage on it is out of the test, with all its wires.
TEST_F(Limits, WiresOfASuspendedChannelAreNotTested) {
  LearnFrom("net 3 4\ncharge 6 24 tau never\n");
  EXPECT_EQ(data.Get(5, 5), CellState::Suspended);
  EXPECT_EQ(Findings(CheckWith("net 3 4\nwire 6 3\n")), 0);
}

TEST_F(Limits, AShortOfAnExcludedPairIsNotTested) {
  data.SetC(6, 2, CellState::ExcludedPair, NoResistance);
  LearnFrom("net 1 2\n");
  EXPECT_EQ(Findings(CheckWith("net 1 2\nwire 3 7\n")), 0);
}

TEST_F(Limits, AnErrorLimitOfZeroLeavesTheSummaryOfConnectionsAlone) {
  LearnFrom("net 1 2\n");
  data.MaxError = 0;
  EXPECT_EQ(CheckWith("net 1 2\nwire 3 7\ncharge 6 24 tau never\n"),
            "Verbindungstest|1|1||1||\nKurzschlusstest|0|0||0||\n");
  EXPECT_THAT(CheckWith("wire 3 7\n"), HasSubstr("Verbindungstest|1|0||1||"));
}

TEST_F(Limits, AnErrorLimitReachedByOpenWiresHidesTheShorts) {
  LearnFrom("net 1 2\n");
  data.MaxError = 1;
  EXPECT_EQ(CheckWith("wire 3 7\n"),
            "fehlende Verbindung zwischen 1 und 2 -  ABBRUCH|0|1000000000|Ohm|10|0|\n"
            "Verbindungstest|1|0||1||\nKurzschlusstest|0|0||0||\n");
}

TEST_F(Limits, AVoltageHidesTheShorts) {
  LearnFrom("net 1 2\n");
  EXPECT_EQ(Findings(CheckWith("net 1 2\nwire 3 7\ncharge 6 24 tau never\n")), 1);
}

TEST_F(Limits, WithoutVoltageControlNoVoltageIsFound) {
  LearnFrom("net 1 2\n");
  data.U_Control = 0;
  EXPECT_EQ(Findings(CheckWith("net 1 2\ncharge 6 24 tau never\n")), 0);
}

TEST_F(Limits, AnEmptyRangeHasNoFindings) {
  LearnFrom("net 1 2\n");
  data.SetVonBis(1, 0);
  EXPECT_EQ(CheckWith("wire 3 7\n"), "Kurzschlusstest|0|0||0||\n");
}

// The channels that a range names are switched even when there is nothing to test: channel START stands in
// for the first one in use. It is opened again wherever it lies.
TEST_F(Limits, ARangeThatEndsFarBeforeItsStartHasNoFindings) {
  TShortTestData empty(100, 5);
  EXPECT_EQ(empty.Highconnections(), -1);
  Connect("cards 3\nwire 3 7\n");
  EXPECT_EQ(Check(empty), "Kurzschlusstest|0|0||0||\n");
  EXPECT_TRUE(TesterIsSafe());
}

// No card belongs to such a range, so none is set up or reset; the values that its channels put on the bus
// name no relay. The simulated tester refuses them.
TEST_F(Limits, ARangeOfNegativeChannelsIsUpToTheDriver) {
  Connect("net 1 2\n");
  const TShortTestData negative(-60, -50);
  EXPECT_EQ(negative.AnzahlKarten(), 0);
  EXPECT_THROW(Check(negative), TShortTestHWException);
  EXPECT_TRUE(TesterIsSafe());
}

// What damage leaves unreadable is neither expected connected nor expected open.
TEST_F(Limits, AFileWithoutItsDataBlockPassesEverything) {
  LearnFrom("net 1 2\n");
  const TemporaryFolder folder;
  data.SaveExpectationFile(folder.Write("whole.dat", ""));
  const std::string whole = folder.Read("whole.dat");
  const std::string damaged = folder.Write("damaged.dat", whole.substr(0, whole.find("[DATEN]")));
  Connect("wire 3 7\n");
  EXPECT_EQ(Check(TShortTestData(damaged)), "Kurzschlusstest|0|0||0||\n");
}

// Noise as large as the distance to the threshold turns a reading round, and one reading settles a net.
TEST_F(Limits, NoiseAtTheThresholdDecidesEitherWay) {
  LearnFrom("wire 1 2 5\n");
  int found = 0;
  for (int seed = 0; seed < 40; ++seed) {
    found +=
        Findings(CheckWith("wire 1 2 9.9\nresistance-noise 0 0.05\nseed " + std::to_string(seed) + "\n")) > 0;
  }
  EXPECT_GT(found, 0);
  EXPECT_LT(found, 40);
}

}  // namespace
}  // namespace shorttest::testkit
