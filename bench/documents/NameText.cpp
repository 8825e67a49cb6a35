#include "bench/documents/NameText.h"

#include "text/Utf8.h"

namespace kxbench::documents {

std::string ShownText(std::string_view text) {
  constexpr std::size_t MostShown = 60;
  std::string shown;
  for (std::size_t characters = 0; !text.empty(); ++characters) {
    if (characters == MostShown) return shown + "...";
    const std::size_t size = shorttest::Utf8CharacterSize(text);
    if (size == 0) {
      shorttest::AppendUtf8(shown, U'\uFFFD');
    } else {
      shown += IsName(text.substr(0, size)) ? text.substr(0, size) : " ";
    }
    text.remove_prefix(size == 0 ? 1 : size);
  }
  return shown;
}

}  // namespace kxbench::documents
