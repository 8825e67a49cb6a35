#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/program/check/Report.h"
#include "tests/bench/program/TemporaryFolder.h"

namespace kxbench {
namespace {

class TextOutput : public Output {
 public:
  void Write(const std::string& text) override { written += text; }
  std::string written;
};

ScriptStep Step(const std::string& where = "") { return {where, "ShortTest(\"a.dat\")", nullptr, nullptr}; }

StepResult Result(const std::vector<std::string>& lines, StepEnd end = StepEnd::Finished) {
  StepResult result;
  result.end = end;
  for (const std::string& line : lines) result.records.push_back(ParseRecord(line));
  return result;
}

TEST(Report, OfAGoodDevice) {
  EXPECT_EQ(StepReport(Step(), Result({"Verbindungstest|24|24||24||", "Kurzschlusstest|0|0||0||"}), false),
            "ShortTest(\"a.dat\")\n"
            "\n"
            "  Verbindungstest  24    expected 24\n"
            "  Kurzschlusstest   0    expected 0\n"
            "\n"
            "PASS: no findings\n");
}

TEST(Report, OfEveryKindOfFinding) {
  EXPECT_EQ(StepReport(
                Step("night.kx:2"),
                Result({"Spannung an Kanal 12|0,7|5,312|V|||",
                        "fehlende Verbindung zwischen 3 und 17|0|2500,7|Ohm|10|0|",
                        "fehlende Verbindung zwischen 3 und 18|0|-1|Ohm|10|0|", "Verbindungstest|24|22||24||",
                        "Kurzschluss zwischen (3, 17) und 20|10|0,42|Ohm|100000000000001|0|",
                        "Kurzschluss zwischen (3, 17) und 20|10|0,42|Ohm|100000000000001|0|",
                        "Kurzschlusstest|0|2||0||"}),
                false),
            "night.kx:2: ShortTest(\"a.dat\")\n"
            "\n"
            "  Finding                                 Value  Lower  Upper  Unit\n"
            "  Spannung an Kanal 12                    5,312    0,7      -  V\n"
            "  fehlende Verbindung zwischen 3 und 17  2500,7      0     10  Ohm\n"
            "  fehlende Verbindung zwischen 3 und 18    none      0     10  Ohm\n"
            "  Kurzschluss zwischen (3, 17) und 20      0,42     10      -  Ohm   (2 times)\n"
            "\n"
            "  Verbindungstest  22    expected 24\n"
            "  Kurzschlusstest   2    expected 0\n"
            "\n"
            "FAIL: 4 findings\n");
}

class NamedReport : public testing::Test {
 protected:
  wiring::ChannelNames Names() const {
    return wiring::ChannelNames(folder_.Write("Trailer.ini", "[Scanner]\nRelais1=A1-L\nRelais14=B1-L\n"));
  }

