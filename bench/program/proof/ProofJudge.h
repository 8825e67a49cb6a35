#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "bench/diagnosis/Diagnosis.h"
#include "bench/proof/EscapeSearch.h"
#include "bench/proof/ProofModule.h"
#include "bench/wiring/ExpectationFacts.h"

namespace kxbench {

/// Has one fault after the other checked, and judges what the check says of it.
class ProofJudge {
 public:
  /// `check` runs the plug-in's check on a simulated device. Checks the good device first. Throws Failure
  /// when that check cannot be carried out, and std::system_error when `file` cannot be read.
  ProofJudge(const std::string& file, proof::DeviceModel good, KxProofCheck check);

  /// The finding records of the good device: none when it passes.
  const std::vector<std::string>& GoodFindings() const { return goodFindings_; }
  double GoodSeconds() const { return goodSeconds_; }

  /// The verdict on one fault; an escape comes with its reason. A check that ends with an error does not pass
  /// the device: the fault counts as found.
  proof::Verdict Judge(const proof::ProofFault& fault);

  /// Whether the check of a capacitor that discharges in time has a finding all the same.
  bool IsFalseAlarm(const proof::ProofFault& fault);

  /// All records of the check of one fault; no value when it could not be carried out.
  std::optional<std::vector<std::string>> Records(const proof::ProofFault& fault);

  /// The lower threshold below which the good device does not pass any more, and the upper one above which it
  /// does not, Ohm; none when it always does.
  std::optional<double> LowestLowerThreshold();
  std::optional<double> HighestUpperThreshold();

  /// Whether a check with other thresholds finds the fault.
  bool FindsWith(double lowerOhm, double upperOhm, const proof::ProofFault& fault);

  /// See EscapeSearch.h.
  std::optional<double> LargestJoint(proof::Channel contact);
  std::optional<double> SmallestInsulation(proof::Channel a, proof::Channel b);

 private:
  proof::CheckOutcome Check(const TShortTestData& expectation, const proof::DeviceModel& device) const;
  std::vector<std::string> NewFindings(const proof::CheckOutcome& outcome) const;
  bool Finds(const TShortTestData& expectation, const proof::DeviceModel& device) const;
  proof::Naming NamingOf(const proof::ProofFault& fault, const std::vector<std::string>& records) const;
  bool Matches(const diagnosis::Fault& named, const proof::ProofFault& fault) const;
  diagnosis::Net NetWith(proof::Channel channel) const;

  KxProofCheck check_;
  TShortTestData expectation_;
  wiring::ExpectationFacts facts_;
  diagnosis::Observation expected_;
  proof::DeviceModel good_;
  std::vector<std::string> goodFindings_;
  std::set<std::string> known_;  ///< the same
  double goodSeconds_ = 0;
};

}  // namespace kxbench
