#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "bench/diagnosis/Diagnosis.h"
#include "bench/learning/MeasureModule.h"
#include "bench/program/host/CommonOptions.h"
#include "bench/program/host/Interaction.h"
#include "bench/program/system/ExitStatus.h"
#include "bench/wiring/ChannelNames.h"
#include "bench/wiring/ExpectationFacts.h"

namespace kxbench {

/// What is wrong with a device, ready to be reported.
struct DeviceDiagnosis {
  diagnosis::Diagnosis faults;
  std::vector<diagnosis::Fault> voltages;  ///< when there are any, nothing else is known
  std::vector<std::string> gaps;           ///< what is not known, one clause each
  bool checkFailed = false;                ///< a check of the same device had findings

  bool Failed() const { return checkFailed || !voltages.empty() || !faults.findings.empty(); }
  ExitStatus Status() const { return Failed() ? ExitStatus::Findings : ExitStatus::NoFindings; }
};

/// What the expectation says, with nothing measured yet.
diagnosis::Observation ExpectedOnly(const wiring::ExpectationFacts& facts, const wiring::ChannelNames& names);

/// The diagnosis of what was measured. REQUIRES: `summary` ended as Measured or Charged.
DeviceDiagnosis DiagnosisOf(const MeasureSummary& summary, diagnosis::Observation observation);

/// The diagnosis of a device that a check found nothing wrong with.
DeviceDiagnosis DiagnosisOfGoodDevice(diagnosis::Observation observation);

/// Measures the connected device through the learn module, which is loaded for it; readings near the
/// threshold are not asked about. `measured` is called with the driver still in memory. Throws Failure.
MeasureSummary MeasureThroughModule(
    const CommonOptions& common, const std::string& file, const std::function<void()>& measured = [] {});

}  // namespace kxbench
