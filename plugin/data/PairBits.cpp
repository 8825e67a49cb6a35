#include "plugin/data/PairBits.h"

#include <bit>

namespace shorttest {

std::optional<std::size_t> PairBits::NextKnownToOne(std::size_t i, std::size_t j, bool connectedOnly,
                                                    std::size_t from) const {
  Word wanted = ~Word{0} << from % WordBits;
  for (std::size_t word = from / WordBits; word < words_; ++word) {
    const Pairs& ofI = At(i, word);
    const Pairs& ofJ = At(j, word);
    wanted &= ofI.known ^ ofJ.known;
    if (connectedOnly) wanted &= ofI.connected | ofJ.connected;  // what is connected is known
    if (wanted != 0) return word * WordBits + static_cast<std::size_t>(std::countr_zero(wanted));
    wanted = ~Word{0};
  }
  return std::nullopt;
}

}  // namespace shorttest
