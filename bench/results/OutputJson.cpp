#include <nlohmann/json.hpp>

#include "bench/results/Outputs.h"

namespace kxbench::results {

namespace {

using Json = nlohmann::ordered_json;

constexpr int ResultJsonVersion = 1;

Json NumberOrNull(const std::optional<double>& number) { return number ? Json(*number) : Json(nullptr); }

Json RecordsJson(const Result& result) {
  Json records = Json::array();
  int number = 0;
  for (const ResultRecord& record : result.records) {
    records.push_back({{"number", ++number},
                       {"text", record.text},
                       {"value", NumberOrNull(record.value)},
                       {"lower", NumberOrNull(record.lower)},
                       {"upper", NumberOrNull(record.upper)},
                       {"unit", record.unit},
                       {"finding", record.finding},
                       {"line", record.line}});
  }
  return records;
}

Json FaultsJson(const Result& result) {
  Json faults = Json::array();
  for (const ResultFault& fault : result.faults) {
    faults.push_back({{"kind", fault.kind}, {"channels", fault.channels}, {"text", fault.text}});
  }
  return faults;
}

Json NetsJson(const Result& result) {
  Json nets = Json::array();
  for (const ExpectedNet& net : result.nets) {
    nets.push_back({{"channels", net.channels}, {"label", net.label}, {"findings", net.findings}});
  }
  return nets;
}

Json ResultJson(const Result& result) {
  return {{"format", "result"},
          {"version", ResultJsonVersion},
          {"id", result.id},
          {"started", TimeText(result.started)},
          {"seconds", result.seconds},
          {"checks", result.checks},
          {"verdict", VerdictWord(result.verdict)},
          {"serial", result.serial},
          {"part", result.part},
          {"operator", result.operatorName},
          {"station", result.station},
          {"expectation", result.expectation},
          {"sha256", result.expectationSha256},
          {"diagnosis", result.diagnosed ? Json(DiagnosisText(result)) : Json(nullptr)},
          {"program", result.programVersion},
          {"plugin", result.pluginVersion},
          {"driver", result.driver},
          {"generation", result.driverGeneration},
          {"cards", result.cards},
          {"error", result.error},
          {"records", RecordsJson(result)},
          {"faults", FaultsJson(result)},
          {"nets", NetsJson(result)}};
}

std::string Text(const Json& json, int indent) {
  return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

std::string DiagnosisText(const Result& result) {
  if (!result.diagnosed) return "";
  std::string text;
  for (const ResultFault& fault : result.faults) text += (text.empty() ? "" : "\n") + fault.text;
  return text.empty() ? "no fault" : text;
}

std::string ResultsJson(const std::vector<ResultPage>& pages) {
  if (pages.size() == 1) return Text(ResultJson(pages.front().result), 2) + "\n";
  Json results = Json::array();
  for (const ResultPage& page : pages) results.push_back(ResultJson(page.result));
  return Text({{"format", "results"}, {"version", ResultJsonVersion}, {"results", std::move(results)}}, 2) +
         "\n";
}

std::string ResultJsonLine(const Result& result) { return Text(ResultJson(result), -1); }

}  // namespace kxbench::results
