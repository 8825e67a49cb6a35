#include "bench/program/ExpectationReport.h"

#include <cstddef>
#include <ctime>
#include <iomanip>
#include <sstream>
#include <vector>

#include "bench/program/ChannelText.h"
#include "bench/program/JsonText.h"
#include "bench/program/Table.h"

namespace kxbench {

namespace {

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

std::string JsonNames(const wiring::ExpectationFacts& facts, const wiring::ChannelNames& names) {
  JsonObject object;
  for (std::int32_t channel = facts.firstChannel; channel <= facts.lastChannel; ++channel) {
    const std::string name = names.Name(channel);
    if (!name.empty()) object.Add(std::to_string(channel), JsonString(name));
  }
  return object.Text();
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
  std::vector<std::string> excluded;
  for (const auto& [lower, higher] : facts.excludedPairs) excluded.push_back(JsonChannels({lower, higher}));
  std::vector<std::string> doubts;
  for (const std::string& doubt : facts.doubts) doubts.push_back(JsonString(doubt));

  JsonObject object;
  object.Add("format", JsonString("expectation")).Add("version", "1").Add("file", JsonString(file));
  object.Add("saved", JsonString(UtcText(saved)));
  object.Add("firstChannel", std::to_string(facts.firstChannel));
  object.Add("lastChannel", std::to_string(facts.lastChannel));
  object.Add("names", JsonNames(facts, names));
  object.Add("nets", JsonNets(facts.nets.nets));
  object.Add("unconnected", JsonChannels(facts.nets.unconnected));
  object.Add("suspended", JsonChannels(facts.nets.suspended));
  object.Add("pairs", std::to_string(facts.pairs));
  object.Add("connectedPairs", std::to_string(facts.connectedPairs));
  object.Add("unknownPairs", std::to_string(facts.unknownPairs));
  object.Add("excludedPairs", JsonArray(excluded));
  object.Add("lowerThresholdOhm", JsonNumber(facts.lowerThreshold_ohm));
  object.Add("upperThresholdOhm", JsonNumber(facts.upperThreshold_ohm));
  object.Add("voltageControl", std::to_string(facts.voltageControl));
  object.Add("dischargeWaitMs", std::to_string(facts.dischargeWait_ms));
  object.Add("terminationCard", std::to_string(facts.terminationCard));
  object.Add("terminationRelay", std::to_string(facts.terminationRelay));
  object.Add("mostErrors", std::to_string(facts.mostErrors));
  object.Add("warnings", JsonArray(doubts));
  return object.Text() + "\n";
}

}  // namespace kxbench
