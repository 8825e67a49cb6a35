#pragma once

#include <string>

#include "bench/learning/LearnModule.h"
#include "bench/program/ExitStatus.h"
#include "bench/program/Options.h"

namespace kxbench {

/// `kxbench learn`: loads the learn module and learns. Throws Failure.
ExitStatus LearnDevice(const Options& options);

/// What is printed after learning.
std::string LearnReport(const std::string& file, const LearnSummary& summary);

/// "1, 3-7, 12": ascending channel numbers, runs of three or more shortened.
std::string ChannelListText(const std::vector<std::int32_t>& channels);

}  // namespace kxbench
