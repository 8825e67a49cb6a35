#include <algorithm>
#include <utility>

#include "bench/results/Outputs.h"
#include "bench/results/PlainNumber.h"
#include "text/Markup.h"

namespace kxbench::results {

namespace {

/// What the plug-in's record of a short circuit begins with.
constexpr char ShortText[] = "Kurzschluss zwischen ";

constexpr char ShortsCase[] = "no short circuits";

std::string Attribute(const std::string& name, const std::string& value) {
  return " " + name + "=\"" + shorttest::MarkupText(value) + "\"";
}

std::string Element(const std::string& name, const std::string& attributes, const std::string& text) {
  return "<" + name + attributes + ">" + shorttest::MarkupText(text) + "</" + name + ">";
}

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += (text.empty() ? "" : "\n") + line;
  return text;
}

/// One test case; what it holds is markup, empty when it passed.
struct TestCase {
  std::string name;
  std::string content;
};

std::string FailureOf(const std::vector<std::string>& findings, const std::string& type) {
  if (findings.empty()) return "";
  return Element("failure", Attribute("message", findings.front()) + Attribute("type", type),
                 Joined(findings));
}

/// Findings that no net shows: short circuits, and what names no channel of a net that is expected.
std::vector<std::string> RemainingFindings(const Result& result) {
  std::vector<std::string> findings;
  const auto shown = [&result](const std::string& text) {
    return std::any_of(result.nets.begin(), result.nets.end(), [&text](const ExpectedNet& net) {
      return std::find(net.findings.begin(), net.findings.end(), text) != net.findings.end();
    });
  };
  bool anyShown = false;
  std::vector<std::string> counts;
  for (const ResultRecord& record : result.records) {
    if (!record.finding) continue;
    const bool isShort = record.text.starts_with(ShortText);
    const bool isCount = record.lower && record.lower == record.upper && record.value;
    anyShown = anyShown || shown(record.text);
    if (isCount) {
      counts.push_back(record.text + ": " + PlainNumberText(*record.value) + ", expected " +
                       PlainNumberText(*record.lower));
    } else if (isShort || !shown(record.text)) {
      findings.push_back(record.text);
    }
  }
  // A wrong count is the sum of the findings; it is one of its own only where they were not reported.
  if (findings.empty() && !anyShown) findings = std::move(counts);
  if (findings.empty() && !anyShown && result.verdict == Verdict::Fail)
    findings.emplace_back("the check failed");
  return findings;
}

/// Whether the check has come to its end, so that there is something to say of each net.
bool HasEnded(const Result& result) {
  return result.verdict == Verdict::Pass || result.verdict == Verdict::Fail;
}

std::vector<TestCase> CasesOf(const Result& result) {
  std::vector<TestCase> cases;
  cases.reserve(result.nets.size() + 1);
  for (const ExpectedNet& net : result.nets) {
    cases.push_back({"net " + net.label, HasEnded(result) ? FailureOf(net.findings, "net") : "<skipped/>"});
  }
  if (HasEnded(result)) {
    cases.push_back({ShortsCase, FailureOf(RemainingFindings(result), "short")});
  } else {
    const std::string why = result.verdict == Verdict::Cancelled ? "the check was cancelled" : result.error;
    cases.push_back({ShortsCase, Element("error",
                                         Attribute("message", why) +
                                             Attribute("type", std::string(VerdictWord(result.verdict))),
                                         why)});
  }
  return cases;
}

std::string Properties(const Result& result) {
  const std::pair<const char*, std::string> all[] = {
      {"id", result.id},
      {"verdict", std::string(VerdictWord(result.verdict))},
      {"serial", result.serial},
      {"part", result.part},
      {"operator", result.operatorName},
      {"station", result.station},
      {"expectation", result.expectation},
      {"sha256", result.expectationSha256},
      {"diagnosis", DiagnosisText(result)},
      {"program", result.programVersion},
      {"plugin", result.pluginVersion},
      {"driver", result.driver},
      {"generation", result.driverGeneration},
      {"cards", result.cards},
  };
  std::string text = "    <properties>\n";
  for (const auto& [name, value] : all) {
    if (value.empty()) continue;
    text += "      <property" + Attribute("name", name) + Attribute("value", value) + "/>\n";
  }
  return text + "    </properties>\n";
}

std::string Suite(const Result& result, std::size_t number) {
  const std::vector<TestCase> cases = CasesOf(result);
  const auto count = [&cases](const std::string& start) {
    return std::to_string(std::count_if(cases.begin(), cases.end(),
                                        [&](const TestCase& one) { return one.content.starts_with(start); }));
  };
  const std::string className = result.part.empty() ? result.expectation : result.part;
  std::string name = className;
  if (!result.serial.empty()) name += (name.empty() ? "" : " ") + result.serial;
  std::string text =
      "  <testsuite" + Attribute("package", className) + Attribute("id", std::to_string(number)) +
      Attribute("name", name) + Attribute("timestamp", TimeText(result.started).substr(0, 19)) +
      Attribute("hostname", result.station.empty() ? "unknown" : result.station) +
      Attribute("tests", std::to_string(cases.size())) + Attribute("failures", count("<failure")) +
      Attribute("errors", count("<error")) + Attribute("skipped", count("<skipped")) +
      Attribute("time", PlainNumberText(result.seconds)) + ">\n" + Properties(result);
  for (const TestCase& one : cases) {
    text += "    <testcase" + Attribute("name", one.name) + Attribute("classname", className) +
            Attribute("time", "0");
    text += one.content.empty() ? "/>\n" : ">" + one.content + "</testcase>\n";
  }
  std::vector<std::string> records;
  for (const ResultRecord& record : result.records) records.push_back(record.line);
  return text + "    " + Element("system-out", "", Joined(records)) + "\n    " +
         Element("system-err", "", result.error) + "\n  </testsuite>\n";
}

}  // namespace

std::string ResultsJUnit(const std::vector<ResultPage>& pages) {
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n";
  for (std::size_t i = 0; i < pages.size(); ++i) text += Suite(pages[i].result, i);
  return text + "</testsuites>\n";
}

}  // namespace kxbench::results
