#pragma once

#include <string>
#include <vector>

#include "bench/program/system/ExitStatus.h"

namespace kxbench {

/// Does what the command line asks, while an InterruptWatch lives. Throws what keeps it from running, Failure
/// for what it foresees.
ExitStatus RunBench(std::vector<std::string> arguments);

}  // namespace kxbench
