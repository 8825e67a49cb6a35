#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "bench/program/check/DeviceDiagnosis.h"
#include "bench/program/check/ResultOptions.h"
#include "bench/program/check/Series.h"
#include "bench/program/host/CommonOptions.h"
#include "bench/program/host/Record.h"
#include "bench/program/system/ExitStatus.h"

namespace kxbench {

enum class DiagnosisFormat {
  Report,
  Json,
  Aside,  ///< a report on standard error, because standard output holds records alone
};

/// Measures the connected device after a check that ended with `checked` and prints its diagnosis: without
/// findings nothing is measured, and the check's verdict stays. `known` gets the diagnosis before anything is
/// printed; what it throws ends the command. Throws Failure.
ExitStatus DiagnoseConnectedDevice(const CommonOptions& common, const std::string& file,
                                   DiagnosisFormat format, ExitStatus checked,
                                   const std::function<void(const DeviceDiagnosis&)>& known);

/// What `kxbench diagnose` is asked for.
struct DiagnoseJob {
  std::string file;  ///< the expectation
  DiagnosisFormat format = DiagnosisFormat::Report;
  SeriesOptions series;
  ResultOptions results;
};

/// Measures the connected device, once or in a series, prints its diagnosis, in a series the first one with
/// faults, and keeps the result. Throws Failure.
ExitStatus DiagnoseDevice(const CommonOptions& common, const DiagnoseJob& job);

/// Prints the diagnosis of what the records of a check show. Throws Failure.
ExitStatus DiagnoseRecords(const CommonOptions& common, const std::string& file, DiagnosisFormat format,
                           const std::vector<Record>& records);

}  // namespace kxbench
