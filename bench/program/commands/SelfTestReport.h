#pragma once

#include <string>

#include "bench/program/system/ExitStatus.h"
#include "bench/proof/SelfTestModule.h"
#include "bench/wiring/ChannelNames.h"

namespace kxbench {

/// What is printed after a self-test: a line for each defect, and the verdict. Channels that have a name
/// carry it.
std::string SelfTestReport(const SelfTestSummary& summary, const wiring::ChannelNames& names);

/// The same as one JSON object on a line, see docs/selftest.md.
std::string SelfTestJson(const SelfTestSummary& summary);

/// Findings when there are defects.
ExitStatus StatusOf(const SelfTestSummary& summary);

}  // namespace kxbench
