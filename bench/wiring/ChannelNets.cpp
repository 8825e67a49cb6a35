#include "bench/wiring/ChannelNets.h"

#include <algorithm>
#include <cstddef>

namespace kxbench::wiring {

namespace {

/// The net of channel index `start`, ascending channel numbers; marks its members in `seen`.
std::vector<std::int32_t> NetOf(const TShortTestData& data, std::int32_t start, std::vector<bool>& seen) {
  std::vector<std::int32_t> reached = {start};
  seen[static_cast<std::size_t>(start)] = true;
  for (std::size_t next = 0; next < reached.size(); ++next) {
    for (std::int32_t j = 0; j <= data.Highconnections(); ++j) {
      if (seen[static_cast<std::size_t>(j)] || data.Get(reached[next], j) != CellState::Connected) continue;
      seen[static_cast<std::size_t>(j)] = true;
      reached.push_back(j);
    }
  }
  std::sort(reached.begin(), reached.end());
  for (std::int32_t& channel : reached) channel += data.von;
  return reached;
}

}  // namespace

ChannelNets NetsOf(const TShortTestData& data) {
  ChannelNets result;
  std::vector<bool> seen(static_cast<std::size_t>(data.Highconnections() + 1), false);
  for (std::int32_t i = 0; i <= data.Highconnections(); ++i) {
    if (data.Get(i, i) == CellState::Suspended) {
      result.suspended.push_back(data.von + i);
    } else if (!seen[static_cast<std::size_t>(i)]) {
      std::vector<std::int32_t> net = NetOf(data, i, seen);
      if (net.size() > 1) {
        result.nets.push_back(std::move(net));
      } else {
        result.unconnected.push_back(net.front());
      }
    }
  }
  return result;
}

}  // namespace kxbench::wiring
