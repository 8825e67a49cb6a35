#include "framework/Unicode.h"

#include <cstddef>
#include <cstdint>

namespace kx {

namespace {

constexpr char32_t Replacement = 0xFFFD;

bool IsHighSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool IsLowSurrogate(char32_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

void AppendUtf8(std::string& out, char32_t c) {
  const auto append = [&out](char32_t byte) { out += static_cast<char>(static_cast<unsigned char>(byte)); };
  if (c < 0x80) return append(c);
  if (c < 0x800) {
    append(0xC0 | (c >> 6));
  } else {
    if (c < 0x10000) {
      append(0xE0 | (c >> 12));
    } else {
      append(0xF0 | (c >> 18));
      append(0x80 | ((c >> 12) & 0x3F));
    }
    append(0x80 | ((c >> 6) & 0x3F));
  }
  append(0x80 | (c & 0x3F));
}

}  // namespace

std::string Utf8FromUtf16(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t c = text[i];
    if (IsHighSurrogate(c) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      c = 0x10000 + ((c - 0xD800) << 10) + (static_cast<char32_t>(text[++i]) - 0xDC00);
    } else if (IsHighSurrogate(c) || IsLowSurrogate(c)) {
      c = Replacement;
    }
    AppendUtf8(out, c);
  }
  return out;
}

bool IsUtf8(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i++]);
    if (lead < 0x80) continue;
    const int following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4) return false;
    char32_t c = lead & (0x3FU >> following);
    for (int k = 0; k < following; ++k, ++i) {
      if (i == text.size() || (static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U) return false;
      c = (c << 6) | (static_cast<unsigned char>(text[i]) & 0x3FU);
    }
    const bool overlong = (following == 2 && c < 0x800) || (following == 3 && c < 0x10000);
    if (overlong || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return false;
  }
  return true;
}

}  // namespace kx
