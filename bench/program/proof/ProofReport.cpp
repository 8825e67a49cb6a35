#include "bench/program/proof/ProofReport.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>
#include <vector>

#include "bench/program/output/Table.h"

namespace kxbench {

namespace {

using proof::ClassCount;
using proof::EscapeReason;
using proof::FaultClass;
using proof::Naming;
using proof::Proof;
using proof::ProvedFault;

constexpr std::size_t ClassWidth = 20;
constexpr std::size_t RemedyWidth = 100;

/// Faults that are listed for one class and one reason; the files hold all of them.
constexpr std::size_t MostListed = 5;

std::string Count(std::size_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string SectionTitle(const std::string& title) { return "\n" + title + "\n"; }

std::string ClassTable(const Proof& proof) {
  using Align = Table::Align;
  Table table({Align::Left, Align::Right, Align::Right, Align::Right, Align::Right}, ClassWidth);
  table.AddRow({"class", "faults", "simulated", "found", "escaped"});
  for (const ClassCount& count : proof.Classes()) {
    table.AddRow({proof::ClassWord(count.kind), std::to_string(count.total), std::to_string(count.simulated),
                  std::to_string(count.found), std::to_string(count.escaped)});
  }
  return table.Text(Indent);
}

std::string NamingTable(const Proof& proof) {
  using Align = Table::Align;
  Table table({Align::Left, Align::Right, Align::Right, Align::Right, Align::Right}, ClassWidth);
  table.AddRow({"class", "exactly", "among equals", "wrongly", "channels missing"});
  for (const ClassCount& count : proof.Classes()) {
    if (count.kind == FaultClass::Tester || count.found == 0) continue;
    const auto of = [&](Naming naming) {
      const auto found = count.namings.find(naming);
      return std::to_string(found == count.namings.end() ? 0 : found->second);
    };
    table.AddRow({proof::ClassWord(count.kind), of(Naming::Exactly), of(Naming::AmongEquals),
                  of(Naming::Wrongly), std::to_string(count.misnamed)});
  }
  return SectionTitle("What the diagnosis makes of the records of the faults found:") + table.Text(Indent);
}

std::string FaultText(const ProvedFault& one, const wiring::ChannelNames& names) {
  std::string text;
  for (const proof::Channel channel : one.fault.channels) {
    text += (text.empty() ? "" : " - ") + names.Labelled(channel);
  }
  if (one.fault.kind == FaultClass::Voltage) text += one.fault.volts > 0 ? ", +12 V" : ", -12 V";
  if (one.fault.kind == FaultClass::Tester) {
    text += ", line " + std::to_string(one.fault.line) +
            (one.fault.staysClosed ? ", never opens" : ", never closes");
  }
  return text;
}

std::string EscapeList(const Proof& proof, const wiring::ChannelNames& names) {
  // Those of one class that have one remedy stand together.
  std::map<std::tuple<FaultClass, std::string, std::string>, std::vector<const ProvedFault*>> groups;
  for (const ProvedFault& one : proof.faults) {
    if (!one.verdict || !one.verdict->escape) continue;
    const proof::Escape& escape = *one.verdict->escape;
    const std::string remedy = proof::ReasonWord(escape.reason) + ": " + proof::RemedyFor(escape);
    groups[{one.fault.kind, escape.limit, remedy}].push_back(&one);
  }
  if (groups.empty()) return "";
  std::string text = SectionTitle("What escapes, why, and what would close it:");
  for (const auto& [group, faults] : groups) {
    const auto& [kind, limit, remedy] = group;
    text += std::string(Indent, ' ') + proof::ClassWord(kind) + ", " +
            Count(faults.size(), "fault", "faults") + "\n";
    for (const std::string& line : Wrapped(remedy, RemedyWidth)) {
      text += std::string(2 * Indent, ' ') + line + "\n";
    }
    if (!limit.empty()) text += std::string(2 * Indent, ' ') + "see docs/limits.md#" + limit + "\n";
    for (std::size_t i = 0; i < std::min(faults.size(), MostListed); ++i) {
      text += std::string(3 * Indent, ' ') + FaultText(*faults[i], names) + "\n";
    }
    if (faults.size() > MostListed) {
      text += std::string(3 * Indent, ' ') + "and " + std::to_string(faults.size() - MostListed) + " more\n";
    }
  }
  return text;
}

std::string SensitivityText(const Proof& proof) {
  const auto worst = [&](auto member, bool largest) -> std::optional<double> {
    std::optional<double> result;
    for (const proof::NetSensitivity& net : proof.sensitivity) {
      const std::optional<double> ohm = net.*member;
      if (!ohm) continue;
      if (!result || (largest ? *ohm > *result : *ohm < *result)) result = ohm;
    }
    return result;
  };
  std::string text;
  if (const auto joint = worst(&proof::NetSensitivity::largestJoint, true)) {
    text += std::string(Indent, ' ') + "a joint may grow by up to " + ShortNumber(*joint) +
            " Ohm before a check finds it\n";
  }
  if (const auto insulation = worst(&proof::NetSensitivity::smallestInsulation, false)) {
    text += std::string(Indent, ' ') + "an insulation may sink to " + ShortNumber(*insulation) +
            " Ohm before a check finds it\n";
  }
  return text.empty() ? "" : SectionTitle("Sensitivity (in the worst net; the files hold each):") + text;
}

std::string AdviceText(const Proof& proof) {
  if (!proof.advice) return "";
  const proof::ThresholdAdvice& advice = *proof.advice;
  const std::string start(Indent, ' ');
  std::string text = SectionTitle("Thresholds that would find more, " + ShortNumber(advice.margin) +
                                  " times away from the good device:");
  text += start +
          (advice.lowerOhm ? "WIDERSTAND " + PlainNumber(*advice.lowerOhm) + " Ohm" : "WIDERSTAND as it is") +
          "\n";
  text +=
      start +
      (advice.upperOhm ? "WIDERSTAND2 " + PlainNumber(*advice.upperOhm) + " Ohm" : "WIDERSTAND2 as it is") +
      "\n";
  if (!advice.upperBounded) {
    text += start + "(no insulation of the good device bounds WIDERSTAND2: describe one with --device)\n";
  }
  return text + start + Count(advice.moreFound, "fault", "faults") + " more would be found\n";
}

std::string PluginText(const Proof& proof) {
  if (proof.throughPlugin == 0) return "";
  std::string text =
      SectionTitle("Through the plug-in's library: " + Count(proof.throughPlugin, "fault", "faults") + ", " +
                   std::to_string(proof.pluginDifferences.size()) + " with other records");
  for (const proof::PluginDifference& one : proof.pluginDifferences) {
    text += std::string(Indent, ' ') + proof::FaultWords(one.fault) + "\n";
    text += std::string(2 * Indent, ' ') + "simulated: " + one.simulated + "\n";
    text += std::string(2 * Indent, ' ') + "measured:  " + one.measured + "\n";
  }
  return text;
}

std::string ProofVerdict(const Proof& proof) {
  if (!proof.complete) return "NOT COMPLETE: the proof was cancelled\n";
  std::size_t escaped = 0;
  for (const ClassCount& count : proof.Classes()) escaped += count.escaped;
  std::string text;
  if (!proof.goodFindings.empty()) text += "the good device does not pass; ";
  if (!proof.falseAlarms.empty()) {
    text += Count(proof.falseAlarms.size(), "charged capacitor is", "charged capacitors are") +
            " reported though discharged in time; ";
  }
  if (!proof.pluginDifferences.empty()) text += "the plug-in's library has other records; ";
  text += escaped == 0 ? "nothing escapes" : Count(escaped, "fault escapes", "faults escape");
  if (escaped > 0 && proof.OpenEscapes() < escaped) {
    text += ", " + std::to_string(escaped - proof.OpenEscapes()) + " of them accepted";
  }
  return (proof.Holds() ? "PROVED: " : "NOT PROVED: ") + text + "\n";
}

std::string GoodDeviceText(const Proof& proof) {
  if (proof.goodFindings.empty()) return "";
  std::string text = "The good device does not pass. What its check reports counts for no fault:\n";
  for (const std::string& record : proof.goodFindings) text += std::string(Indent, ' ') + record + "\n";
  return text + "\n";
}

std::string SampleText(const Proof& proof) {
  std::string text;
  for (const ClassCount& count : proof.Classes()) {
    if (count.total <= proof.largestSample || count.simulated > proof.largestSample) continue;
    if (count.kind != FaultClass::Swapped && count.kind != FaultClass::Misplaced) continue;
    text += std::string(Indent, ' ') + proof::ClassWord(count.kind) + ": a sample of " +
            std::to_string(proof.largestSample) + ", seed " + std::to_string(proof.seed) + "\n";
  }
  return text;
}

}  // namespace

std::string ProofReport(const Proof& proof, const wiring::ChannelNames& names) {
  std::string text = "Expectation:  " + proof.file + "\nSHA-256:      " + proof.sha256 + "\n\n";
  text += GoodDeviceText(proof) + ClassTable(proof) + SampleText(proof);
  if (proof.capacitors > 0) {
    text +=
        std::string(Indent, ' ') +
        Count(proof.capacitors, "charged capacitor that discharges", "charged capacitors that discharge") +
        " in half of the waiting time: " + std::to_string(proof.falseAlarms.size()) + " reported\n";
  }
  text += NamingTable(proof) + EscapeList(proof, names) + SensitivityText(proof) + AdviceText(proof) +
          PluginText(proof);
  return text + "\n" + ProofVerdict(proof);
}

}  // namespace kxbench
