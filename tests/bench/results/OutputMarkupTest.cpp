#include <gmock/gmock.h>

#include <pugixml.hpp>

#include "bench/results/Outputs.h"
#include "tests/bench/results/ResultExamples.h"
#include "text/Utf8.h"

namespace kxbench::results {
namespace {

using testing::HasSubstr;
using testing::Not;

struct ParsedXml {
  explicit ParsedXml(const std::string& text) { status = document.load_string(text.c_str()); }
  pugi::xml_document document;
  pugi::xml_parse_result status;
};

std::string SuitePath(const std::string& rest) { return "/testsuites/testsuite" + rest; }

std::size_t Count(const ParsedXml& xml, const std::string& path) {
  return xml.document.select_nodes(SuitePath(path).c_str()).size();
}

std::string Value(const ParsedXml& xml, const std::string& path) {
  return xml.document.select_node(SuitePath(path).c_str()).attribute().value();
}

TEST(OutputJUnit, HasACaseForEachNetAndOneForShorts) {
  const ParsedXml xml(ResultsJUnit({{BrokenWire(), ""}}));
  ASSERT_TRUE(xml.status) << xml.status.description();
  EXPECT_EQ(Count(xml, "/testcase"), 3U);
  EXPECT_EQ(Value(xml, "/@tests"), "3");
  EXPECT_EQ(Value(xml, "/@failures"), "1");
  EXPECT_EQ(Value(xml, "/@errors"), "0");
  EXPECT_EQ(Value(xml, "/testcase[@name='net 1 (A-1), 3 (B-1)']/failure/@message"),
            "fehlende Verbindung zwischen 1 und 3");
  EXPECT_EQ(Count(xml, "/testcase[@name='net 2, 4']/failure"), 0U);
  EXPECT_EQ(Count(xml, "/testcase[@name='no short circuits']/failure"), 0U);
  EXPECT_EQ(Value(xml, "/properties/property[@name='serial']/@value"), "SN-1");
}

TEST(OutputJUnit, ShortCircuitFailsItsOwnCase) {
  Result result = GoodDevice();
  result.verdict = Verdict::Fail;
  result.records.insert(result.records.begin(),
                        {"Kurzschluss zwischen 9 und 10|10|0|Ohm|100|0|", "Kurzschluss zwischen 9 und 10",
                         0.0, 10.0, 100.0, "Ohm", true});
  const ParsedXml xml(ResultsJUnit({{result, ""}}));
  EXPECT_EQ(Value(xml, "/@failures"), "1");
  EXPECT_EQ(Value(xml, "/testcase[@name='no short circuits']/failure/@message"),
            "Kurzschluss zwischen 9 und 10");
}

TEST(OutputJUnit, WrongCountAloneIsAFailureToo) {
  Result result = GoodDevice();
  result.verdict = Verdict::Fail;
  result.records = {{"Verbindungstest|2|1||2||", "Verbindungstest", 1.0, 2.0, 2.0, "", true}};
  EXPECT_EQ(Value(ParsedXml(ResultsJUnit({{result, ""}})), "/testcase/failure/@message"),
            "Verbindungstest: 1, expected 2");
}

TEST(OutputJUnit, CheckThatDidNotRunIsAnErrorAndPassesNothing) {
  const ParsedXml xml(ResultsJUnit({{MissingTester(), ""}}));
  EXPECT_EQ(Value(xml, "/@errors"), "1");
  EXPECT_EQ(Value(xml, "/@skipped"), "2");
  EXPECT_EQ(Value(xml, "/testcase/error/@message"), "card 1 does not answer");
  Result cancelled = MissingTester();
  cancelled.verdict = Verdict::Cancelled;
  EXPECT_EQ(Value(ParsedXml(ResultsJUnit({{cancelled, ""}})), "/testcase/error/@message"),
            "the check was cancelled");
}

TEST(OutputJUnit, IsXmlWhateverTheTexts) {
  const std::string text = ResultsJUnit({{HostileResult(), ""}});
  const ParsedXml xml(text);
  ASSERT_TRUE(xml.status) << xml.status.description();
  EXPECT_THAT(text, Not(HasSubstr("<script")));
  EXPECT_THAT(text, Not(HasSubstr("\x1b")));
  EXPECT_TRUE(shorttest::IsUtf8(text));
}

TEST(OutputJUnit, HoldsASuiteForEachResult) {
  EXPECT_EQ(Count(ParsedXml(ResultsJUnit({{BrokenWire(), ""}, {GoodDevice(), ""}})), ""), 2U);
}

TEST(OutputHtml, SaysTheVerdictAndTheFaults) {
  const std::string page = ResultsHtml({{BrokenWire(), "<svg id=\"drawing\"></svg>"}});
  EXPECT_THAT(page, HasSubstr("<h1 class=\"verdict fail\">FAIL</h1>"));
  EXPECT_THAT(page, HasSubstr("<li>open: 3 (B-1) has come off</li>"));
  EXPECT_THAT(page, HasSubstr("<svg id=\"drawing\"></svg>"));
  EXPECT_THAT(page, HasSubstr("<tr class=\"finding\"><td>fehlende Verbindung zwischen 1 und 3</td>"));
  EXPECT_THAT(page, HasSubstr("SN-1"));
}

TEST(OutputHtml, LoadsNothingAndRunsNothing) {
  const std::string page = ResultsHtml({{HostileResult(), ""}});
  EXPECT_THAT(page, HasSubstr("Content-Security-Policy\" content=\"default-src 'none'"));
  for (const char* forbidden : {"<script", "http:", "https:", "src=", "href="}) {
    EXPECT_THAT(page, Not(HasSubstr(forbidden))) << forbidden;
  }
  EXPECT_TRUE(shorttest::IsUtf8(page));
}

}  // namespace
}  // namespace kxbench::results
