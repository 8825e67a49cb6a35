#include "text/Utf8.h"

#include <cstdint>

namespace shorttest {
namespace {

constexpr char32_t Replacement = 0xFFFD;

bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

bool TakeByteOrderMark(std::string_view& text) {
  if (!text.starts_with(Utf8ByteOrderMark)) return false;
  text.remove_prefix(Utf8ByteOrderMark.size());
  return true;
}

void AppendUtf8(std::string& utf8, char32_t codePoint) {
  const auto trail = [codePoint](int shift) {
    return static_cast<char>(0x80 | ((codePoint >> shift) & 0x3F));
  };
  if (codePoint < 0x80) {
    utf8 += static_cast<char>(codePoint);
  } else if (codePoint < 0x800) {
    utf8 += static_cast<char>(0xC0 | (codePoint >> 6));
    utf8 += trail(0);
  } else if (codePoint < 0x10000) {
    utf8 += static_cast<char>(0xE0 | (codePoint >> 12));
    utf8 += trail(6);
    utf8 += trail(0);
  } else {
    utf8 += static_cast<char>(0xF0 | (codePoint >> 18));
    utf8 += trail(12);
    utf8 += trail(6);
    utf8 += trail(0);
  }
}

std::size_t Utf8CharacterSize(std::string_view text) {
  if (text.empty()) return 0;
  const auto byteAt = [text](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
  const std::uint8_t lead = byteAt(0);
  if (lead < 0x80) return 1;
  const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < size) return 0;
  for (std::size_t i = 1; i < size; ++i) {
    if ((byteAt(i) & 0xC0) != 0x80) return 0;
  }
  // Overlong forms, surrogates and what lies past the last code point.
  const std::uint8_t second = byteAt(1);
  const bool excluded = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
                        (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F);
  return excluded ? 0 : size;
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t size = Utf8CharacterSize(text);
    if (size == 0) return false;
    text.remove_prefix(size);
  }
  return true;
}

std::string ToWellFormedUtf8(std::string_view text) {
  std::string utf8;
  while (!text.empty()) {
    const std::size_t size = Utf8CharacterSize(text);
    if (size == 0) {
      AppendUtf8(utf8, Replacement);
    } else {
      utf8 += text.substr(0, size);
    }
    text.remove_prefix(size == 0 ? 1 : size);
  }
  return utf8;
}

std::string Utf8FromUtf16(std::u16string_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t unit = text[i];
    if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      unit = 0x10000 + ((unit - 0xD800) << 10) + (static_cast<char32_t>(text[++i]) - 0xDC00);
    } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
      unit = Replacement;
    }
    AppendUtf8(utf8, unit);
  }
  return utf8;
}

}  // namespace shorttest
