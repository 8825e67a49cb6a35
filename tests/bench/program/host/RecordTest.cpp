#include <gtest/gtest.h>

#include "bench/program/host/Record.h"
#include "tests/bench/RowName.h"

namespace kxbench {
namespace {

TEST(Record, IsSplitIntoItsFields) {
  const Record record = ParseRecord("fehlende Verbindung zwischen 3 und 17|0|2500,7|Ohm|10|0|");
  EXPECT_TRUE(record.readable);
  EXPECT_EQ(record.text, "fehlende Verbindung zwischen 3 und 17");
  EXPECT_EQ(record.lower, 0.0);
  EXPECT_EQ(record.value, 2500.7);
  EXPECT_EQ(record.upper, 10.0);
  EXPECT_EQ(record.unit, "Ohm");
  EXPECT_EQ(record.valueText, "2500,7");
}

struct Row {
  const char* name;
  const char* line;
  bool finding;
};

class RecordJudgement : public testing::TestWithParam<Row> {};

TEST_P(RecordJudgement, IsFinding) { EXPECT_EQ(IsFinding(ParseRecord(GetParam().line)), GetParam().finding); }

INSTANTIATE_TEST_SUITE_P(
    Defects, RecordJudgement,
    testing::Values(
        Row{"Voltage", "Spannung an Kanal 12|0,7|5,312|V|||", true},
        Row{"VoltageWithinItsLimit", "Spannung an Kanal 12|0,7|0,6|V|||", true},
        Row{"MissingConnection", "fehlende Verbindung zwischen 3 und 17|0|2500,7|Ohm|10|0|", true},
        Row{"MissingConnectionNotMeasured", "fehlende Verbindung zwischen 3 und 17|0|-1|Ohm|10|0|", true},
        Row{"MissingConnectionBelowTheLimit", "fehlende Verbindung zwischen 3 und 17|0|5|Ohm|10|0|", true},
        Row{"MissingConnectionInfinite", "fehlende Verbindung zwischen 3 und 17|0|INF|Ohm|10|0|", true},
        Row{"ErrorLimit", "fehlende Verbindung zwischen 3 und 17 -  ABBRUCH|0|2500,7|Ohm|10|0|", true},
        Row{"Short", "Kurzschluss zwischen (3, 17) und 20|10|0,42|Ohm|100000000000001|0|", true}),
    RowName<Row>);

INSTANTIATE_TEST_SUITE_P(Summaries, RecordJudgement,
                         testing::Values(Row{"AllConnectionsFound", "Verbindungstest|24|24||24||", false},
                                         Row{"OneMissing", "Verbindungstest|24|23||24||", true},
                                         Row{"OneTooMany", "Verbindungstest|24|25||24||", true},
                                         Row{"NoShorts", "Kurzschlusstest|0|0||0||", false},
                                         Row{"Shorts", "Kurzschlusstest|0|2||0||", true}),
                         RowName<Row>);

INSTANTIATE_TEST_SUITE_P(Limits, RecordJudgement,
                         testing::Values(Row{"AtTheLowerLimit", "Strom|0,5|0,5|A|1,5||", false},
                                         Row{"AtTheUpperLimit", "Strom|0,5|1,5|A|1,5||", false},
                                         Row{"Below", "Strom|0,5|0,49999|A|1,5||", true},
                                         Row{"Above", "Strom|0,5|1,50001|A|1,5||", true},
                                         Row{"DecimalPoint", "Strom|0.5|1.6|A|1.5||", true},
                                         Row{"Exponent", "Strom|1E-6|2,5E-6|A|3e-6||", false},
                                         Row{"Negative", "Temperatur|-40|-41|C|85||", true},
                                         Row{"NoLimits", "Bemerkung||gut||||", false},
                                         Row{"NoValueAndNoLimits", "Bemerkung||||||", false},
                                         Row{"OnlyAnUpperLimit", "Strom||2|A|1,5||", true}),
                         RowName<Row>);

INSTANTIATE_TEST_SUITE_P(Unreadable, RecordJudgement,
                         testing::Values(Row{"Empty", "", true}, Row{"SixFields", "Strom|0|1|A|2|", true},
                                         Row{"EightFields", "Strom|0|1|A|2|||", true},
                                         Row{"ValueIsNoNumber", "Strom|0|eins|A|2||", true},
                                         Row{"ValueIsNotANumber", "Strom|0|NAN|A|2||", true},
                                         Row{"ValueIsMissing", "Strom|0||A|2||", true},
                                         Row{"LimitIsNoNumber", "Strom|x|1|A|2||", true},
                                         Row{"LimitIsInfinite", "Strom|0|1|A|inf||", true}),
                         RowName<Row>);

struct Number {
  const char* name;
  const char* text;
  std::optional<double> value;
};

class NumberText : public testing::TestWithParam<Number> {};
TEST_P(NumberText, IsRead) { EXPECT_EQ(NumberOf(GetParam().text), GetParam().value); }

INSTANTIATE_TEST_SUITE_P(
    Forms, NumberText,
    testing::Values(Number{"Integer", "100000000000001", 100000000000001.0}, Number{"Comma", "0,7", 0.7},
                    Number{"Point", "0.7", 0.7}, Number{"Negative", "-1", -1.0},
                    Number{"Exponent", "1E15", 1e15}, Number{"ExponentWithSign", "1,5E-6", 1.5e-6},
                    Number{"Empty", "", std::nullopt}, Number{"Blank", " 1", std::nullopt},
                    Number{"TwoCommas", "1,2,3", std::nullopt}, Number{"Thousands", "1.234,5", std::nullopt},
                    Number{"Unit", "1V", std::nullopt}, Number{"Nan", "nan", std::nullopt},
                    Number{"Infinity", "INF", std::nullopt}, Number{"Hexadecimal", "0x1", std::nullopt},
                    Number{"TooLarge", "1E999", std::nullopt}),
    RowName<Number>);

TEST(Record, SummaryIsACountWithOneAllowedValue) {
  EXPECT_TRUE(IsSummary(ParseRecord("Verbindungstest|24|23||24||")));
  EXPECT_FALSE(IsSummary(ParseRecord("fehlende Verbindung zwischen 3 und 17|0|2500,7|Ohm|10|0|")));
  EXPECT_FALSE(IsSummary(ParseRecord("nonsense")));
}

}  // namespace
}  // namespace kxbench
