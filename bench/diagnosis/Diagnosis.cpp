#include "bench/diagnosis/Diagnosis.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "bench/diagnosis/FaultPairs.h"
#include "bench/diagnosis/PlugFaults.h"
#include "bench/diagnosis/Plugs.h"
#include "bench/diagnosis/Resistances.h"
#include "bench/diagnosis/SingleFaults.h"

namespace kxbench::diagnosis {

namespace {

/// Channels that only one side knows are alone on the other.
Nets Completed(Nets nets, const Net& own, const Net& others) {
  Net alone;
  std::set_difference(others.begin(), others.end(), own.begin(), own.end(), std::back_inserter(alone));
  for (const Channel channel : alone) nets.push_back({channel});
  return Ordered(std::move(nets));
}

Finding FindingOf(const Overlap& component) {
  Finding finding;
  finding.expected = Ordered(component.expected);
  finding.measured = Ordered(component.measured);
  finding.explanations = SingleFaults(component);
  if (finding.explanations.empty()) finding.explanations = FaultPairs(component);
  if (finding.explanations.empty()) finding.explanations = {{CompoundFault(component)}};
  return finding;
}

/// How many mistakes it takes.
std::size_t Cost(const Finding& finding) {
  std::size_t cost = 0;
  for (const Fault& fault : finding.explanations.front()) {
    switch (fault.kind) {
      case FaultKind::Short:
        cost += fault.pieces.size() - 1;
        break;
      case FaultKind::Crossed:
        cost += fault.channels.size() / 2;
        break;
      case FaultKind::Compound:
        cost += fault.opens + fault.shorts;
        break;
      default:
        cost += 1;
    }
  }
  return cost;
}

/// The findings of one component each, of which wrong plugs take over those that they explain.
class Findings {
 public:
  /// REQUIRES: no component agrees.
  explicit Findings(const std::vector<Overlap>& components) {
    for (const Overlap& component : components) findings_.push_back(FindingOf(component));
  }

  /// Merges what the most sparing of `plugs` explain. Equally good ones for the same findings are kept.
  void Explain(std::vector<PlugExplanation> plugs) {
    std::vector<Candidate> candidates;
    candidates.reserve(plugs.size());
    for (PlugExplanation& plug : plugs) candidates.push_back(CandidateOf(std::move(plug)));
    std::stable_sort(candidates.begin(), candidates.end(),
                     [](const Candidate& a, const Candidate& b) { return a.cost > b.cost; });
    std::set<std::size_t> taken;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
      const std::vector<std::size_t>& covered = candidates[i].covered;
      const bool free = std::none_of(covered.begin(), covered.end(),
                                     [&](std::size_t finding) { return taken.contains(finding); });
      if (!free) continue;
      taken.insert(covered.begin(), covered.end());
      TakeOver(candidates, i);
    }
    std::erase_if(findings_, [](const Finding& finding) { return finding.explanations.empty(); });
  }

  std::vector<Finding> Taken() && { return std::move(findings_); }

 private:
  struct Candidate {
    Fault fault;
    std::vector<std::size_t> covered;  // indices of the findings explained
    std::size_t cost;                  // what they cost without the plug
  };

  Candidate CandidateOf(PlugExplanation plug) const {
    Candidate candidate{std::move(plug.fault), {}, 0};
    for (std::size_t i = 0; i < findings_.size(); ++i) {
      const Channel channel = findings_[i].expected.front().front();
      if (!std::binary_search(plug.explained.begin(), plug.explained.end(), channel)) continue;
      candidate.covered.push_back(i);
      candidate.cost += Cost(findings_[i]);
    }
    return candidate;
  }

  /// The first of the findings covered becomes that of the plug; the others are left empty.
  void TakeOver(const std::vector<Candidate>& candidates, std::size_t best) {
    const std::vector<std::size_t>& covered = candidates[best].covered;
    Finding& merged = findings_[covered.front()];
    // What one simple fault explains as well is looked for there first.
    if (candidates[best].cost > 1) merged.explanations.clear();
    for (std::size_t i = best; i < candidates.size(); ++i) {
      if (candidates[i].covered == covered) merged.explanations.push_back({candidates[i].fault});
    }
    for (std::size_t i = 1; i < covered.size(); ++i) {
      Finding& other = findings_[covered[i]];
      merged.expected.insert(merged.expected.end(), other.expected.begin(), other.expected.end());
      merged.measured.insert(merged.measured.end(), other.measured.begin(), other.measured.end());
      other.explanations.clear();
    }
    merged.expected = Ordered(std::move(merged.expected));
    merged.measured = Ordered(std::move(merged.measured));
  }

  std::vector<Finding> findings_;
};

std::size_t NetsOfSeveral(const Nets& nets) {
  return static_cast<std::size_t>(
      std::count_if(nets.begin(), nets.end(), [](const Net& net) { return net.size() > 1; }));
}

}  // namespace

Diagnosis Diagnose(const Observation& observation) {
  Diagnosis diagnosis;
  const Net expected = ChannelsOf(observation.expected);
  const Net measured = ChannelsOf(observation.measured);
  diagnosis.expected = Completed(observation.expected, expected, measured);
  diagnosis.measured = Completed(observation.measured, measured, expected);

  const Nets missing = Difference(diagnosis.expected, diagnosis.measured);
  diagnosis.agreeing = NetsOfSeveral(diagnosis.expected) - NetsOfSeveral(missing);
  diagnosis.hints = HighResistances(observation, diagnosis.measured);
  if (missing.empty()) return diagnosis;
  Findings findings(Components(missing, Difference(diagnosis.measured, diagnosis.expected)));
  findings.Explain(PlugFaults(PlugsOf(observation.contacts), diagnosis.expected, diagnosis.measured));
  diagnosis.findings = std::move(findings).Taken();

  const ResistanceTable resistances(observation.resistances);
  for (Finding& finding : diagnosis.findings) {
    for (Explanation& explanation : finding.explanations)
      AddEvidence(resistances, observation.contacts, explanation);
  }
  return diagnosis;
}

Fault VoltageFault(Channel channel, double volts) {
  Fault fault;
  fault.kind = FaultKind::Voltage;
  fault.channels = {channel};
  fault.volts = volts;
  return fault;
}

std::vector<Fault> Alternatives(const Finding& finding, const Fault& fault) {
  const auto holds = [](const std::vector<Fault>& faults, const Fault& wanted) {
    return std::any_of(faults.begin(), faults.end(),
                       [&](const Fault& other) { return SameFault(other, wanted); });
  };
  std::vector<Fault> alternatives;
  const Explanation& first = finding.explanations.front();
  for (const Explanation& explanation : finding.explanations) {
    if (holds(explanation, fault)) continue;
    for (const Fault& other : explanation) {
      if (!holds(first, other) && !holds(alternatives, other)) alternatives.push_back(other);
    }
  }
  return alternatives;
}

}  // namespace kxbench::diagnosis
