#pragma once

#include <string>
#include <vector>

#include "bench/program/host/Interaction.h"
#include "bench/wiring/ChannelNames.h"
#include "bench/wiring/Contradictions.h"

namespace kxbench {

/// Warns of the contradictions in an expectation `file`, with the chain of each. Of many the first are told,
/// and the number of the others.
void TellContradictions(const std::string& file, const std::vector<wiring::Contradiction>& contradictions,
                        const wiring::ChannelNames& names, Interaction& interaction);

}  // namespace kxbench
