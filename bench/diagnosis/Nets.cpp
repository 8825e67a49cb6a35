#include "bench/diagnosis/Nets.h"

#include <algorithm>
#include <iterator>

namespace kxbench::diagnosis {

Nets Ordered(Nets nets) {
  std::erase_if(nets, [](const Net& net) { return net.empty(); });
  for (Net& net : nets) std::sort(net.begin(), net.end());
  std::sort(nets.begin(), nets.end());
  return nets;
}

Net ChannelsOf(const Nets& nets) {
  Net channels;
  for (const Net& net : nets) channels.insert(channels.end(), net.begin(), net.end());
  std::sort(channels.begin(), channels.end());
  return channels;
}

Nets Difference(const Nets& a, const Nets& b) {
  Nets difference;
  std::set_difference(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(difference));
  return difference;
}

}  // namespace kxbench::diagnosis
