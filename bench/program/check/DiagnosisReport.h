#pragma once

#include <string>

#include "bench/program/check/DeviceDiagnosis.h"
#include "bench/wiring/ChannelNames.h"

namespace kxbench {

/// The diagnosis to read: for each fault a line, other explanations and what shows it; then the verdict.
std::string DiagnosisReport(const DeviceDiagnosis& diagnosis, const wiring::ChannelNames& names);

/// The diagnosis for other programs, one JSON object on one line, as docs/diagnosis.md describes it.
std::string DiagnosisJson(const DeviceDiagnosis& diagnosis, const wiring::ChannelNames& names);

}  // namespace kxbench
