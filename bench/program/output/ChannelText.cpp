#include "bench/program/output/ChannelText.h"

#include <cstddef>

namespace kxbench {

std::string ChannelListText(const std::vector<std::int32_t>& channels, const wiring::ChannelNames& names) {
  const auto named = [&](std::size_t i) { return !names.Name(channels[i]).empty(); };
  std::string text;
  for (std::size_t i = 0; i < channels.size();) {
    std::size_t last = i;
    while (!named(i) && last + 1 < channels.size() && channels[last + 1] == channels[last] + 1 &&
           !named(last + 1)) {
      ++last;
    }
    if (last - i < 2) last = i;
    text += (text.empty() ? "" : ", ") + names.Labelled(channels[i]);
    if (last > i) text += "-" + std::to_string(channels[last]);
    i = last + 1;
  }
  return text.empty() ? "none" : text;
}

std::string PairText(std::int32_t a, std::int32_t b, const wiring::ChannelNames& names) {
  return names.Labelled(a) + " - " + names.Labelled(b);
}

}  // namespace kxbench
