#include "bench/program/commands/ExpectationReport.h"

#include <cstddef>
#include <ctime>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <sstream>

#include "bench/program/output/ChannelText.h"
#include "bench/program/output/JsonLine.h"
#include "bench/program/output/Table.h"

namespace kxbench {

namespace {

using ExpectationObject = nlohmann::ordered_json;

/// Excluded pairs listed one by one; a file may have millions.
constexpr std::size_t MostExcludedPairs = 100;

std::string TimeText(const std::tm* parts, const char* format) {
  if (parts == nullptr) return "unknown";
  std::ostringstream text;
  text << std::put_time(parts, format);
  return text.str();
}

std::string LocalTimeText(SavedAt time) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
  return TimeText(std::localtime(&seconds), "%Y-%m-%d %H:%M:%S");
}

std::string UtcText(SavedAt time) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
  return TimeText(std::gmtime(&seconds), "%Y-%m-%dT%H:%M:%SZ");
}

std::string ExcludedText(const wiring::ExpectationFacts& facts, const wiring::ChannelNames& names) {
  std::string text;
  for (std::size_t i = 0; i < facts.excludedPairs.size() && i < MostExcludedPairs; ++i) {
    const auto& [lower, higher] = facts.excludedPairs[i];
    text += (i == 0 ? "" : ", ") + PairText(lower, higher, names);
  }
  if (facts.excludedPairs.size() > MostExcludedPairs) {
    text += " and " + std::to_string(facts.excludedPairs.size() - MostExcludedPairs) + " more";
  }
  return text.empty() ? "none" : text;
}

std::string VoltageText(const wiring::ExpectationFacts& facts) {
  switch (facts.voltageControl) {
    case 0:
      return "0 (not measured)";
    case 1:
      return "1 (measured)";
    case 2:
      return "2 (measured, discharged for at most " + std::to_string(facts.dischargeWait_ms) + " ms)";
    default:
      return std::to_string(facts.voltageControl);
  }
}

bool IsTerminated(const wiring::ExpectationFacts& facts) {
  return facts.terminationCard > 0 && facts.terminationRelay > 0;
}

ExpectationObject NamesObject(const wiring::ExpectationFacts& facts, const wiring::ChannelNames& names) {
  ExpectationObject object = ExpectationObject::object();
  for (std::int32_t channel = facts.firstChannel; channel <= facts.lastChannel; ++channel) {
    const std::string name = names.Name(channel);
    if (!name.empty()) object.emplace(std::to_string(channel), name);
  }
  return object;
}

}  // namespace

std::string ExpectationReport(const std::string& file, const wiring::ExpectationFacts& facts,
                              const wiring::ChannelNames& names, SavedAt saved) {
  std::string report = "Expectation " + file + "\n\n";
  report += Entry("Saved", LocalTimeText(saved));
  report +=
      Entry("Channels", std::to_string(facts.firstChannel) + " to " + std::to_string(facts.lastChannel));
  report += Entry("Nets", std::to_string(facts.nets.nets.size()));
  for (const auto& net : facts.nets.nets) report += Entry("", ChannelListText(net, names));
  report += Entry("Connected to nothing", ChannelListText(facts.nets.unconnected, names));
  report += Entry("Suspended channels", ChannelListText(facts.nets.suspended, names));
  report += Entry("Pairs", std::to_string(facts.pairs));
  report += Entry("  connected", std::to_string(facts.connectedPairs));
  report += Entry("  unknown", std::to_string(facts.unknownPairs));
  report += Entry("  excluded", std::to_string(facts.excludedPairs.size()));
  if (!facts.excludedPairs.empty()) report += Entry("", ExcludedText(facts, names));
  report += Entry("Lower threshold", PlainNumber(facts.lowerThreshold_ohm) + " Ohm");
  report += Entry("Upper threshold", PlainNumber(facts.upperThreshold_ohm) + " Ohm");
  report += Entry("Voltage control", VoltageText(facts));
  report += Entry("Terminating resistor", IsTerminated(facts)
                                              ? "card " + std::to_string(facts.terminationCard) + ", relay " +
                                                    std::to_string(facts.terminationRelay)
                                              : "none");
  report += Entry("Most findings", std::to_string(facts.mostErrors));
  return report;
}

std::string ExpectationJson(const std::string& file, const wiring::ExpectationFacts& facts,
                            const wiring::ChannelNames& names, SavedAt saved) {
  ExpectationObject object;
  object["format"] = "expectation";
  object["version"] = 1;
  object["file"] = file;
  object["saved"] = UtcText(saved);
  object["firstChannel"] = facts.firstChannel;
  object["lastChannel"] = facts.lastChannel;
  object["names"] = NamesObject(facts, names);
  object["nets"] = facts.nets.nets;
  object["unconnected"] = facts.nets.unconnected;
  object["suspended"] = facts.nets.suspended;
  object["pairs"] = facts.pairs;
  object["connectedPairs"] = facts.connectedPairs;
  object["unknownPairs"] = facts.unknownPairs;
  object["excludedPairs"] = facts.excludedPairs;
  object["lowerThresholdOhm"] = facts.lowerThreshold_ohm;
  object["upperThresholdOhm"] = facts.upperThreshold_ohm;
  object["voltageControl"] = facts.voltageControl;
  object["dischargeWaitMs"] = facts.dischargeWait_ms;
  object["terminationCard"] = facts.terminationCard;
  object["terminationRelay"] = facts.terminationRelay;
  object["mostErrors"] = facts.mostErrors;
  object["warnings"] = facts.doubts;
  return JsonLine(object) + "\n";
}

}  // namespace kxbench
