#include <csignal>

#include "tests/bench/program/ProcessFixture.h"

/// The results of checks, in files.

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr char Good[] = "record Verbindungstest|1|1||1||\nrecord Kurzschlusstest|0|0||0||\n";
constexpr char Broken[] =
    "record fehlende Verbindung zwischen 1 und 2|0|-1|Ohm|10|0|\nrecord Verbindungstest|1|0||1||\n"
    "record Kurzschlusstest|0|0||0||\n";

class KxbenchResult : public KxbenchProcess {};

TEST_F(KxbenchResult, HoldsWhatWasSaidAndFound) {
  Does("bad.dat", Broken);
  const ProcessResult result =
      Run({"check",     "bad.dat",     "--serial",    "S1",          "--part",
           "P",         "--operator",  "Eva",         "--station",   "bench 3",
           "--output",  "json:a.json", "--output",    "junit:a.xml", "--output",
           "csv:a.csv", "--output",    "html:a.html", "--output",    "jsonl:a.jsonl"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, "");
  const std::string json = folder_.Read("a.json");
  for (const char* part :
       {R"("verdict": "fail")", R"("serial": "S1")", R"("operator": "Eva")", R"("station": "bench 3")",
        R"("expectation": "bad.dat")", R"("kind": "open")", R"("label": "1, 2")"}) {
    EXPECT_THAT(json, HasSubstr(part));
  }
  EXPECT_THAT(folder_.Read("a.xml"), HasSubstr("tests=\"2\" failures=\"1\""));
  EXPECT_THAT(folder_.Read("a.csv"), HasSubstr("bench 3,bad.dat,"));
  EXPECT_THAT(folder_.Read("a.html"), HasSubstr(">FAIL</h1>"));
  EXPECT_THAT(folder_.Read("a.jsonl"), StartsWith(R"({"format":"result")"));
}

TEST_F(KxbenchResult, ChangesNothingOnStandardOutput) {
  Does("bad.dat", Broken);
  const ProcessResult plain = Run({"check", "--format", "records", "bad.dat"});
  const ProcessResult kept = Run({"check", "--format", "records", "bad.dat", "--output", "json:a.json"});
  EXPECT_EQ(kept.output, plain.output);
  EXPECT_EQ(kept.status, plain.status);
}

TEST_F(KxbenchResult, OfAScriptIsOneForEachCheck) {
  Does("good.dat", Good);
  Does("bad.dat", Broken);
  folder_.Write("night.kx", "ShortTest(\"good.dat\")\nEcho(\"no check\", 1)\nShortTest(\"bad.dat\")\n");
  Run({"run", "night.kx", "--output", "junit:a.xml", "--output", "jsonl:a.jsonl"});
  const std::string xml = folder_.Read("a.xml");
  EXPECT_THAT(xml, AllOf(HasSubstr("id=\"0\" name=\"good.dat\""), HasSubstr("id=\"1\" name=\"bad.dat\"")));
  EXPECT_THAT(xml, Not(HasSubstr("id=\"2\"")));
}

TEST_F(KxbenchResult, OfACheckThatCouldNotRunIsAnError) {
  Does("throws.dat", "throw bus error\n");
  EXPECT_EQ(Run({"check", "throws.dat", "--output", "json:a.json"}).status, 2);
  EXPECT_THAT(folder_.Read("a.json"), AllOf(HasSubstr("\"verdict\": \"error\""), HasSubstr("bus error")));
  EXPECT_EQ(Run({"check", "none.dat", "--output", "json:b.json"}).status, 2);
  EXPECT_THAT(folder_.Read("b.json"),
              AllOf(HasSubstr("\"verdict\": \"error\""), HasSubstr("none.dat: cannot be read")));
}

TEST_F(KxbenchResult, OfACancelledCheckSaysSo) {
  Does("cancel.dat", "cancel\n");
  EXPECT_EQ(Run({"check", "cancel.dat", "--output", "json:a.json"}).status, 3);
  EXPECT_THAT(folder_.Read("a.json"), HasSubstr("\"verdict\": \"cancelled\""));
}

TEST_F(KxbenchResult, ThatCannotBeKeptIsNoPass) {
  // The file's folder goes away during the check.
  Does("good.dat", std::string("truncate gone/a.json\n") + Good);
  std::filesystem::create_directory(folder_.Path() / "gone");
  folder_.Write("gone/a.json/inside", "");
  const ProcessResult early = Run({"check", "good.dat", "--output", "json:gone/a.json"});
  EXPECT_EQ(early.status, 2) << "known before the check";
  EXPECT_THAT(early.errors, HasSubstr("--output: gone/a.json cannot be saved: this is a folder"));
  const ProcessResult late = Run({"check", "good.dat", "--output", "json:none-{id}/a.json"});
  EXPECT_EQ(late.status, 2);
  EXPECT_THAT(late.output, AllOf(HasSubstr("ERROR: result not stored: "), Not(HasSubstr("PASS"))));
  EXPECT_THAT(late.errors, HasSubstr("error: result not stored: "));
  const ProcessResult records =
      Run({"check", "--format", "records", "good.dat", "--output", "json:none-{id}/a.json"});
  EXPECT_EQ(records.status, 2);
  EXPECT_EQ(records.output, "") << "records without a finding would be read as a pass";
}

TEST_F(KxbenchResult, OptionThatIsWrongIsRefused) {
  Does("good.dat", Good);
  EXPECT_THAT(Run({"check", "good.dat", "--output", "xml:a"}).errors,
              HasSubstr("expected json, jsonl, junit"));
  EXPECT_THAT(Run({"check", "good.dat", "--output", "json:a", "--output", "csv:a"}).errors,
              HasSubstr("is given twice"));
  EXPECT_THAT(Run({"check", "good.dat", "--repeat", "0"}).errors,
              HasSubstr("--repeat: expected a number from 1"));
}

TEST_F(KxbenchResult, OfASeriesIsItsFirstFindings) {
  Does("bad.dat", Broken);
  const ProcessResult result = Run({"check", "bad.dat", "--repeat", "3", "--output", "jsonl:a.jsonl"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.output, AllOf(HasSubstr("FAIL: 1 finding\n"), HasSubstr("3 checks in "),
                                   HasSubstr("  in 3 checks: fehlende Verbindung zwischen 1 und 2\n")));
  EXPECT_THAT(result.errors, StartsWith("kxbench: findings in check 1, after "));
  const std::string lines = folder_.Read("a.jsonl");
  EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 1);
}

TEST_F(KxbenchResult, OfASeriesWithoutFindingsIsItsLastCheck) {
  Does("good.dat", Good);
  const ProcessResult result = Run({"check", "good.dat", "--repeat", "3", "--output", "json:a.json"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, HasSubstr("3 checks in "));
  EXPECT_THAT(folder_.Read("a.json"), AllOf(HasSubstr("\"verdict\": \"pass\""), HasSubstr("\"checks\": 3")));
}

TEST_F(KxbenchResult, UntilFaultStopsAtTheFirst) {
  Does("bad.dat", Broken);
  const ProcessResult result = Run({"check", "bad.dat", "--until-fault", "--format", "records"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 3) << "the records of one check";
  EXPECT_THAT(result.errors, HasSubstr("1 check in "));
}

}  // namespace
