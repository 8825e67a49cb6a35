#include "tests/bench/RowName.h"
#include "tests/bench/program/ProcessFixture.h"

/// Expectation files are looked at before anything is measured with them.

namespace {

using testing::AllOf;
using testing::HasSubstr;

std::string Expectation(const std::string& start, const std::string& end, const std::string& block) {
  return "[BEREICH]\nSTART=" + start + "\nENDE=" + end + "\nWIDERSTAND=10\n" + block;
}

struct RefusedFile {
  const char* name;
  std::string content;
  const char* why;
};

class KxbenchRefuses : public KxbenchProcess, public testing::WithParamInterface<RefusedFile> {
 protected:
  KxbenchRefuses() { folder_.Write("a.dat", GetParam().content); }
  std::string Line(const std::string& where = "") const {
    return "kxbench: " + where + "a.dat: " + GetParam().why + "\n";
  }
};

TEST_P(KxbenchRefuses, ToCheckWithIt) {
  const ProcessResult result = Run({"check", "a.dat"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, Line());
}

TEST_P(KxbenchRefuses, ToRunAScriptThatNamesIt) {
  Does("good.dat", EmptyReport);
  folder_.Write("night.kx", "ShortTest(\"good.dat\")\nshorttest(PROJEKTPFAD + \"a.dat\")\n");
  const ProcessResult result = Run({"run", "night.kx"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.output, "") << "not even its first line ran";
  EXPECT_THAT(result.errors, AllOf(HasSubstr("kxbench: night.kx:2: "), HasSubstr(GetParam().why)));
}

TEST_P(KxbenchRefuses, ToDescribeIt) {
  const ProcessResult result = Run({"info", "a.dat"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, Line());
}

INSTANTIATE_TEST_SUITE_P(
    Files, KxbenchRefuses,
    testing::Values(RefusedFile{"Empty", "", "no expectation: there is no START"},
                    RefusedFile{"OtherIni", "[Scanner]\nRelais1=A1\n", "no expectation: there is no START"},
                    RefusedFile{"Program",
                                std::string("\x7F"
                                            "ELF\x02\x01\0\0[DATEN]\n",
                                            16),
                                "no expectation: there is no START"},
                    RefusedFile{"EndIsNoNumber", Expectation("1", "2x", "[DATEN]\n88\n28\n"),
                                "no expectation: ENDE is no whole number"},
                    RefusedFile{"NoBlock", Expectation("1", "2", ""),
                                "no expectation: there is no data block [DATEN]"},
                    RefusedFile{"Negative", Expectation("-60", "-50", "[DATEN]\n"),
                                "the channels -60 to -50 are not within 1 to 3072"},
                    RefusedFile{"Zero", Expectation("0", "1", "[DATEN]\n88\n28\n"),
                                "the channels 0 to 1 are not within 1 to 3072"},
                    RefusedFile{"BeyondTheLastCard", Expectation("3070", "3073", "[DATEN]\n"),
                                "the channels 3070 to 3073 are not within 1 to 3072"},
                    RefusedFile{"Backwards", Expectation("9", "4", "[DATEN]\n"),
                                "the channels 9 to 4 are none: nothing is expected"},
                    RefusedFile{"NoChannel", Expectation("5", "4", "[DATEN]\n"),
                                "the channels 5 to 4 are none: nothing is expected"},
                    RefusedFile{"TooMany", Expectation("1", "3000", "[DATEN]\n"),
                                "the channels 1 to 3000 are more than 2400"}),
    RowName<RefusedFile>);

struct DoubtfulFile {
  const char* name;
  std::string content;
  const char* why;
};

class KxbenchDoubts : public KxbenchProcess, public testing::WithParamInterface<DoubtfulFile> {
 protected:
  KxbenchDoubts() { folder_.Write("a.dat", GetParam().content + "[FAKE]\n" + EmptyReport); }
};

TEST_P(KxbenchDoubts, WarnsAndChecks) {
  const ProcessResult result = Run({"check", "--format", "records", "a.dat"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "Kurzschlusstest|0|0||0||\n");
  EXPECT_EQ(result.errors, std::string("kxbench: warning: a.dat: ") + GetParam().why + "\n");
}

TEST_P(KxbenchDoubts, RefusesWhenItIsToBeStrict) {
  const ProcessResult result = Run({"check", "--strict", "a.dat"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, std::string("kxbench: a.dat: ") + GetParam().why + " (refused by --strict)\n");
}

TEST_P(KxbenchDoubts, WarnsOnceInAScript) {
  folder_.Write("night.kx", "ShortTest(\"a.dat\")\n");
  const ProcessResult result = Run({"run", "night.kx"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, std::string("kxbench: warning: night.kx:1: a.dat: ") + GetParam().why + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Files, KxbenchDoubts,
    testing::Values(
        DoubtfulFile{"UnknownPairs", Expectation("1", "3", "[DATEN]\n888\n288\n008\n"),
                     "2 of 3 pairs are unknown: neither connected nor open is expected"},
        DoubtfulFile{"NothingConnected", Expectation("1", "2", "[DATEN]\n88\n18\n"),
                     "no connection is expected"},
        DoubtfulFile{"NoState", Expectation("1", "3", "[DATEN]\n888\n288\nA18\n"),
                     "1 cell is no state (damaged file?)"},
        DoubtfulFile{
            "Threshold", "[BEREICH]\nSTART=1\nENDE=2\nWIDERSTAND=2;5\n[DATEN]\n88\n28\n",
            "WIDERSTAND cannot be read: its default counts (is its decimal separator the one set here?)"}),
    RowName<DoubtfulFile>);

TEST_F(KxbenchProcess, FilesOfAScriptAreLookedAtAgainJustBeforeTheirLine) {
  Does("spoils.dat", "truncate later.dat\nrecord Kurzschlusstest|0|0||0||\n");
  Does("later.dat", EmptyReport);
  folder_.Write("night.kx", "ShortTest(\"spoils.dat\")\nShortTest(\"later.dat\")\n");
  const ProcessResult result = Run({"run", "--format", "records", "night.kx"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.output, "Kurzschlusstest|0|0||0||\n");
  EXPECT_EQ(result.errors, "kxbench: night.kx:2: later.dat: no expectation: there is no START\n");
}

TEST_F(KxbenchProcess, CommandsOfOtherNamesTakeWhatTheyLike) {
  folder_.Write("echo.kx", "Echo(\"none.dat\", 1)\n");
  EXPECT_EQ(Run({"run", "echo.kx"}).status, 0);
}

TEST_F(KxbenchProcess, InfoTellsWhatAFileHoldsWithoutThePlugIn) {
  folder_.Write("a.dat",
                "[BEREICH]\nSTART=11\nENDE=15\nWIDERSTAND=10\nWIDERSTAND2=2000\n"
                "[OPTION]\nU_KONTROLLE=1\nLASTRELAISKARTE=2\nLASTRELAIS=3\nTIMEOUT=5000\nMAX ERROR=7\n"
                "[DATEN]\n88888\n28888\n11888\n11388\n44449\n");
  folder_.Write("a.ini", "[Scanner]\nRelais11=A1\n");
  const ProcessResult result = Run({"info", "--plugin", "none.so", "a.dat"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "");
  EXPECT_THAT(result.output, testing::StartsWith("Expectation a.dat\n\n  Saved                   2"));
  EXPECT_THAT(result.output, testing::EndsWith("  Channels                11 to 15\n"
                                               "  Nets                    1\n"
                                               "                          11 (A1), 12\n"
                                               "  Connected to nothing    13, 14\n"
                                               "  Suspended channels      15\n"
                                               "  Pairs                   10\n"
                                               "    connected             1\n"
                                               "    unknown               0\n"
                                               "    excluded              1\n"
                                               "                          13 - 14\n"
                                               "  Lower threshold         10 Ohm\n"
                                               "  Upper threshold         2000 Ohm\n"
                                               "  Voltage control         1 (measured)\n"
                                               "  Terminating resistor    card 2, relay 3\n"
                                               "  Most findings           7\n"));
}

TEST_F(KxbenchProcess, InfoTellsItAsJson) {
  folder_.Write("a.dat", TwoConnectedChannels);
  folder_.Write("a.ini", "[Scanner]\nRelais2=B \"1\"\\\n");
  const ProcessResult result = Run({"info", "--format", "json", "a.dat"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(
      result.output,
      AllOf(testing::StartsWith(
                "{\"format\": \"expectation\", \"version\": 1, \"file\": \"a.dat\", \"saved\": \"2"),
            testing::EndsWith(
                "Z\", \"firstChannel\": 1, \"lastChannel\": 2, \"names\": {\"2\": \"B \\\"1\\\"\\\\\"}, "
                "\"nets\": [[1, 2]], \"unconnected\": [], \"suspended\": [], \"pairs\": 1, "
                "\"connectedPairs\": 1, \"unknownPairs\": 0, \"excludedPairs\": [], "
                "\"lowerThresholdOhm\": 10, \"upperThresholdOhm\": 10, \"voltageControl\": 2, "
                "\"dischargeWaitMs\": 5000, \"terminationCard\": 0, \"terminationRelay\": 0, "
                "\"mostErrors\": 10, \"warnings\": []}\n")));
}

TEST_F(KxbenchProcess, NamesOfTheProjectStandInTheReportAndNotInTheRecords) {
  Does("bad.dat", "record Spannung an Kanal 12|0,7|5,312|V|||\n");
  folder_.Write("Adapter.ini", "[Scanner]\nRelais12=B1-L\n");
  EXPECT_THAT(Run({"--project", "./Adapter", "check", "bad.dat"}).output,
              HasSubstr("  Spannung an Kanal 12 (B1-L)  5,312"));
  EXPECT_EQ(Run({"--project", "./Adapter", "--format", "records", "check", "bad.dat"}).output,
            "Spannung an Kanal 12|0,7|5,312|V|||\n");
}

TEST_F(KxbenchProcess, WithoutADeviceTheLineNamesTheOption) {
  Does("a.dat", "throw BRENMOR_DEVICE is not set: it names the file\n");
  EXPECT_EQ(Run({"--format", "records", "check", "a.dat"}).errors,
            "kxbench: ShortTest(\"a.dat\"): BRENMOR_DEVICE is not set: it names the file; --device FILE "
            "gives it\n");
}

}  // namespace
