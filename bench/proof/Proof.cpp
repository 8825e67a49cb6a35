#include "bench/proof/Proof.h"

#include <algorithm>

#include "bench/proof/NumberWords.h"

namespace kxbench::proof {

namespace {

void Count(const Verdict& verdict, ClassCount& count) {
  ++count.simulated;
  ++(verdict.found ? count.found : count.escaped);
  if (!verdict.found) return;
  if (!verdict.namesChannels) ++count.misnamed;
  ++count.namings[verdict.naming];
}

}  // namespace

std::vector<ClassCount> Proof::Classes() const {
  std::vector<ClassCount> counts;
  for (const FaultClass kind : AllClasses) {
    if (kind == FaultClass::Tester && !testerFaults) continue;
    ClassCount count;
    count.kind = kind;
    if (const auto total = totals.find(kind); total != totals.end()) count.total = total->second;
    for (const ProvedFault& one : faults) {
      if (one.fault.kind == kind && one.verdict) Count(*one.verdict, count);
    }
    counts.push_back(std::move(count));
  }
  return counts;
}

std::size_t Proof::OpenEscapes() const {
  return static_cast<std::size_t>(std::count_if(faults.begin(), faults.end(), [&](const ProvedFault& one) {
    if (!one.verdict || !one.verdict->escape) return false;
    return std::find(accepted.begin(), accepted.end(), one.verdict->escape->reason) == accepted.end();
  }));
}

bool Proof::Holds() const {
  return complete && goodFindings.empty() && falseAlarms.empty() && pluginDifferences.empty() &&
         OpenEscapes() == 0;
}

double Proof::RealSeconds() const {
  double seconds = 0;
  for (const ProvedFault& one : faults) seconds += one.verdict ? one.verdict->seconds : 0;
  return seconds;
}

std::string ClassDefinition(FaultClass kind, const wiring::ExpectationFacts& facts) {
  const double upper = std::max(facts.lowerThreshold_ohm, facts.upperThreshold_ohm);
  switch (kind) {
    case FaultClass::Open:
      return "each contact of each net of two or more contacts has come off its net";
    case FaultClass::Short:
      return "each pair of nets and single channels is connected by 0.1 Ohm";
    case FaultClass::ResistiveShort:
      return "each pair of nets and single channels is connected by " + OhmWord(0.9 * upper, 6) +
             ", 0.9 times the upper threshold";
    case FaultClass::Swapped:
      return "each pair of contacts of different nets is exchanged";
    case FaultClass::Misplaced:
      return "the wire of each contact of a net lies on each channel that belongs to no net";
    case FaultClass::HighResistance:
      return "each contact of a net has " + OhmWord(1.5 * facts.lowerThreshold_ohm, 6) +
             ", 1.5 times the lower threshold";
    case FaultClass::Voltage:
      return "each net and each single channel carries +12 V, and -12 V, against the tester's ground";
    case FaultClass::Tester:
      break;
  }
  return "each relay of the range never closes, and never opens, on each line, with a good device";
}

std::vector<std::string> NotCovered() {
  return {"More than one fault at a time. Two faults can hide each other.",
          "Faults that come and go: a simulated fault is there for the whole check.",
          "What a good device's resistances, insulation and capacitances are: the ideal device has none of "
          "its own but those that this report names.",
          "Noise, drift and wear of the real tester, and errors of its driver. Its relays are proved with "
          "--tester-faults, and tested with kxbench selftest.",
          "Whether the expectation is the harness that was meant. Compare it with the wiring document.",
          "Channels outside START to ENDE, and contacts that no channel is wired to."};
}

}  // namespace kxbench::proof
