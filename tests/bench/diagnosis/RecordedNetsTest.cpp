#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/program/check/RecordedNets.h"
#include "bench/program/system/Failure.h"
#include "tests/bench/RowName.h"
#include "tests/bench/diagnosis/GeneratedFaults.h"

namespace kxbench {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

DeviceDiagnosis OfRecords(const std::string& text, const diagnosis::Nets& expected) {
  diagnosis::Observation observation;
  observation.expected = expected;
  return DiagnosisOfRecords(RecordsIn(text), wiring::ExpectationFacts(), observation);
}

struct RecordsRow {
  const char* name;
  const char* records;
  diagnosis::Nets expected;
  const char* measured;
  std::vector<std::string> gaps;
};

class RecordsOfACheck : public testing::TestWithParam<RecordsRow> {};

TEST_P(RecordsOfACheck, TellTheNets) {
  const DeviceDiagnosis result = OfRecords(GetParam().records, GetParam().expected);
  EXPECT_EQ(diagnosis::testkit::Text(result.faults.measured), GetParam().measured);
  EXPECT_EQ(result.gaps, GetParam().gaps);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, RecordsOfACheck,
    testing::Values(RecordsRow{"GoodDevice", "Kurzschlusstest|0|0||0||\n", {{1, 14}, {2}}, "1 14 | 2", {}},
                    RecordsRow{"OpenWire",
                               "fehlende Verbindung zwischen 1 und 14|0|1000000000|Ohm|10|0|\r\n"
                               "Kurzschlusstest|0|0||0||\r\n",
                               {{1, 14}, {2}},
                               "1 | 2 | 14",
                               {}},
                    RecordsRow{"Swap",
                               "fehlende Verbindung zwischen 1 und 14|0|1000000000|Ohm|10|0|\n"
                               "fehlende Verbindung zwischen 4 und 17|0|1000000000|Ohm|10|0|\n"
                               "Kurzschluss zwischen (1, 14) und 17|10|0,12|Ohm|100000000000001|0|\n"
                               "Kurzschluss zwischen (4, 17) und 14|10|0,12|Ohm|100000000000001|0|\n"
                               "Kurzschlusstest|0|2||0||\n",
                               {{1, 14}, {4, 17}},
                               "1 17 | 4 14",
                               {}},
                    RecordsRow{"SwapOfLowerEnds",
                               "fehlende Verbindung zwischen 1 und 2|0|1000000000|Ohm|10|0|\n"
                               "fehlende Verbindung zwischen 3 und 4|0|1000000000|Ohm|10|0|\n"
                               "Kurzschluss zwischen (1, 2) und 4|10|0,12|Ohm|100000000000001|0|\n"
                               "Kurzschluss zwischen (1, 2) und 3|10|0,12|Ohm|100000000000001|0|\n"
                               "Kurzschlusstest|0|2||0||\n",
                               {{1, 2}, {3, 4}},
                               "1 4 | 2 3",
                               {}},
                    RecordsRow{"SwapOfALowerAndAHigherEnd",
                               "fehlende Verbindung zwischen 1 und 2|0|1000000000|Ohm|10|0|\n"
                               "fehlende Verbindung zwischen 3 und 4|0|1000000000|Ohm|10|0|\n"
                               "Kurzschluss zwischen (1, 2) und 3|10|0,12|Ohm|100000000000001|0|\n"
                               "Kurzschluss zwischen (1, 2) und 4|10|0,12|Ohm|100000000000001|0|\n"
                               "Kurzschlusstest|0|2||0||\n",
                               {{1, 2}, {3, 4}},
                               "1 3 | 2 4",
                               {}},
                    RecordsRow{
                        "PairThatItsNetContradicts",
                        "fehlende Verbindung zwischen 1 und 2|0|11|Ohm|10|0|\nKurzschlusstest|0|0||0||\n",
                        {{1, 2, 3}},
                        "1 2 3",
                        {"why 1 and 2 are reported as open: both are connected with others of their net"}},
                    RecordsRow{"LimitOfFindings",
                               "fehlende Verbindung zwischen 1 und 2 -  ABBRUCH|0|1000000000|Ohm|10|0|\n"
                               "Kurzschlusstest|0|0||0||\n",
                               {{1, 2, 3}},
                               "1 | 2 3",
                               {"what the check would have found after its limit of findings"}},
                    RecordsRow{"CutOff",
                               "fehlende Verbindung zwischen 1 und 2|0|1000000000|Ohm|10|0|\n",
                               {{1, 2}},
                               "1 | 2",
                               {"the records of this check are not complete"}}),
    RowName<RecordsRow>);

TEST(RecordOfAVoltage, EndsTheDiagnosis) {
  const DeviceDiagnosis result = OfRecords(
      "Spannung an Kanal 6|0,7|12|V|||\nfehlende Verbindung zwischen 6 und 19|0|-1|Ohm|10|0|\n"
      "Kurzschlusstest|0|0||0||\n",
      {{6, 19}});
  ASSERT_EQ(result.voltages.size(), 1U);
  EXPECT_THAT(result.voltages[0].channels, ElementsAre(6));
  EXPECT_EQ(result.voltages[0].volts, 12);
  EXPECT_THAT(result.faults.findings, IsEmpty());
  EXPECT_EQ(result.Status(), ExitStatus::Findings);
}

std::string RefusalOf(const std::string& records, const diagnosis::Nets& expected) {
  try {
    OfRecords(records, expected);
  } catch (const Failure& failure) {
    return failure.what();
  }
  return "";
}

TEST(RecordsOfAnotherHarness, AreRefused) {
  EXPECT_THAT(
      RefusalOf("fehlende Verbindung zwischen 1 und 99|0|1|Ohm|10|0|\nKurzschlusstest|0|0||0||\n", {{1, 2}}),
      HasSubstr("channel 99"));
  EXPECT_THAT(
      RefusalOf("Kurzschluss zwischen 1 und 3|10|0|Ohm|100000000000001|0|\nKurzschlusstest|0|1||0||\n",
                {{1, 2}, {3}}),
      HasSubstr("no device of this expectation"));
  EXPECT_THAT(RefusalOf("fehlende Verbindung zwischen A und B|0|1|Ohm|10|0|\n", {{1, 2}}),
              HasSubstr("cannot be understood"));
}

}  // namespace
}  // namespace kxbench
