#include <nlohmann/json.hpp>

#include "bench/comparison/WiringComparison.h"

namespace kxbench::comparison {

namespace {

using ReportJson = nlohmann::ordered_json;

constexpr int ComparisonJsonVersion = 1;

/// Of a long list so many are named.
constexpr std::size_t MostNamed = 12;

diagnosis::ChannelLabel LabelOf(const WiringComparison& comparison) {
  return [&comparison](diagnosis::Channel channel) { return comparison.labels.at(channel); };
}

std::string NetsIn(const diagnosis::Nets& nets, const WiringComparison& comparison) {
  std::string text;
  for (const diagnosis::Net& net : nets) {
    std::string members;
    for (const diagnosis::Channel channel : net) {
      members += (members.empty() ? "" : ", ") + comparison.shortLabels.at(channel);
    }
    text += (text.empty() ? "" : " ") + (net.size() == 1 ? members : "(" + members + ")");
  }
  return text;
}

std::string ListLine(const std::string& what, const std::vector<std::string>& items) {
  if (items.empty()) return "";
  std::string text;
  for (std::size_t i = 0; i < items.size() && i < MostNamed; ++i) text += (i == 0 ? "" : ", ") + items[i];
  if (items.size() > MostNamed) text += " and " + std::to_string(items.size() - MostNamed) + " more";
  return "  " + what + ": " + text + "\n";
}

std::string BothSides(const std::string& what, const OneSided& items, const WiringComparison& comparison) {
  return ListLine(what + " in " + comparison.a + " alone", items.a) +
         ListLine(what + " in " + comparison.b + " alone", items.b);
}

std::string CountLine(const std::string& what, const std::string& file, std::size_t pairs,
                      const std::string& why) {
  if (pairs == 0) return "";
  return "  " + what + " in " + file + ": " + std::to_string(pairs) + (pairs == 1 ? " pair, " : " pairs, ") +
         why + "\n";
}

std::string PairLines(const std::string& what, const PairCounts& pairs, const std::string& why,
                      const WiringComparison& comparison) {
  return CountLine(what, comparison.a, pairs.a, why) + CountLine(what, comparison.b, pairs.b, why);
}

std::string FaultLines(const WiringComparison& comparison) {
  const diagnosis::ChannelLabel label = LabelOf(comparison);
  std::string text;
  for (const diagnosis::Finding& finding : comparison.faults.findings) {
    for (const diagnosis::Fault& fault : finding.explanations.front()) {
      text += "  " + diagnosis::FaultText(fault, label) + "\n";
    }
    for (const std::string& line : diagnosis::AlternativeTexts(finding, label)) text += "    " + line + "\n";
    text += "    " + comparison.b + " has " + NetsIn(finding.expected, comparison) + "; " + comparison.a +
            " has " + NetsIn(finding.measured, comparison) + "\n";
  }
  return text;
}

ReportJson NetsJson(const diagnosis::Nets& nets, const WiringComparison& comparison) {
  ReportJson list = ReportJson::array();
  for (const diagnosis::Net& net : nets) {
    ReportJson members = ReportJson::array();
    for (const diagnosis::Channel channel : net) members.push_back(comparison.shortLabels.at(channel));
    list.push_back(std::move(members));
  }
  return list;
}

ReportJson SidesJson(const OneSided& items) {
  ReportJson object;
  object["a"] = items.a;
  object["b"] = items.b;
  return object;
}

ReportJson CountsJson(const PairCounts& pairs) {
  ReportJson object;
  object["a"] = pairs.a;
  object["b"] = pairs.b;
  return object;
}

ReportJson FindingJson(const diagnosis::Finding& finding, const WiringComparison& comparison) {
  const diagnosis::ChannelLabel label = LabelOf(comparison);
  ReportJson faults = ReportJson::array();
  for (const diagnosis::Fault& fault : finding.explanations.front()) {
    ReportJson one;
    one["kind"] = diagnosis::KindWord(fault.kind);
    ReportJson channels = ReportJson::array();
    for (const diagnosis::Channel channel : fault.channels) {
      channels.push_back(comparison.shortLabels.at(channel));
    }
    one["channels"] = std::move(channels);
    one["text"] = diagnosis::FaultText(fault, label);
    faults.push_back(std::move(one));
  }
  ReportJson object;
  object["faults"] = std::move(faults);
  object["alternatives"] = diagnosis::AlternativeTexts(finding, label);
  object["a"] = NetsJson(finding.measured, comparison);
  object["b"] = NetsJson(finding.expected, comparison);
  return object;
}

}  // namespace

std::string ComparisonReport(const WiringComparison& comparison) {
  std::string text =
      comparison.a + " against " + comparison.b + (comparison.byChannel ? "" : ", pin by pin") + ":\n";
  text += FaultLines(comparison);
  text += BothSides("suspended", comparison.suspended, comparison);
  text += BothSides("excluded", comparison.excluded, comparison);
  text += BothSides("known", comparison.only, comparison);
  text += PairLines("unknown", comparison.unknown, "neither connected nor open", comparison);
  text += PairLines("contradictory", comparison.contradictory, "expected open though connections join them",
                    comparison);
  text += BothSides("no difference: connected to nothing, and known", comparison.onlySingle, comparison);
  const std::size_t nets = comparison.faults.agreeing;
  text += std::string(comparison.Equal() ? "equal" : "different") + "; " + std::to_string(nets) +
          (nets == 1 ? " net agrees" : " nets agree") + "\n";
  return text;
}

std::string ComparisonJson(const WiringComparison& comparison) {
  ReportJson object;
  object["format"] = "comparison";
  object["version"] = ComparisonJsonVersion;
  object["a"] = comparison.a;
  object["b"] = comparison.b;
  object["by"] = comparison.byChannel ? "channel" : "pin";
  object["equal"] = comparison.Equal();
  object["agreeing"] = comparison.faults.agreeing;
  ReportJson findings = ReportJson::array();
  for (const diagnosis::Finding& finding : comparison.faults.findings) {
    findings.push_back(FindingJson(finding, comparison));
  }
  object["differences"] = std::move(findings);
  object["suspended"] = SidesJson(comparison.suspended);
  object["excluded"] = SidesJson(comparison.excluded);
  object["known"] = SidesJson(comparison.only);
  object["knownUnconnected"] = SidesJson(comparison.onlySingle);
  object["unknownPairs"] = CountsJson(comparison.unknown);
  object["contradictoryPairs"] = CountsJson(comparison.contradictory);
  return object.dump(-1, ' ', false, ReportJson::error_handler_t::replace) + "\n";
}

}  // namespace kxbench::comparison
