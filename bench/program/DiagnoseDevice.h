#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bench/program/CommonOptions.h"
#include "bench/program/ExitStatus.h"
#include "bench/program/Record.h"

namespace kxbench {

enum class DiagnosisFormat {
  Report,
  Json,
  Aside,  ///< a report on standard error, because standard output holds records alone
};

/// Measures the connected device and prints its diagnosis. After a check, `checked` is what it ended with:
/// without findings nothing is measured, and its verdict stays. Throws Failure.
ExitStatus DiagnoseConnectedDevice(const CommonOptions& common, const std::string& file,
                                   DiagnosisFormat format, std::optional<ExitStatus> checked);

/// Prints the diagnosis of what the records of a check show. Throws Failure.
ExitStatus DiagnoseRecords(const CommonOptions& common, const std::string& file, DiagnosisFormat format,
                           const std::vector<Record>& records);

}  // namespace kxbench
