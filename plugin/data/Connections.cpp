#include "plugin/data/Connections.h"

#include <algorithm>

void TConnections::NoteChannel(std::size_t channel) {
  using shorttest::PairBits;
  for (std::size_t first = 0; first < size(); first += PairBits::WordBits) {
    const std::size_t count = std::min(size() - first, PairBits::WordBits);
    PairBits::Pairs pairs;
    for (std::size_t bit = 0; bit < count; ++bit) pairs.Set(bit, PairState(channel, first + bit));
    notes_.At(channel, first / PairBits::WordBits) = pairs;
  }
  notes_.SetNoted(channel);
}
