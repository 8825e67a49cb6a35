#include "bench/wiring/UnknownPairs.h"

namespace kxbench::wiring {

namespace {

bool IsKnown(CellState state) {
  return state == CellState::Connected || state == CellState::NotConnected ||
         state == CellState::ExcludedPair;
}

}  // namespace

std::vector<std::pair<std::int32_t, std::int32_t>> UnknownPairsIn(const TShortTestData& expectation) {
  std::vector<std::pair<std::int32_t, std::int32_t>> pairs;
  for (std::int32_t i = 0; i <= expectation.Highconnections(); ++i) {
    if (expectation.Get(i, i) == CellState::Suspended) continue;
    for (std::int32_t j = i + 1; j <= expectation.Highconnections(); ++j) {
      if (IsKnown(expectation.Get(i, j)) || expectation.Get(j, j) == CellState::Suspended) continue;
      pairs.emplace_back(expectation.von + i, expectation.von + j);
    }
  }
  return pairs;
}

}  // namespace kxbench::wiring
