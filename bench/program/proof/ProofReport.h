#pragma once

#include <string>

#include "bench/proof/Proof.h"
#include "bench/wiring/ChannelNames.h"

namespace kxbench {

/// The proof to read on a terminal: a table of the classes, what escapes and why, the verdict.
std::string ProofReport(const proof::Proof& proof, const wiring::ChannelNames& names);

}  // namespace kxbench
