#include "text/Markup.h"

#include <cstddef>

#include "text/Utf8.h"

namespace shorttest {

namespace {

constexpr std::string_view ReplacementText = "\xEF\xBF\xBD";

/// U+FFFE and U+FFFF are characters to UTF-8, and none to XML.
bool IsNoCharacter(std::string_view character) {
  return character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF";
}

std::string AsciiMarkup(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&#39;";
    case '\t':
      return "&#9;";
    case '\n':
      return "&#10;";
    case '\r':
      return "&#13;";
    default:
      return static_cast<unsigned char>(c) < 0x20 ? std::string(ReplacementText) : std::string(1, c);
  }
}

}  // namespace

std::string MarkupText(std::string_view text) {
  std::string markup;
  while (!text.empty()) {
    const std::size_t size = Utf8CharacterSize(text);
    const std::string_view character = text.substr(0, size == 0 ? 1 : size);
    if (size == 0 || IsNoCharacter(character)) {
      markup += ReplacementText;
    } else if (size == 1) {
      markup += AsciiMarkup(character.front());
    } else {
      markup += character;
    }
    text.remove_prefix(character.size());
  }
  return markup;
}

}  // namespace shorttest
