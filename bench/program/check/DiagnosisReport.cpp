#include "bench/program/check/DiagnosisReport.h"

#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "bench/diagnosis/FaultText.h"
#include "bench/program/output/JsonLine.h"
#include "bench/program/output/Table.h"

namespace kxbench {

namespace {

using DiagnosisObject = nlohmann::ordered_json;

constexpr int JsonVersion = 1;

diagnosis::ChannelLabel LabelsOf(const wiring::ChannelNames& names) {
  return [&names](diagnosis::Channel channel) { return names.Labelled(channel); };
}

std::string IndentedLine(std::size_t steps, const std::string& text) {
  return std::string(steps * Indent, ' ') + text + "\n";
}

std::string FindingLines(const diagnosis::Finding& finding, const diagnosis::ChannelLabel& label) {
  std::string text;
  for (const diagnosis::Fault& fault : finding.explanations.front()) {
    text += IndentedLine(1, diagnosis::FaultText(fault, label));
  }
  for (const std::string& line : diagnosis::AlternativeTexts(finding, label)) text += IndentedLine(2, line);
  return text + IndentedLine(2, diagnosis::EvidenceText(finding));
}

std::size_t FaultCount(const DeviceDiagnosis& diagnosis) {
  std::size_t count = diagnosis.voltages.size();
  for (const diagnosis::Finding& finding : diagnosis.faults.findings) {
    count += finding.explanations.front().size();
  }
  return count;
}

std::string VerdictOf(const DeviceDiagnosis& diagnosis) {
  const std::size_t faults = FaultCount(diagnosis);
  if (faults > 0) return "FAIL: " + std::to_string(faults) + (faults == 1 ? " fault" : " faults") + "\n";
  const std::string nets = std::to_string(diagnosis.faults.agreeing) +
                           (diagnosis.faults.agreeing == 1 ? " net agrees" : " nets agree");
  return "no faults; " + nets + "\n";
}

DiagnosisObject Named(const diagnosis::Fault& fault, const diagnosis::ChannelLabel& label) {
  return {{"kind", diagnosis::KindWord(fault.kind)},
          {"channels", fault.channels},
          {"text", diagnosis::FaultText(fault, label)}};
}

DiagnosisObject Whole(const diagnosis::Fault& fault, const std::vector<diagnosis::Fault>& alternatives,
                      const diagnosis::ChannelLabel& label) {
  DiagnosisObject object = Named(fault, label);
  object["ohm"] = nullptr;
  if (fault.ohm) object["ohm"] = *fault.ohm;
  DiagnosisObject& others = object["alternatives"] = DiagnosisObject::array();
  for (const diagnosis::Fault& other : alternatives) others.push_back(Named(other, label));
  return object;
}

}  // namespace

std::string DiagnosisReport(const DeviceDiagnosis& diagnosis, const wiring::ChannelNames& names) {
  const diagnosis::ChannelLabel label = LabelsOf(names);
  std::string text;
  for (const diagnosis::Fault& voltage : diagnosis.voltages) {
    text += IndentedLine(1, diagnosis::FaultText(voltage, label));
  }
  for (const diagnosis::Finding& finding : diagnosis.faults.findings) text += FindingLines(finding, label);
  for (const diagnosis::Fault& hint : diagnosis.faults.hints) {
    text += IndentedLine(1, diagnosis::FaultText(hint, label));
  }
  for (const std::string& gap : diagnosis.gaps) text += IndentedLine(1, "not known: " + gap);
  if (!text.empty()) text += "\n";
  return text + VerdictOf(diagnosis);
}

std::string DiagnosisJson(const DeviceDiagnosis& diagnosis, const wiring::ChannelNames& names) {
  const diagnosis::ChannelLabel label = LabelsOf(names);
  DiagnosisObject faults = DiagnosisObject::array();
  for (const diagnosis::Fault& voltage : diagnosis.voltages) faults.push_back(Whole(voltage, {}, label));
  for (const diagnosis::Finding& finding : diagnosis.faults.findings) {
    for (const diagnosis::Fault& fault : finding.explanations.front()) {
      faults.push_back(Whole(fault, diagnosis::Alternatives(finding, fault), label));
    }
  }
  for (const diagnosis::Fault& hint : diagnosis.faults.hints) faults.push_back(Whole(hint, {}, label));
  DiagnosisObject object;
  object["format"] = "diagnosis";
  object["version"] = JsonVersion;
  object["verdict"] = diagnosis.Failed() ? "fail" : "pass";
  object["faults"] = std::move(faults);
  object["nets"] = {{"expected", diagnosis.faults.expected}, {"measured", diagnosis.faults.measured}};
  return JsonLine(object) + "\n";
}

}  // namespace kxbench
