#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace kxbench::documents {

/// What a word in the head of a column says.
enum class HeaderWord {
  Unknown,
  From,
  To,
  WeakFrom,  ///< says a side only beside another word: "Pin A"
  WeakTo,
  Connector,
  Pin,
  Pins,
  Net,
  Signal,
  Wire,
  Splice,
  Channel,
  Other,
};

/// Whether a word says which end of a wire is meant.
bool IsSide(HeaderWord word);

/// The words of a head, in English or German, and what those of them mean that are known.
struct HeadWords {
  std::size_t count = 0;
  std::size_t known = 0;  ///< of them
  std::vector<HeaderWord> meanings;
};

/// Words are parted by what is no letter, where small letters are followed by a capital, and between letters
/// and digits; German ones may be put together: "Zielpin".
HeadWords WordsOfHead(std::string_view head);

}  // namespace kxbench::documents
