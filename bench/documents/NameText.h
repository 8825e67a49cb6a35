#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kxbench::documents {

/// Where the first control character is that belongs into no document: below U+0020, but for tab and line
/// breaks. npos when there is none.
inline std::size_t FindControlCharacter(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r') return i;
  }
  return std::string_view::npos;
}

/// Whether a text can be a connector's or a pin's name: it says something, in one line.
inline bool IsName(std::string_view text) {
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7F) return false;
  }
  return !text.empty();
}

/// Number of characters of a UTF-8 text.
inline std::size_t CharacterCount(std::string_view utf8) {
  std::size_t count = 0;
  for (const char c : utf8) {
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++count;
  }
  return count;
}

/// Any text of a document as part of a message: in one line, well-formed, at most 60 characters.
std::string ShownText(std::string_view text);

}  // namespace kxbench::documents