  TemporaryFolder folder_;
};

TEST_F(NamedReport, CarriesTheNamesBesideTheNumbers) {
  EXPECT_EQ(WithChannelNames("fehlende Verbindung zwischen 1 und 14 -  ABBRUCH", Names()),
            "fehlende Verbindung zwischen 1 (A1-L) und 14 (B1-L) -  ABBRUCH");
  EXPECT_EQ(WithChannelNames("Kurzschluss zwischen (1, 14, 141) und 2", Names()),
            "Kurzschluss zwischen (1 (A1-L), 14 (B1-L), 141) und 2");
  EXPECT_EQ(WithChannelNames("Spannung an Kanal 14", Names()), "Spannung an Kanal 14 (B1-L)");
  EXPECT_EQ(WithChannelNames("Strom an Kanal 14", Names()), "Strom an Kanal 14") << "no record of a check";
}

TEST_F(NamedReport, NamesTheChannelsOfFindings) {
  EXPECT_THAT(StepReport(Step(), Result({"Spannung an Kanal 1|0,7|5,312|V|||", "Kurzschlusstest|0|0||0||"}),
                         false, Names()),
              testing::HasSubstr("  Spannung an Kanal 1 (A1-L)  5,312    0,7      -  V\n"));
}

TEST(Report, CountsAWrongSumWhereItsFindingsWereNotReported) {
  EXPECT_THAT(StepReport(Step(), Result({"Verbindungstest|24|22||24||", "Kurzschlusstest|0|0||0||"}), false),
              testing::EndsWith("FAIL: 1 finding\n"));
}

TEST(Report, ShowsARecordThatCannotBeRead) {
  EXPECT_THAT(StepReport(Step(), Result({"Kurzschlusstest|0"}), false),
              testing::AllOf(testing::HasSubstr("  record that cannot be read: Kurzschlusstest|0\n"),
                             testing::EndsWith("FAIL: 1 finding\n")));
}

TEST(Report, ShowsOtherValuesWithTheirLimits) {
  EXPECT_THAT(StepReport(Step(), Result({"Strom|0,5|0,7|A|1,5||", "Bemerkung||gut||||"}), false),
              testing::HasSubstr("  Strom      0,7  A  limits 0,5 to 1,5\n"
                                 "  Bemerkung  gut\n"));
}

TEST(Report, WrapsLongNets) {
  std::string net = "(1";
  for (int channel = 2; channel <= 40; ++channel) net += ", " + std::to_string(channel);
  const std::string report = StepReport(
      Step(), Result({"Kurzschluss zwischen " + net + ") und 41|10|0,42|Ohm|100000000000001|0|"}), false);
  for (std::size_t begin = 0; begin < report.size();) {
    const std::size_t end = report.find('\n', begin);
    EXPECT_LE(end - begin, 100U);
    begin = end + 1;
  }
}

TEST(Report, OfStepsThatDidNotFinish) {
  EXPECT_THAT(StepReport(Step(), Result({}, StepEnd::Cancelled), false),
              testing::EndsWith("CANCELLED: the check was stopped\n"));
  EXPECT_THAT(StepReport(Step(), Result({}, StepEnd::Silent), false),
              testing::EndsWith("CANCELLED: the check ended without a record: it was not finished\n"));
  StepResult failed = Result({}, StepEnd::Failed);
  failed.failure = "bus error";
  EXPECT_EQ(StepReport(Step(), failed, false), "ShortTest(\"a.dat\")\n\nERROR: bus error\n");
}

TEST(Report, ColoursTheVerdictAlone) {
  EXPECT_THAT(StepReport(Step(), Result({"Kurzschlusstest|0|0||0||"}), true),
              testing::EndsWith("\n\x1b[1;32mPASS\x1b[0m: no findings\n"));
  EXPECT_THAT(StepReport(Step(), Result({"Kurzschlusstest|0|1||0||"}), true),
              testing::EndsWith("\n\x1b[1;31mFAIL\x1b[0m: 1 finding\n"));
}

TEST(RunVerdict, SumsUpTheSteps) {
  constexpr ExitStatus good = ExitStatus::NoFindings;
  constexpr ExitStatus bad = ExitStatus::Findings;
  EXPECT_EQ(RunVerdict({good, good}, 0, false), "PASS: 2 of 2 commands without findings\n");
  EXPECT_EQ(RunVerdict({good, bad}, 0, false), "FAIL: 1 of 2 commands without findings\n");
  EXPECT_EQ(RunVerdict({bad, ExitStatus::Cancelled}, 1, false),
            "CANCELLED: 0 of 3 commands without findings, 1 not run\n");
  EXPECT_EQ(RunVerdict({good}, 1, false), "CANCELLED: 1 of 2 commands without findings, 1 not run\n");
  EXPECT_EQ(RunVerdict({ExitStatus::Failed}, 1, false),
            "ERROR: 0 of 2 commands without findings, 1 not run\n");
}

TEST(ReportPrinter, PrintsStepsAndTheVerdictOverSeveral) {
  TextOutput output;
  int cleared = 0;
  ReportPrinter printer(output, false, wiring::ChannelNames(), [&] { ++cleared; });
  const StepResult good = Result({"Kurzschlusstest|0|0||0||"});
  printer.StepEnded(Step("s:1"), good);
  printer.StepEnded(Step("s:2"), good);
  printer.RunEnded({ExitStatus::NoFindings, ExitStatus::NoFindings}, 0);
  EXPECT_EQ(output.written,
            "s:1: ShortTest(\"a.dat\")\n\n  Kurzschlusstest  0    expected 0\n\nPASS: no findings\n"
            "\n"
            "s:2: ShortTest(\"a.dat\")\n\n  Kurzschlusstest  0    expected 0\n\nPASS: no findings\n"
            "\n"
            "PASS: 2 of 2 commands without findings\n");
  EXPECT_EQ(cleared, 3);
}

TEST(ReportPrinter, LeavesOutTheVerdictOverOne) {
  TextOutput output;
  ReportPrinter printer(output, false, wiring::ChannelNames(), [] {});
  printer.RunEnded({ExitStatus::NoFindings}, 0);
  EXPECT_EQ(output.written, "");
}

TEST(RecordPrinter, PrintsTheRecordsOfAStepAtOnceWhenItHasEnded) {
  TextOutput output;
  int cleared = 0;
  RecordPrinter printer(output, [&] { ++cleared; });
  printer.StepEnded(Step(), Result({"Verbindungstest|2|2||2||", "Kurzschlusstest|0|0||0||"}));
  EXPECT_EQ(output.written, "Verbindungstest|2|2||2||\nKurzschlusstest|0|0||0||\n");
  EXPECT_EQ(cleared, 1);
  printer.StepEnded(Step(), Result({}));
  printer.RunEnded({ExitStatus::NoFindings, ExitStatus::NoFindings}, 0);
  EXPECT_EQ(output.written, "Verbindungstest|2|2||2||\nKurzschlusstest|0|0||0||\n");
  EXPECT_EQ(cleared, 1);
}

}  // namespace
}  // namespace kxbench
