#include "bench/wiring/Contradictions.h"

#include <algorithm>
#include <cstddef>

#include "bench/wiring/ChannelNets.h"

namespace kxbench::wiring {

namespace {

/// The channel before each on the shortest way from `start` to it, as matrix indices; -1 for those that no
/// way leads to.
std::vector<std::int32_t> WaysFrom(const TShortTestData& data, std::int32_t start) {
  std::vector<std::int32_t> before(static_cast<std::size_t>(data.Highconnections() + 1), -1);
  before[static_cast<std::size_t>(start)] = start;
  std::vector<std::int32_t> reached = {start};
  for (std::size_t next = 0; next < reached.size(); ++next) {
    for (std::int32_t j = 0; j <= data.Highconnections(); ++j) {
      std::int32_t& way = before[static_cast<std::size_t>(j)];
      if (way >= 0 || data.Get(reached[next], j) != CellState::Connected) continue;
      way = reached[next];
      reached.push_back(j);
    }
  }
  return before;
}

std::vector<std::int32_t> ChainTo(std::int32_t end, const std::vector<std::int32_t>& before,
                                  std::int32_t firstChannel) {
  std::vector<std::int32_t> chain = {firstChannel + end};
  for (std::int32_t i = end; before[static_cast<std::size_t>(i)] != i;) {
    i = before[static_cast<std::size_t>(i)];
    chain.push_back(firstChannel + i);
  }
  std::reverse(chain.begin(), chain.end());
  return chain;
}

}  // namespace

std::vector<Contradiction> ContradictionsIn(const TShortTestData& expectation) {
  std::vector<Contradiction> contradictions;
  for (const std::vector<std::int32_t>& net : NetsOf(expectation).nets) {
    for (std::size_t a = 0; a < net.size(); ++a) {
      std::vector<std::int32_t> before;  // found once a pair asks for it: files rarely contradict themselves
      for (std::size_t b = a + 1; b < net.size(); ++b) {
        const std::int32_t i = net[a] - expectation.von;
        const std::int32_t j = net[b] - expectation.von;
        if (expectation.Get(i, j) != CellState::NotConnected) continue;
        if (before.empty()) before = WaysFrom(expectation, i);
        contradictions.push_back({net[a], net[b], ChainTo(j, before, expectation.von)});
      }
    }
  }
  return contradictions;
}

}  // namespace kxbench::wiring
