#include "bench/learning/LearnDifference.h"

#include <algorithm>

namespace kxbench {

namespace {

std::string StateWord(CellState state) {
  switch (state) {
    case CellState::Unknown:
      return "unknown";
    case CellState::NotConnected:
      return "open";
    case CellState::Connected:
      return "connected";
    case CellState::ExcludedPair:
      return "excluded";
    case CellState::NotTestable:
      return "not testable";
    default:
      return "no state";
  }
}

}  // namespace

LearnDifference DifferenceOf(const TShortTestData& before, const TShortTestData& after) {
  LearnDifference difference;
  difference.oldFirstChannel = before.von;
  difference.oldLastChannel = before.bis;
  const std::int32_t first = difference.firstChannel = std::max(before.von, after.von);
  const std::int32_t last = difference.lastChannel = std::min(before.bis, after.bis);
  for (std::int32_t lower = first; lower <= last; ++lower) {
    for (std::int32_t higher = lower + 1; higher <= last; ++higher) {
      ++difference.pairs;
      const CellState was = before.Get(lower - before.von, higher - before.von);
      const CellState is = after.Get(lower - after.von, higher - after.von);
      if (was == is) continue;
      ++difference.changed;
      if (difference.listed.size() < MostListedPairs) {
        difference.listed.push_back({lower, higher, StateWord(was), StateWord(is)});
      }
    }
  }
  return difference;
}

}  // namespace kxbench
