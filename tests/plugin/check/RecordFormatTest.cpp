// How records are written and how they reach the host.
#include <algorithm>

#include "tests/plugin/check/CheckBench.h"

namespace shorttest::testkit {
namespace {

class RecordFormat : public PassBench {
 protected:
  /// The record of one missing connection with this measured resistance.
  std::string RecordOf(double ohm) {
    Expect(1, "8 28");
    SetMatrix(work, "8 18");
    work.SetC(1, 0, CellState::NotConnected, ohm);
    const std::size_t before = host.Messages().size();
    ReportResults(data, work);
    std::string text;
    for (const char16_t unit : host.Messages().at(before).text) text += static_cast<char>(unit);
    return text;
  }
};

struct NumberRow {
  const char* name;
  double value;
  const char* comma;
  const char* point;
};

class RecordNumber : public RecordFormat, public ::testing::WithParamInterface<NumberRow> {};

TEST_P(RecordNumber, FollowsTheLocale) {
  const auto record = [](const std::string& number) {
    return "fehlende Verbindung zwischen 1 und 2|0|" + number + "|Ohm|10|0|";
  };
  EXPECT_EQ(RecordOf(GetParam().value), record(GetParam().comma));
  SetDecimalSeparator(".");
  EXPECT_EQ(RecordOf(GetParam().value), record(GetParam().point));
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, RecordNumber,
    ::testing::Values(NumberRow{"Zero", 0.0, "0", "0"}, NumberRow{"NegativeZero", -0.0, "0", "0"},
                      NumberRow{"Whole", 2500.0, "2500", "2500"}, NumberRow{"NotMeasured", -1.0, "-1", "-1"},
                      NumberRow{"Fraction", 2500.7, "2500,7", "2500.7"},
                      NumberRow{"Negative", -0.25, "-0,25", "-0.25"},
                      NumberRow{"FifteenDigits", 1.0 / 3.0, "0,333333333333333", "0.333333333333333"},
                      NumberRow{"FifteenDigitsRoundedUp", 2.0 / 3.0, "0,666666666666667",
                                "0.666666666666667"},
                      NumberRow{"BinaryNoiseVanishes", 0.1 + 0.2, "0,3", "0.3"},
                      NumberRow{"SmallestFixed", 0.00001, "0,00001", "0.00001"},
                      NumberRow{"OpenPath", 1e9, "1000000000", "1000000000"},
                      NumberRow{"FifteenDigitsBeforeTheSeparator", 123456789012345.0, "123456789012345",
                                "123456789012345"}),
    [](const auto& row) { return row.param.name; });

TEST_F(RecordFormat, NumbersBeyondFixedPointAreScientific) {
  EXPECT_NE(RecordOf(1e15).find("E"), std::string::npos);
  EXPECT_NE(RecordOf(0.000009).find("E"), std::string::npos);
}

TEST_F(RecordFormat, EveryKindFollowsTheLocale) {
  SetDecimalSeparator(".");
  Expect(1, "8 28 118 1118");
  data.Schwelle = work.Schwelle = 2.5;
  data.Schwelle2 = work.Schwelle2 = 12.25;
  SetMatrix(work, "8 18 128 1118");
  work.SetC(2, 0, CellState::NotConnected, 750.0);
  work.SetC(2, 1, CellState::Connected, 0.5);
  work.SuspendChannel(3, 1.25);
  ReportResults(data, work);
  EXPECT_EQ(Records(),
            "Spannung an Kanal 4|0.7|1.25|V|||\n"
            "fehlende Verbindung zwischen 1 und 2|0|-1|Ohm|2.5|0|\n"
            "Verbindungstest|1|0||1||\n"
            "Kurzschluss zwischen (1, 2) und 3|12.25|0.5|Ohm|100000000000001|0|\n"
            "Kurzschlusstest|0|1||0||\n");
}

struct SeparatorRow {
  const char* name;
  const char* utf8;
  const char16_t* record;
};

class RecordSeparator : public RecordFormat, public ::testing::WithParamInterface<SeparatorRow> {};

TEST_P(RecordSeparator, ArrivesAsUtf16) {
  SetDecimalSeparator(GetParam().utf8);
  Expect(1, "8 18");
  work.SuspendChannel(1, 1.5);
  ReportResults(data, work);
  EXPECT_EQ(host.Messages().front().text, GetParam().record);
}

INSTANTIATE_TEST_SUITE_P(
    Lengths, RecordSeparator,
    ::testing::Values(SeparatorRow{"OneByte", ",", u"Spannung an Kanal 2|0,7|1,5|V|||"},
                      SeparatorRow{"TwoBytes", "\u066B", u"Spannung an Kanal 2|0\u066B7|1\u066B5|V|||"},
                      SeparatorRow{"FirstOfThreeBytes", "\u0966",
                                   u"Spannung an Kanal 2|0\u09667|1\u09665|V|||"},
                      SeparatorRow{"ThreeBytes", "\u2396", u"Spannung an Kanal 2|0\u23967|1\u23965|V|||"}),
    [](const auto& row) { return row.param.name; });

TEST_F(RecordFormat, EveryRecordHasSevenFieldsOfWhichTheLastIsEmpty) {
  Expect(1, "8 28 118 1118");
  SetMatrix(work, "8 18 128 1118");
  work.SuspendChannel(3, 1.25);
  ReportResults(data, work);
  ASSERT_EQ(host.Messages().size(), 5U);
  for (const SentMessage& message : host.Messages()) {
    EXPECT_EQ(std::count(message.text.begin(), message.text.end(), u'|'), 6);
    EXPECT_EQ(message.text.back(), u'|');
  }
}

// --- lists of channels ---

std::string ListOver(int von, const std::vector<std::int32_t>& indices) {
  const TShortTestData channels(von, von + 29);
  return ResultReport(channels, channels).FormatChannelList(indices);
}

TEST_F(RecordFormat, AListOfOneIsTheChannelAlone) { EXPECT_EQ(ListOver(1, {19}), "20"); }

TEST_F(RecordFormat, ALongerListStandsInParenthesesInItsOrder) {
  EXPECT_EQ(ListOver(1, {2, 16}), "(3, 17)");
  EXPECT_EQ(ListOver(101, {2, 16, 17}), "(103, 117, 118)");
  EXPECT_EQ(ListOver(1, {16, 2}), "(17, 3)");
}

// --- the smallest resistance of two groups ---

TEST_F(RecordFormat, TheSmallestResistanceOfAllPairs) {
  TShortTestData measured(1, 4);
  measured.SetC(2, 0, CellState::Connected, 3.0);
  measured.SetC(3, 0, CellState::Connected, 7.0);
  measured.SetC(2, 1, CellState::Connected, 2.5);
  measured.SetC(3, 1, CellState::Connected, 9.0);
  measured.SetC(1, 0, CellState::Connected, 0.1);  // within one group: does not count
  const ResultReport report(data, measured);
  EXPECT_EQ(report.MinGroupResistance({0, 1}, {2, 3}), 2.5);
  EXPECT_EQ(report.MinGroupResistance({3, 2}, {1, 0}), 2.5);
  EXPECT_EQ(report.MinGroupResistance({0}, {3}), 7.0);
}

TEST_F(RecordFormat, NotMeasuredIsANumberLikeAnyOther) {
  TShortTestData measured(1, 3);
  measured.SetC(1, 0, CellState::Connected, 3.0);
  const ResultReport report(data, measured);
  EXPECT_EQ(report.MinGroupResistance({0}, {1, 2}), -1.0);
  EXPECT_EQ(report.MinGroupResistance({0}, {2, 1}), -1.0);
}

// --- the way to the host ---

TEST_F(RecordFormat, GoesToTheHostsWindowAsMessage1133) {
  HostMessage = u"Kurzschlusstest|0|0||0||";
  SendHostMessage();
  ASSERT_EQ(host.Messages().size(), 1U);
  EXPECT_EQ(host.Messages()[0].window, host.Handle());
  EXPECT_EQ(host.Messages()[0].message, 1133U);
  EXPECT_EQ(host.Messages()[0].wParam, 0U);
  EXPECT_EQ(host.Messages()[0].text, u"Kurzschlusstest|0|0||0||");
}

TEST_F(RecordFormat, TheWindowIsReadAnewAtEverySend) {
  MessageRecorder other(log);
  HostMessage = u"one";
  SendHostMessage();
  SetMessageWindowHandle(other.Handle());
  HostMessage = u"two";
  SendHostMessage();
  EXPECT_EQ(host.Records(), "one\n");
  EXPECT_EQ(other.Records(), "two\n");
}

TEST_F(RecordFormat, WithoutAWindowARecordGoesNowhere) {
  SetMessageWindowHandle(0);
  HostMessage = u"one";
  EXPECT_NO_THROW(SendHostMessage());
  EXPECT_EQ(host.Records(), "");
}

TEST_F(RecordFormat, TheLastRecordStaysUntilTheNextIsBuilt) {
  Expect(1, "8 28");
  SetMatrix(work, "8 28");
  ReportResults(data, work);
  EXPECT_EQ(HostMessage, u"Kurzschlusstest|0|0||0||");
}

}  // namespace
}  // namespace shorttest::testkit
