#include <cstdio>
#include <nlohmann/json.hpp>

#include "bench/results/CsvRow.h"
#include "bench/results/SummaryPage.h"

namespace kxbench::results {

namespace {

using SummaryObject = nlohmann::ordered_json;

SummaryObject OrNull(const std::optional<double>& number) {
  return number ? SummaryObject(*number) : SummaryObject(nullptr);
}

SummaryObject TotalJson(const Total& total) {
  return {{"name", total.name},
          {"checks", total.checks},
          {"passes", total.passes},
          {"fails", total.fails},
          {"errors", total.errors},
          {"cancels", total.cancels},
          {"devices", total.devices},
          {"first_passes", total.firstPasses},
          {"final_passes", total.finalPasses},
          {"first_pass_yield", OrNull(total.FirstPassYield())},
          {"final_yield", OrNull(total.FinalYield())},
          {"seconds", total.seconds},
          {"seconds_per_check", OrNull(total.SecondsPerCheck())},
          {"longest", total.longest}};
}

SummaryObject TotalsJson(const std::vector<Total>& totals) {
  SummaryObject array = SummaryObject::array();
  for (const Total& total : totals) array.push_back(TotalJson(total));
  return array;
}

std::string WholeText(const SummaryObject& object) {
  return object.dump(2, ' ', false, SummaryObject::error_handler_t::replace) + "\n";
}

}  // namespace

std::string SummaryJson(const ResultSummary& summary) {
  SummaryObject faults = SummaryObject::array();
  for (const FaultCount& fault : summary.faults) {
    faults.push_back({{"part", fault.part},
                      {"kind", fault.kind},
                      {"channels", fault.channels},
                      {"text", fault.text},
                      {"checks", fault.checks}});
  }
  SummaryObject suspects = SummaryObject::array();
  for (const SuspectContact& contact : summary.suspects) {
    suspects.push_back({{"part", contact.part},
                        {"station", contact.station},
                        {"channel", contact.channel},
                        {"devices", contact.devices},
                        {"tested", contact.tested},
                        {"devices_others", contact.devicesOthers},
                        {"tested_others", contact.testedOthers}});
  }
  SummaryObject all = TotalJson(summary.all);
  all.erase("name");
  return WholeText({{"format", "summary"},
                    {"version", 1},
                    {"all", std::move(all)},
                    {"parts", TotalsJson(summary.parts)},
                    {"stations", TotalsJson(summary.stations)},
                    {"days", TotalsJson(summary.days)},
                    {"faults_in_all", summary.faultsInAll},
                    {"faults", std::move(faults)},
                    {"suspects", std::move(suspects)}});
}

std::string ListJson(const std::vector<ResultLine>& lines) {
  SummaryObject results = SummaryObject::array();
  for (const ResultLine& line : lines) {
    results.push_back(
        {{"id", line.id},
         {"started", line.started},
         {"seconds", line.seconds},
         {"verdict", line.verdict},
         {"serial", line.serial},
         {"part", line.part},
         {"operator", line.operatorName},
         {"station", line.station},
         {"expectation", line.expectation},
         {"sha256", line.sha256},
         {"diagnosis", line.diagnosis ? SummaryObject(*line.diagnosis) : SummaryObject(nullptr)}});
  }
  return WholeText({{"format", "list"}, {"version", 1}, {"results", std::move(results)}});
}

std::string PercentText(const std::optional<double>& share) {
  if (!share) return "-";
  char text[32];
  std::snprintf(text, sizeof text, "%.1f %%", *share * 100);
  return text;
}

std::string CsvHead() {
  CsvRow row;
  for (const char* name : {"id", "started", "seconds", "verdict", "serial", "part", "operator", "station",
                           "expectation", "sha256", "diagnosis"}) {
    row.Text(name);
  }
  return row.Line();
}

std::string CsvLine(const ResultLine& line) {
  CsvRow row;
  row.Text(line.id)
      .Text(line.started)
      .Number(line.seconds)
      .Text(line.verdict)
      .Text(line.serial)
      .Text(line.part);
  row.Text(line.operatorName).Text(line.station).Text(line.expectation).Text(line.sha256);
  row.Text(line.diagnosis.value_or(""));
  return row.Line();
}

}  // namespace kxbench::results
