#include "bench/program/check/CheckResult.h"

#include <algorithm>
#include <set>

#include "bench/diagnosis/FaultText.h"
#include "bench/program/check/RecordedNets.h"
#include "bench/program/check/Report.h"
#include "text/NumberText.h"

namespace kxbench {

namespace {

results::Verdict VerdictOfCheck(const StepResult& check) {
  switch (check.Status()) {
    case ExitStatus::NoFindings:
      return results::Verdict::Pass;
    case ExitStatus::Findings:
      return results::Verdict::Fail;
    case ExitStatus::Cancelled:
      return results::Verdict::Cancelled;
    case ExitStatus::Failed:
      break;
  }
  return results::Verdict::Error;
}

results::ResultRecord RecordOfResult(const Record& record) {
  return {record.line, record.text, record.value, record.lower, record.upper, record.unit, IsFinding(record)};
}

/// The channels that the text of a defect names.
std::set<std::int32_t> ChannelsNamedIn(const std::string& text) {
  std::set<std::int32_t> channels;
  if (!TellsOfADefect(text)) return channels;
  constexpr const char* Digits = "0123456789";
  for (std::size_t begin = text.find_first_of(Digits); begin != std::string::npos;) {
    const std::size_t end = std::min(text.find_first_not_of(Digits, begin), text.size());
    if (const auto channel = shorttest::TextToInteger(text.substr(begin, end - begin)))
      channels.insert(*channel);
    begin = text.find_first_of(Digits, end);
  }
  return channels;
}

results::ResultFault FaultOfResult(const diagnosis::Fault& fault, const wiring::ChannelNames& names) {
  const auto label = [&names](diagnosis::Channel channel) { return names.Labelled(channel); };
  return {diagnosis::KindWord(fault.kind), fault.channels, diagnosis::FaultText(fault, label)};
}

/// The records alone name no fault where the check did not come far enough, or where they contradict the
/// file.
void EnterRecordedDiagnosis(const StepResult& check, const wiring::ExpectationFacts& facts,
                            const wiring::ChannelNames& names, results::Result& result) {
  try {
    EnterDiagnosis(DiagnosisOfRecords(check.records, facts, ExpectedOnly(facts, names)), names, result);
  } catch (const Failure&) {
    result.faults.clear();
  }
  result.diagnosed = !result.faults.empty();
}

}  // namespace

void EnterCheck(const StepResult& check, const wiring::ExpectationFacts& facts,
                const wiring::ChannelNames& names, results::Result& result) {
  result.verdict = VerdictOfCheck(check);
  result.error = check.failure;
  if (check.end == StepEnd::Silent) result.error = "the check ended without a record: it was not finished";
  result.records.clear();
  for (const Record& record : check.records) result.records.push_back(RecordOfResult(record));
  EnterNets(facts, names, result);
  if (result.verdict == results::Verdict::Fail) EnterRecordedDiagnosis(check, facts, names, result);
}

void EnterDiagnosis(const DeviceDiagnosis& diagnosis, const wiring::ChannelNames& names,
                    results::Result& result) {
  result.diagnosed = true;
  result.faults.clear();
  for (const diagnosis::Fault& voltage : diagnosis.voltages)
    result.faults.push_back(FaultOfResult(voltage, names));
  for (const diagnosis::Finding& finding : diagnosis.faults.findings) {
    for (const diagnosis::Fault& fault : finding.explanations.front()) {
      result.faults.push_back(FaultOfResult(fault, names));
    }
  }
  for (const diagnosis::Fault& hint : diagnosis.faults.hints)
    result.faults.push_back(FaultOfResult(hint, names));
}

void EnterNets(const wiring::ExpectationFacts& facts, const wiring::ChannelNames& names,
               results::Result& result) {
  std::vector<std::pair<std::string, std::set<std::int32_t>>> findings;
  for (const results::ResultRecord& record : result.records) {
    if (record.finding) findings.emplace_back(record.text, ChannelsNamedIn(record.text));
  }
  if (result.records.empty()) {
    for (const results::ResultFault& fault : result.faults) {
      findings.emplace_back(fault.text, std::set<std::int32_t>(fault.channels.begin(), fault.channels.end()));
    }
  }
  result.nets.clear();
  for (const std::vector<std::int32_t>& channels : facts.nets.nets) {
    results::ExpectedNet net;
    net.channels = channels;
    for (const std::int32_t channel : channels)
      net.label += (net.label.empty() ? "" : ", ") + names.Labelled(channel);
    for (const auto& [text, named] : findings) {
      const bool concerned =
          std::any_of(channels.begin(), channels.end(),
                      [&named = named](std::int32_t channel) { return named.contains(channel); });
      const bool known = std::find(net.findings.begin(), net.findings.end(), text) != net.findings.end();
      if (concerned && !known) net.findings.push_back(text);
    }
    result.nets.push_back(std::move(net));
  }
}

}  // namespace kxbench
