#include "bench/program/proof/ProofJudge.h"

#include <algorithm>
#include <utility>

#include "bench/program/check/DeviceDiagnosis.h"
#include "bench/program/check/RecordedFindings.h"
#include "bench/program/check/RecordedNets.h"
#include "bench/program/host/Record.h"
#include "bench/program/system/Failure.h"

namespace kxbench {

namespace {

using proof::FaultClass;
using proof::Naming;
using proof::ProofFault;

/// Between these a threshold makes sense, Ohm: what is smaller or larger the instrument cannot tell apart.
constexpr double SmallestThreshold = 1e-3;
constexpr double LargestThreshold = 1e9;

std::vector<Record> Parsed(const std::vector<std::string>& lines) {
  std::vector<Record> records;
  records.reserve(lines.size());
  for (const std::string& line : lines) records.push_back(ParseRecord(line));
  return records;
}

std::vector<std::string> FindingLines(const std::vector<std::string>& lines) {
  std::vector<std::string> findings;
  for (const std::string& line : lines) {
    if (IsFinding(ParseRecord(line))) findings.push_back(line);
  }
  return findings;
}

std::set<diagnosis::Channel> ChannelsIn(const RecordedFindings& findings) {
  std::set<diagnosis::Channel> channels;
  for (const RecordedBreak& one : findings.breaks) channels.insert({one.lower, one.higher});
  for (const RecordedShort& one : findings.shorts) {
    channels.insert(one.net.begin(), one.net.end());
    channels.insert(one.others.begin(), one.others.end());
  }
  for (const RecordedVoltage& one : findings.voltages) channels.insert(one.channel);
  return channels;
}

bool Holds(const std::vector<diagnosis::Channel>& channels, diagnosis::Channel channel) {
  return std::find(channels.begin(), channels.end(), channel) != channels.end();
}

}  // namespace

ProofJudge::ProofJudge(const std::string& file, proof::DeviceModel good, KxProofCheck check)
    : check_(check),
      expectation_(file),
      facts_(wiring::FactsOf(file)),
      expected_(ExpectedOnly(facts_, wiring::ChannelNames())),
      good_(std::move(good)) {
  const proof::CheckOutcome outcome = Check(expectation_, good_);
  if (!outcome.failure.empty()) throw Failure(file + ": " + outcome.failure);
  goodFindings_ = FindingLines(outcome.records);
  known_.insert(goodFindings_.begin(), goodFindings_.end());
  goodSeconds_ = outcome.seconds;
}

proof::CheckOutcome ProofJudge::Check(const TShortTestData& expectation,
                                      const proof::DeviceModel& device) const {
  proof::CheckOutcome outcome;
  check_(expectation, device, outcome);
  return outcome;
}

std::vector<std::string> ProofJudge::NewFindings(const proof::CheckOutcome& outcome) const {
  std::vector<std::string> findings = FindingLines(outcome.records);
  std::erase_if(findings, [this](const std::string& line) { return known_.contains(line); });
  return findings;
}

bool ProofJudge::Finds(const TShortTestData& expectation, const proof::DeviceModel& device) const {
  const proof::CheckOutcome outcome = Check(expectation, device);
  return !outcome.failure.empty() || !NewFindings(outcome).empty();
}

proof::Verdict ProofJudge::Judge(const ProofFault& fault) {
  const proof::CheckOutcome outcome = Check(expectation_, proof::WithFault(good_, fault));
  proof::Verdict verdict;
  verdict.seconds = outcome.seconds;
  verdict.found = !outcome.failure.empty() || !NewFindings(outcome).empty();
  if (!verdict.found) {
    verdict.escape =
        proof::ReasonOf(fault, expectation_, good_,
                        [this](const TShortTestData& expectation, const proof::DeviceModel& device) {
                          return Finds(expectation, device);
                        });
    return verdict;
  }
  if (!outcome.failure.empty()) return verdict;
  const std::set<diagnosis::Channel> named = ChannelsIn(FindingsIn(Parsed(outcome.records)));
  verdict.namesChannels = std::all_of(fault.channels.begin(), fault.channels.end(),
                                      [&](diagnosis::Channel channel) { return named.contains(channel); });
  if (fault.kind != FaultClass::Tester) verdict.naming = NamingOf(fault, outcome.records);
  return verdict;
}

bool ProofJudge::IsFalseAlarm(const ProofFault& fault) {
  return Finds(expectation_, WithFault(good_, fault));
}

std::optional<std::vector<std::string>> ProofJudge::Records(const ProofFault& fault) {
  proof::CheckOutcome outcome = Check(expectation_, proof::WithFault(good_, fault));
  return outcome.failure.empty() ? std::optional(std::move(outcome.records)) : std::nullopt;
}

std::optional<double> ProofJudge::LowestLowerThreshold() {
  return proof::TurningPoint(SmallestThreshold, expectation_.Schwelle, true, [this](double ohm) {
    TShortTestData changed = expectation_;
    changed.Schwelle = ohm;
    return Finds(changed, good_);
  });
}

std::optional<double> ProofJudge::HighestUpperThreshold() {
  const double upper = std::max(expectation_.Schwelle, expectation_.Schwelle2);
  return proof::TurningPoint(upper, LargestThreshold, false, [this](double ohm) {
    TShortTestData changed = expectation_;
    changed.Schwelle2 = ohm;
    return Finds(changed, good_);
  });
}

bool ProofJudge::FindsWith(double lowerOhm, double upperOhm, const ProofFault& fault) {
  TShortTestData changed = expectation_;
  changed.Schwelle = lowerOhm;
  changed.Schwelle2 = upperOhm;
  return Finds(changed, proof::WithFault(good_, fault));
}

std::optional<double> ProofJudge::LargestJoint(proof::Channel contact) {
  return proof::LargestJoint(
      contact, expectation_, good_,
      [this](const auto& expectation, const auto& device) { return Finds(expectation, device); });
}

std::optional<double> ProofJudge::SmallestInsulation(proof::Channel a, proof::Channel b) {
  return proof::SmallestInsulation(
      a, b, expectation_, good_,
      [this](const auto& expectation, const auto& device) { return Finds(expectation, device); });
}

diagnosis::Net ProofJudge::NetWith(proof::Channel channel) const {
  for (const diagnosis::Net& net : expected_.expected) {
    if (Holds(net, channel)) return net;
  }
  return {channel};
}

bool ProofJudge::Matches(const diagnosis::Fault& named, const ProofFault& fault) const {
  using diagnosis::FaultKind;
  const proof::Channel first = fault.channels.front();
  switch (fault.kind) {
    case FaultClass::Open:
    case FaultClass::HighResistance:
      return named.kind == FaultKind::Open &&
             std::find(named.pieces.begin(), named.pieces.end(), diagnosis::Net{first}) != named.pieces.end();
    case FaultClass::Short:
    case FaultClass::ResistiveShort:
      return named.kind == FaultKind::Short &&
             diagnosis::Ordered(named.nets) ==
                 diagnosis::Ordered({NetWith(first), NetWith(fault.channels.back())});
    case FaultClass::Swapped:
    case FaultClass::Misplaced: {
      diagnosis::Net contacts = fault.channels;
      std::sort(contacts.begin(), contacts.end());
      return (named.kind == FaultKind::Swapped || named.kind == FaultKind::Misplaced) &&
             named.channels == contacts;
    }
    case FaultClass::Voltage:
      return named.kind == FaultKind::Voltage && Holds(NetWith(first), named.channels.front());
    case FaultClass::Tester:
      break;
  }
  return false;
}

Naming ProofJudge::NamingOf(const ProofFault& fault, const std::vector<std::string>& records) const {
  DeviceDiagnosis diagnosis;
  try {
    diagnosis = DiagnosisOfRecords(Parsed(records), facts_, expected_);
  } catch (const Failure&) {
    return Naming::Wrongly;  // no device would send these records: a suspended channel, for instance
  }
  if (!diagnosis.voltages.empty()) {
    return Matches(diagnosis.voltages.front(), fault) ? Naming::Exactly : Naming::Wrongly;
  }
  if (diagnosis.faults.findings.size() != 1) return Naming::Wrongly;
  const auto& explanations = diagnosis.faults.findings.front().explanations;
  const bool named =
      std::any_of(explanations.begin(), explanations.end(), [&](const diagnosis::Explanation& explanation) {
        return explanation.size() == 1 && Matches(explanation.front(), fault);
      });
  if (!named) return Naming::Wrongly;
  return explanations.size() == 1 ? Naming::Exactly : Naming::AmongEquals;
}

}  // namespace kxbench
