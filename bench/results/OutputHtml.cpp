#include <algorithm>

#include "bench/results/Outputs.h"
#include "bench/results/PlainNumber.h"
#include "text/Markup.h"

namespace kxbench::results {

namespace {

constexpr char PageHead[] = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'">
<title>)";

constexpr char PageStyle[] = R"(</title>
<style>
body { font: 15px/1.45 "DejaVu Sans", Arial, sans-serif; margin: 1.5em auto; max-width: 62em; padding: 0 1em; color: #1a1a1a; background: #fff; }
.verdict { font-size: 4em; font-weight: bold; line-height: 1.3; padding: 0 .3em; border: .08em solid; margin: 0; }
.pass { color: #0a5c1f; background: #e3f4e6; }
.fail { color: #9b0f0f; background: #fbe6e4; }
.error, .cancelled { color: #6b4300; background: #fdf1d8; }
h2 { font-size: 1.2em; margin: 1.6em 0 .4em; }
.what { font-size: 1.25em; margin: .7em 0; overflow-wrap: anywhere; }
.faults li { font-size: 1.15em; margin: .3em 0; }
table { border-collapse: collapse; width: 100%; }
th, td { text-align: left; vertical-align: top; padding: .2em .6em .2em 0; border-bottom: 1px solid #ccc; overflow-wrap: anywhere; }
td.number, th.number { text-align: right; white-space: nowrap; }
tr.finding td { font-weight: bold; }
tr.finding td:first-child::before { content: "\25B6\00A0"; }
.known th { width: 11em; font-weight: normal; color: #555; }
.drawing svg { max-width: 100%; height: auto; }
section + section { border-top: 3px solid #888; margin-top: 3em; padding-top: 1.5em; }
@media print {
  body { margin: 0; max-width: none; font-size: 10.5pt; }
  .verdict, .finding { print-color-adjust: exact; -webkit-print-color-adjust: exact; }
  section + section { break-before: page; border: 0; }
  tr, li, svg { break-inside: avoid; }
}
</style>
</head>
<body>
)";

std::string UpperCase(std::string_view word) {
  std::string upper(word);
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
  return upper;
}

std::string Row(const std::string& name, const std::string& value) {
  if (value.empty()) return "";
  return "<tr><th scope=\"row\">" + shorttest::MarkupText(name) + "</th><td>" + shorttest::MarkupText(value) +
         "</td></tr>\n";
}

std::string FaultList(const Result& result) {
  std::string text;
  if (!result.error.empty()) text += "<p class=\"what\">" + shorttest::MarkupText(result.error) + "</p>\n";
  if (!result.diagnosed) return text;
  text += "<h2>Faults</h2>\n";
  if (result.faults.empty()) return text + "<p>The diagnosis found no faults.</p>\n";
  text += "<ol class=\"faults\">\n";
  for (const ResultFault& fault : result.faults)
    text += "<li>" + shorttest::MarkupText(fault.text) + "</li>\n";
  return text + "</ol>\n";
}

std::string NumberCell(const std::optional<double>& number) {
  return "<td class=\"number\">" + (number ? PlainNumberText(*number) : "") + "</td>";
}

std::string RecordTable(const Result& result) {
  if (result.records.empty()) return "";
  std::string text =
      "<h2>Records</h2>\n<table class=\"records\">\n<tr><th>Record</th><th class=\"number\">Value</th>"
      "<th class=\"number\">Lower</th><th class=\"number\">Upper</th><th>Unit</th></tr>\n";
  for (const ResultRecord& record : result.records) {
    text += std::string(record.finding ? "<tr class=\"finding\">" : "<tr>") + "<td>" +
            shorttest::MarkupText(record.text) + "</td>" + NumberCell(record.value) +
            NumberCell(record.lower) + NumberCell(record.upper) + "<td>" +
            shorttest::MarkupText(record.unit) + "</td></tr>\n";
  }
  return text + "</table>\n";
}

std::string NetTable(const Result& result) {
  if (result.nets.empty()) return "";
  std::string text =
      "<h2>Expected nets</h2>\n<table class=\"nets\">\n<tr><th>Net</th><th>Findings</th></tr>\n";
  for (const ExpectedNet& net : result.nets) {
    std::string findings;
    for (const std::string& finding : net.findings)
      findings += (findings.empty() ? "" : "<br>") + shorttest::MarkupText(finding);
    text += std::string(findings.empty() ? "<tr>" : "<tr class=\"finding\">") + "<td>" +
            shorttest::MarkupText(net.label) + "</td><td>" + findings + "</td></tr>\n";
  }
  return text + "</table>\n";
}

std::string KnownTable(const Result& result) {
  return "<h2>The check</h2>\n<table class=\"known\">\n" + Row("Serial number", result.serial) +
         Row("Part", result.part) + Row("Operator", result.operatorName) + Row("Station", result.station) +
         Row("Started (UTC)", TimeText(result.started)) + Row("Seconds", PlainNumberText(result.seconds)) +
         Row("Checks until then", result.checks > 1 ? std::to_string(result.checks) : "") +
         Row("Expectation", result.expectation) + Row("SHA-256", result.expectationSha256) +
         Row("Program", result.programVersion) + Row("Plug-in", result.pluginVersion) +
         Row("Driver", result.driver) + Row("Generation", result.driverGeneration) +
         Row("Cards", result.cards) + Row("Id", result.id) + "</table>\n";
}

std::string What(const Result& result) {
  std::string text;
  for (const std::string* part : {&result.serial, &result.part, &result.expectation}) {
    if (!part->empty()) text += (text.empty() ? "" : " \xC2\xB7 ") + *part;
  }
  return text;
}

std::string Section(const ResultPage& page) {
  const Result& result = page.result;
  const std::string word(VerdictWord(result.verdict));
  std::string text = "<section>\n<h1 class=\"verdict " + word + "\">" + UpperCase(word) + "</h1>\n";
  text += "<p class=\"what\">" + shorttest::MarkupText(What(result)) + "</p>\n" + FaultList(result);
  if (!page.drawing.empty()) text += "<h2>Wiring</h2>\n<div class=\"drawing\">" + page.drawing + "</div>\n";
  return text + RecordTable(result) + NetTable(result) + KnownTable(result) + "</section>\n";
}

}  // namespace

std::string ResultsHtml(const std::vector<ResultPage>& pages) {
  std::string title = std::to_string(pages.size()) + " results";
  if (pages.size() == 1) {
    const Result& result = pages.front().result;
    title = UpperCase(VerdictWord(result.verdict)) + " " + What(result);
  }
  std::string text = PageHead + shorttest::MarkupText(title) + PageStyle;
  for (const ResultPage& page : pages) text += Section(page);
  return text + "</body>\n</html>\n";
}

}  // namespace kxbench::results
