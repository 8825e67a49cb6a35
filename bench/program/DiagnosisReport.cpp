#include "bench/program/DiagnosisReport.h"

#include <vector>

#include "bench/diagnosis/FaultText.h"
#include "bench/program/JsonText.h"
#include "bench/program/Table.h"

namespace kxbench {

namespace {

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

JsonObject Named(const diagnosis::Fault& fault, const diagnosis::ChannelLabel& label) {
  JsonObject object;
  object.Add("kind", JsonString(diagnosis::KindWord(fault.kind)));
  object.Add("channels", JsonChannels(fault.channels));
  object.Add("text", JsonString(diagnosis::FaultText(fault, label)));
  return object;
}

std::string JsonFault(const diagnosis::Fault& fault, const std::vector<diagnosis::Fault>& alternatives,
                      const diagnosis::ChannelLabel& label) {
  std::vector<std::string> others;
  others.reserve(alternatives.size());
  for (const diagnosis::Fault& other : alternatives) others.push_back(Named(other, label).Text());
  JsonObject object = Named(fault, label);
  object.Add("ohm", fault.ohm ? JsonNumber(*fault.ohm) : "null");
  object.Add("alternatives", JsonArray(others));
  return object.Text();
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
  std::vector<std::string> faults;
  for (const diagnosis::Fault& voltage : diagnosis.voltages) faults.push_back(JsonFault(voltage, {}, label));
  for (const diagnosis::Finding& finding : diagnosis.faults.findings) {
    for (const diagnosis::Fault& fault : finding.explanations.front()) {
      faults.push_back(JsonFault(fault, diagnosis::Alternatives(finding, fault), label));
    }
  }
  for (const diagnosis::Fault& hint : diagnosis.faults.hints) faults.push_back(JsonFault(hint, {}, label));
  JsonObject nets;
  nets.Add("expected", JsonNets(diagnosis.faults.expected));
  nets.Add("measured", JsonNets(diagnosis.faults.measured));
  JsonObject object;
  object.Add("format", JsonString("diagnosis"));
  object.Add("version", std::to_string(JsonVersion));
  object.Add("verdict", JsonString(diagnosis.Failed() ? "fail" : "pass"));
  object.Add("faults", JsonArray(faults));
  object.Add("nets", nets.Text());
  return object.Text() + "\n";
}

}  // namespace kxbench
