#include "bench/learning/NearMisses.h"

#include <algorithm>
#include <optional>

namespace kxbench {

namespace {

/// The reading of the unconnected channel index `i` against all the others; none where every pair has
/// another's.
std::optional<double> ReadingOf(const TShortTestData& data, std::int32_t i,
                                const std::vector<std::int32_t>& unconnected) {
  for (std::int32_t j = 0; j <= data.Highconnections(); ++j) {
    const bool entered = j != i && data.Get(i, j) == CellState::NotConnected;
    const bool lowerOne = j < i && std::binary_search(unconnected.begin(), unconnected.end(), data.von + j);
    if (entered && !lowerOne) return data.GetR(i, j);
  }
  return std::nullopt;
}

}  // namespace

std::vector<NearMiss> NearMissesOf(const TShortTestData& data, const std::vector<std::int32_t>& unconnected) {
  constexpr double Near = 1.1;
  std::vector<NearMiss> nearMisses;
  for (const std::int32_t channel : unconnected) {
    const std::optional<double> ohm = ReadingOf(data, channel - data.von, unconnected);
    if (ohm && *ohm >= data.Schwelle && *ohm < Near * data.Schwelle) nearMisses.push_back({channel, *ohm});
  }
  return nearMisses;
}

}  // namespace kxbench
