#include "bench/program/commands/ResultsReport.h"

#include <algorithm>

#include "bench/program/output/Table.h"
#include "bench/program/system/Failure.h"
#include "bench/results/SummaryPage.h"

namespace kxbench {

namespace {

constexpr std::size_t NameWidth = 40;

/// A month of days; the page has all of them.
constexpr std::size_t MostDays = 31;

/// A text of a database as a cell.
std::string CellText(const std::string& text) { return text.empty() ? "-" : OneLine(text); }

std::string SecondsCell(const std::optional<double>& seconds) {
  return seconds ? FixedNumber(*seconds, 1) : "-";
}

/// The beginning of an id, which is enough for `show`.
std::string ShortId(const std::string& id) { return id.substr(0, 8); }

std::string TotalsReport(const std::string& what, const std::vector<results::Total>& totals) {
  if (totals.empty()) return "";
  using Align = Table::Align;
  Table table({Align::Left, Align::Right, Align::Right, Align::Right, Align::Right, Align::Right,
               Align::Right, Align::Right},
              NameWidth);
  table.AddRow(
      {what, "devices", "first pass", "after retest", "checks", "errors", "cancelled", "s per check"});
  for (const results::Total& total : totals) {
    table.AddRow({CellText(total.name), std::to_string(total.devices),
                  results::PercentText(total.FirstPassYield()), results::PercentText(total.FinalYield()),
                  std::to_string(total.checks), std::to_string(total.errors), std::to_string(total.cancels),
                  SecondsCell(total.SecondsPerCheck())});
  }
  return "\n" + table.Text(Indent);
}

std::string FaultsReport(const results::ResultSummary& summary) {
  if (summary.faults.empty()) return "";
  using Align = Table::Align;
  Table table({Align::Left, Align::Right, Align::Right, Align::Left}, 60);
  table.AddRow({"fault", "checks", "so far", "part"});
  std::int64_t sum = 0;
  for (const results::FaultCount& fault : summary.faults) {
    sum += fault.checks;
    const double share = static_cast<double>(sum) / static_cast<double>(summary.faultsInAll);
    table.AddRow({CellText(fault.text), std::to_string(fault.checks), results::PercentText(share),
                  CellText(fault.part)});
  }
  return "\n" + table.Text(Indent);
}

std::string SuspectsReport(const results::ResultSummary& summary) {
  std::string text;
  for (const results::SuspectContact& contact : summary.suspects) {
    text += std::string(Indent, ' ') + "channel " + std::to_string(contact.channel) + " of " +
            CellText(contact.part) + " at " + CellText(contact.station) + ": " +
            std::to_string(contact.devices) + " of " + std::to_string(contact.tested) + " devices there, " +
            std::to_string(contact.devicesOthers) + " of " + std::to_string(contact.testedOthers) +
            " elsewhere\n";
  }
  return text.empty() ? ""
                      : "\nThese come back on one station and not on others: look at its adapter before the "
                        "harnesses.\n" +
                            text;
}

std::string RecordRows(const results::Result& result) {
  if (result.records.empty()) return "";
  using Align = Table::Align;
  Table table({Align::Left, Align::Right, Align::Right, Align::Right, Align::Left, Align::Left}, 60);
  table.AddRow({"record", "value", "lower", "upper", "unit", ""});
  const auto number = [](const std::optional<double>& value) { return value ? PlainNumber(*value) : ""; };
  for (const results::ResultRecord& record : result.records) {
    table.AddRow({CellText(record.text), number(record.value), number(record.lower), number(record.upper),
                  OneLine(record.unit), record.finding ? "finding" : ""});
  }
  return "\n" + table.Text(Indent);
}

}  // namespace

std::string ListReport(const std::vector<results::ResultLine>& lines) {
  if (lines.empty()) return "no results\n";
  using Align = Table::Align;
  Table table({Align::Left, Align::Left, Align::Left, Align::Left, Align::Left, Align::Left, Align::Left}, 8);
  table.AddRow({"id", "started (UTC)", "verdict", "serial", "part", "station", "diagnosis"});
  for (const results::ResultLine& line : lines) {
    std::string diagnosis = line.diagnosis ? OneLine(*line.diagnosis) : "-";
    if (CharactersIn(diagnosis) > 60) diagnosis = Wrapped(diagnosis, 57).front() + " ...";
    table.AddRow({ShortId(line.id), line.started.substr(0, 10) + " " + line.started.substr(11, 8),
                  line.verdict, CellText(line.serial), CellText(line.part), CellText(line.station),
                  diagnosis});
  }
  return table.Text(0);
}

std::string ResultReport(const results::Result& result) {
  std::string verdict(results::VerdictWord(result.verdict));
  std::transform(verdict.begin(), verdict.end(), verdict.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
  std::string text = verdict + "\n";
  const auto add = [&](const char* label, const std::string& value) {
    if (!value.empty()) text += Entry(label, OneLine(value));
  };
  add("Id", result.id);
  add("Started (UTC)", results::TimeText(result.started));
  add("Seconds", PlainNumber(result.seconds));
  if (result.checks != 1) add("Checks", std::to_string(result.checks));
  add("Serial number", result.serial);
  add("Part", result.part);
  add("Operator", result.operatorName);
  add("Station", result.station);
  add("Expectation", result.expectation);
  add("SHA-256", result.expectationSha256);
  add("Program", result.programVersion);
  add("Plug-in", result.pluginVersion);
  add("Driver", result.driver);
  add("Generation", result.driverGeneration);
  add("Cards", result.cards);
  add("Error", result.error);
  if (result.diagnosed && result.faults.empty()) add("Diagnosis", "no faults");
  for (const results::ResultFault& fault : result.faults) add("Fault", fault.text);
  return text + RecordRows(result);
}

std::string SummaryReport(const results::ResultSummary& summary) {
  if (summary.all.checks == 0) return "no results\n";
  results::Total all = summary.all;
  all.name = "all";
  std::string text = TotalsReport("", {all}).substr(1);
  text += TotalsReport("part", summary.parts);
  text += TotalsReport("station", summary.stations);
  const std::size_t left = summary.days.size() - std::min(summary.days.size(), MostDays);
  const std::vector<results::Total> days(summary.days.begin() + static_cast<std::ptrdiff_t>(left),
                                         summary.days.end());
  text += TotalsReport("day (UTC)", days);
  if (left > 0) text += "  and " + std::to_string(left) + " days before: see results report\n";
  return text + FaultsReport(summary) + SuspectsReport(summary);
}

std::vector<std::string> FilterWords(const results::ResultFilter& filter) {
  std::vector<std::string> words;
  if (filter.part) words.push_back("Part: " + OneLine(*filter.part));
  if (filter.station) words.push_back("Station: " + OneLine(*filter.station));
  if (!filter.from.empty()) words.push_back("From: " + filter.from);
  if (!filter.to.empty()) words.push_back("To: " + filter.to);
  return words;
}

}  // namespace kxbench
