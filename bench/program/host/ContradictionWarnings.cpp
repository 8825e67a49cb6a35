#include "bench/program/host/ContradictionWarnings.h"

#include <algorithm>

namespace kxbench {

namespace {

/// Pairs that contradict the rest of the file are told one by one up to this many.
constexpr std::size_t MostContradictions = 5;

}  // namespace

void TellContradictions(const std::string& file, const std::vector<wiring::Contradiction>& contradictions,
                        const wiring::ChannelNames& names, Interaction& interaction) {
  for (std::size_t i = 0; i < std::min(contradictions.size(), MostContradictions); ++i) {
    const wiring::Contradiction& contradiction = contradictions[i];
    std::string chain;
    for (const std::int32_t channel : contradiction.chain) {
      chain += (chain.empty() ? "" : " - ") + names.Labelled(channel);
    }
    std::string line = "warning: " + file + " contradicts itself: ";
    line += names.Labelled(contradiction.lower) + " and " + names.Labelled(contradiction.higher);
    line += " should not be connected, but " + chain + " should be";
    interaction.Tell(line);
  }
  if (contradictions.size() > MostContradictions) {
    interaction.Tell("warning: " + std::to_string(contradictions.size() - MostContradictions) +
                     " contradictions more in " + file);
  }
}

}  // namespace kxbench
