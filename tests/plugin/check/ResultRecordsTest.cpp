// Which records a check sends, in which order.
#include <limits>

#include "plugin/check/ResultRecords.h"
#include "tests/plugin/check/CheckBench.h"

namespace shorttest::testkit {
namespace {

class ResultRecords : public PassBench {
 protected:
  void Measured(const std::string& matrix) { SetMatrix(work, matrix); }
  /// Stores a measured resistance for a pair of channels.
  void Resistance(int channelA, int channelB, double ohm) {
    const int i = channelA - data.von;
    const int j = channelB - data.von;
    work.SetC(i, j, work.Get(i, j), ohm);
  }
  int Report() { return ReportResults(data, work); }
};

TEST_F(ResultRecords, NothingExpectedAndNothingFound) {
  Expect(1, "8 18");
  Measured("8 18");
  EXPECT_EQ(Report(), 0);
  EXPECT_EQ(Records(), "Kurzschlusstest|0|0||0||\n");
}

TEST_F(ResultRecords, AllConnectionsThere) {
  Expect(1, "8 28 228");
  Measured("8 28 228");
  EXPECT_EQ(Report(), 0);
  EXPECT_EQ(Records(),
            "Verbindungstest|3|3||3||\n"
            "Kurzschlusstest|0|0||0||\n");
}

TEST_F(ResultRecords, ProgressComesFirst) {
  Expect(1, "8 18");
  Measured("8 18");
  Report();
  EXPECT_EQ(log.Text(), Bar(1.0) + "send Kurzschlusstest|0|0||0||\n");
}

TEST_F(ResultRecords, ACancelledCheckSendsNothing) {
  Expect(1, "8 28");
  Measured("8 18");
  ui.PressCancelAt(1);
  EXPECT_EQ(Report(), 0);
  EXPECT_EQ(log.Text(), Stopped());
}

TEST_F(ResultRecords, AClosedDialogSendsNothing) {
  Expect(1, "8 28");
  Measured("8 18");
  ui.CloseBoxAt(1);
  EXPECT_EQ(Report(), 0);
  EXPECT_EQ(Records(), "");
}

// --- voltages ---

TEST_F(ResultRecords, AVoltage) {
  Expect(11, "8 18 118");
  work.SuspendChannel(1, 5.312);
  EXPECT_EQ(Report(), 1);
  EXPECT_EQ(Records(),
            "Spannung an Kanal 12|0,7|5,312|V|||\n"
            "Kurzschlusstest|0|0||0||\n");
}

TEST_F(ResultRecords, AVoltageOnAChannelSuspendedInTheExpectationIsNone) {
  Expect(1, "9 48");
  work.SuspendChannel(0, 5.0);
  EXPECT_EQ(Report(), 0);
  EXPECT_EQ(Records(), "Kurzschlusstest|0|0||0||\n");
}

TEST_F(ResultRecords, SuspendedInTheExpectationAloneIsNoFinding) {
  Expect(1, "9 48");
  Measured("8 08");
  EXPECT_EQ(Report(), 0);
  EXPECT_EQ(Records(), "Kurzschlusstest|0|0||0||\n");
}

// --- missing connections ---

TEST_F(ResultRecords, AMissingConnection) {
  Expect(3, "8 28");
  data.Schwelle = 99.0;  // the one of the measurement counts
  work.Schwelle = 10.5;
  Measured("8 18");
  Resistance(3, 4, 2500.7);
  EXPECT_EQ(Report(), 1);
  EXPECT_EQ(Records(),
            "fehlende Verbindung zwischen 3 und 4|0|2500,7|Ohm|10,5|0|\n"
            "Verbindungstest|1|0||1||\n"
            "Kurzschlusstest|0|0||0||\n");
}

TEST_F(ResultRecords, AConnectionThatWasNeverMeasuredIsMissing) {
  Expect(1, "8 28");
  Measured("8 08");
  EXPECT_EQ(Report(), 1);
  EXPECT_EQ(Records(),
            "fehlende Verbindung zwischen 1 und 2|0|-1|Ohm|10|0|\n"
            "Verbindungstest|1|0||1||\n"
            "Kurzschlusstest|0|0||0||\n");
}

TEST_F(ResultRecords, MissingConnectionsGoByTheLowerThenTheHigherChannel) {
  Expect(1, "8 18 218 2128");
  Measured("8 18 118 1118");
  EXPECT_EQ(Report(), 3);
  EXPECT_EQ(Records(),
            "fehlende Verbindung zwischen 1 und 3|0|-1|Ohm|10|0|\n"
            "fehlende Verbindung zwischen 1 und 4|0|-1|Ohm|10|0|\n"
            "fehlende Verbindung zwischen 3 und 4|0|-1|Ohm|10|0|\n"
            "Verbindungstest|3|0||3||\n"
            "Kurzschlusstest|0|0||0||\n");
}

TEST_F(ResultRecords, FoundConnectionsThatNobodyExpectedAreNotCountedAsFound) {
  Expect(1, "8 28 118");
  Measured("8 28 228");
  Report();
  EXPECT_NE(Records().find("Verbindungstest|1|1||1||\n"), std::string::npos);
}

// --- shorts ---

TEST_F(ResultRecords, AShort) {
  Expect(1, "8 18");
  data.Schwelle2 = 77.0;
  work.Schwelle2 = 10.0;
  Measured("8 28");
  Resistance(1, 2, 0.42);
  EXPECT_EQ(Report(), 1);
  EXPECT_EQ(Records(),
            "Kurzschluss zwischen 1 und 2|10|0,42|Ohm|100000000000001|0|\n"
            "Kurzschlusstest|0|1||0||\n");
}

TEST_F(ResultRecords, AShortOfANetIsToldOnceForEachOfItsChannels) {
  // Channels 3 and 17 of 1 to 20 belong together; 20 touches them.
  data = TShortTestData(1, 20);
  for (int i = 0; i < 20; ++i) {
    for (int j = 0; j < i; ++j) data.SetC(i, j, CellState::NotConnected, NoResistance);
  }
  data.SetC(16, 2, CellState::Connected, NoResistance);
  work = data;
  CheckForm = std::make_unique<TShortTestCheckForm>();
  CheckForm->Show();
  work.SetC(16, 2, CellState::Connected, 0.1);
  work.SetC(19, 2, CellState::Connected, 0.42);
  work.SetC(19, 16, CellState::Connected, 0.44);
  EXPECT_EQ(Report(), 2);
  EXPECT_EQ(Records(),
            "Verbindungstest|1|1||1||\n"
            "Kurzschluss zwischen (3, 17) und 20|10|0,42|Ohm|100000000000001|0|\n"
            "Kurzschluss zwischen (3, 17) und 20|10|0,42|Ohm|100000000000001|0|\n"
            "Kurzschlusstest|0|2||0||\n");
}

TEST_F(ResultRecords, TwoNetsShorted) {
  Expect(1, "8 28 118 1128");
  Measured("8 28 228 2228");
  Resistance(1, 3, 3.0);
  Resistance(1, 4, 2.0);
  Resistance(2, 3, 4.0);
  Resistance(2, 4, 5.0);
  EXPECT_EQ(Report(), 2);
  EXPECT_EQ(Records(),
            "Verbindungstest|2|2||2||\n"
            "Kurzschluss zwischen (1, 2) und (3, 4)|10|2|Ohm|100000000000001|0|\n"
            "Kurzschluss zwischen (1, 2) und (3, 4)|10|2|Ohm|100000000000001|0|\n"
            "Kurzschlusstest|0|2||0||\n");
}

TEST_F(ResultRecords, AnExpectedNetThatReachesBeyondTheShortedChannelIsToldFromBelowOnly) {
  Expect(1, "8 18 218");  // 1 and 3 belong together, 2 touches them
  Measured("8 28 228");
  Resistance(1, 2, 0.5);
  Resistance(3, 2, 0.6);
  EXPECT_EQ(Report(), 1);
  EXPECT_EQ(Records(),
            "Verbindungstest|1|1||1||\n"
            "Kurzschluss zwischen (1, 3) und 2|10|0,5|Ohm|100000000000001|0|\n"
            "Kurzschlusstest|0|1||0||\n");
}

TEST_F(ResultRecords, ConnectedThoughExcludedUntestableOrUnknownIsNoShort) {
  Expect(1, "8 38 408");
  Measured("8 28 228");
  EXPECT_EQ(Report(), 0);
  EXPECT_EQ(Records(), "Kurzschlusstest|0|0||0||\n");
}

TEST_F(ResultRecords, AResistanceThatWasNotMeasuredTakesPartInTheMinimum) {
  Expect(1, "8 18 118");
  Measured("8 28 208");
  Resistance(1, 2, 0.5);
  Resistance(1, 3, -1.0);
  EXPECT_EQ(Report(), 1);
  EXPECT_EQ(Records(),
            "Kurzschluss zwischen 1 und (2, 3)|10|-1|Ohm|100000000000001|0|\n"
            "Kurzschlusstest|0|1||0||\n");
}

// --- what only a damaged file can hold ---

TEST_F(ResultRecords, AChannelConnectedToItselfIsNoConnectionAndNoShort) {
  Expect(1, "2 12");
  Measured("8 18");
  EXPECT_EQ(Report(), 0);
  Expect(1, "1 11");
  Measured("2 12");
  EXPECT_EQ(Report(), 0);
  EXPECT_EQ(Records(), "Kurzschlusstest|0|0||0||\nKurzschlusstest|0|0||0||\n");
}

// --- the limit ---

TEST_F(ResultRecords, TheLastRecordAllowedSaysSo) {
  Expect(1, "8 28 118 1128 11118 111128 1111118 11111128 111111118 1111111128");
  data.MaxError = 3;
  Measured("8 18 118 1118 11118 111118 1111118 11111118 111111118 2111111118");
  EXPECT_EQ(Report(), 3);
  EXPECT_EQ(Records(),
            "fehlende Verbindung zwischen 1 und 2|0|-1|Ohm|10|0|\n"
            "fehlende Verbindung zwischen 3 und 4|0|-1|Ohm|10|0|\n"
            "fehlende Verbindung zwischen 5 und 6 -  ABBRUCH|0|-1|Ohm|10|0|\n"
            "Verbindungstest|5|0||5||\n"
            "Kurzschlusstest|0|0||0||\n");
}

TEST_F(ResultRecords, AVoltageMayBeTheLastRecord) {
  Expect(1, "8 18 118 1118");
  data.MaxError = 1;
  work.SuspendChannel(2, 1.5);
  work.SuspendChannel(3, 2.5);
  EXPECT_EQ(Report(), 1);
  EXPECT_EQ(Records(),
            "Spannung an Kanal 3 -  ABBRUCH|0,7|1,5|V|||\n"
            "Kurzschlusstest|0|0||0||\n");
}

TEST_F(ResultRecords, RepeatedShortsUseUpTheLimit) {
  Expect(1, "8 28 228 1118");
  data.MaxError = 2;
  Measured("8 28 228 2228");
  EXPECT_EQ(Report(), 2);
  EXPECT_EQ(Records(),
            "Verbindungstest|3|3||3||\n"
            "Kurzschluss zwischen (1, 2, 3) und 4|10|-1|Ohm|100000000000001|0|\n"
            "Kurzschluss zwischen (1, 2, 3) und 4 -  ABBRUCH|10|-1|Ohm|100000000000001|0|\n"
            "Kurzschlusstest|0|2||0||\n");
}

TEST_F(ResultRecords, TheLimitIsCommonToAllThreeKinds) {
  Expect(1, "8 28 118 1118 11118");
  data.MaxError = 3;
  Measured("8 18 118 1128 11118");
  work.SuspendChannel(4, 9.0);
  EXPECT_EQ(Report(), 3);
  EXPECT_EQ(Records(),
            "Spannung an Kanal 5|0,7|9|V|||\n"
            "fehlende Verbindung zwischen 1 und 2|0|-1|Ohm|10|0|\n"
            "Verbindungstest|1|0||1||\n"
            "Kurzschluss zwischen 3 und 4 -  ABBRUCH|10|-1|Ohm|100000000000001|0|\n"
            "Kurzschlusstest|0|1||0||\n");
}

TEST_F(ResultRecords, ALimitOfZeroOrLessSendsSummariesOnly) {
  for (const int limit : {0, -1, std::numeric_limits<int>::min()}) {
    Expect(1, "8 28 118");
    data.MaxError = limit;
    Measured("8 18 128");
    const std::size_t before = host.Messages().size();
    EXPECT_EQ(Report(), 0);
    EXPECT_EQ(host.Messages().size() - before, 2U);
    EXPECT_EQ(host.Messages()[before].text, u"Verbindungstest|1|0||1||");
    EXPECT_EQ(host.Messages()[before + 1].text, u"Kurzschlusstest|0|0||0||");
  }
}

TEST_F(ResultRecords, TheLimitIsThatOfTheExpectation) {
  Expect(1, "8 28");
  data.MaxError = 1;
  work.MaxError = 5;
  Measured("8 18");
  Report();
  EXPECT_NE(Records().find(" -  ABBRUCH|"), std::string::npos);
}

}  // namespace
}  // namespace shorttest::testkit
