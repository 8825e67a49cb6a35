#include "ui/terminal/Printable.h"

#include <cstddef>

namespace kxbench {

namespace {

unsigned Byte(std::string_view text, std::size_t i) {
  return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
}

/// Bytes of the UTF-8 character at `i`; 0 when none starts there.
std::size_t CharacterLength(std::string_view text, std::size_t i) {
  const unsigned lead = Byte(text, i);
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  for (std::size_t k = 1; k < length; ++k) {
    if ((Byte(text, i + k) & 0xC0U) != 0x80U) return 0;
  }
  return length;
}

/// The controls of ASCII, and those that many terminals know beyond it (U+0080 to U+009F).
bool IsControl(std::string_view character) {
  const unsigned lead = Byte(character, 0);
  return lead < 0x20 || lead == 0x7F || (lead == 0xC2 && Byte(character, 1) < 0xA0);
}

}  // namespace

std::string Printable(std::string_view text) {
  std::string shown;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = CharacterLength(text, i);
    const std::string_view character = text.substr(i, length == 0 ? 1 : length);
    if (character == "\n") {
      shown += '\n';
    } else if (character == "\t") {
      shown += ' ';
    } else if (length == 0 || IsControl(character)) {
      shown += '?';
    } else {
      shown += character;
    }
    i += character.size();
  }
  return shown;
}

}  // namespace kxbench
