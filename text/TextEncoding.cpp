#include "text/TextEncoding.h"

#include <cstddef>
#include <cstdint>

#include "text/SystemText.h"

namespace shorttest {
namespace {

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view Utf16LittleEndianMark = "\xFF\xFE";
constexpr std::string_view Utf16BigEndianMark = "\xFE\xFF";
constexpr char32_t Replacement = 0xFFFD;

bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

std::string FromUtf16(std::string_view bytes, bool bigEndian) {
  const auto unit = [&bytes, bigEndian](std::size_t i) -> char32_t {
    const auto first = static_cast<std::uint8_t>(bytes[i]);
    const auto second = static_cast<std::uint8_t>(bytes[i + 1]);
    return bigEndian ? first * 256U + second : second * 256U + first;
  };
  std::string utf8;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    char32_t c = unit(i);
    if (IsHighSurrogate(c) && i + 3 < bytes.size() && IsLowSurrogate(unit(i + 2))) {
      c = 0x10000 + ((c - 0xD800) << 10) + (unit(i + 2) - 0xDC00);
      i += 2;
    }
    AppendUtf8(utf8, IsHighSurrogate(c) || IsLowSurrogate(c) ? Replacement : c);
  }
  return utf8;
}

// What is not UTF-8: on Windows what the system's own ini functions read it as. Elsewhere the file comes from
// Windows all the same, and the most usual code page is the best guess.
std::string FromEightBits(std::string_view bytes) {
#ifdef _WIN32
  return SystemTextToUtf8(bytes);
#else
  return Windows1252ToUtf8(bytes);
#endif
}

// Length of the valid UTF-8 sequence at the start of `bytes`; 0 when there is none.
std::size_t SequenceLength(std::string_view bytes) {
  const auto lead = static_cast<std::uint8_t>(bytes[0]);
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((static_cast<std::uint8_t>(bytes[i]) & 0xC0) != 0x80) return 0;
  }
  // Overlong forms, surrogates and what lies beyond the last code point.
  const auto second = static_cast<std::uint8_t>(bytes[1]);
  if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) || (lead == 0xF0 && second < 0x90) ||
      (lead == 0xF4 && second > 0x8F)) {
    return 0;
  }
  return length;
}

bool IsUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t length = SequenceLength(bytes);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

bool TakeMark(std::string_view& bytes, std::string_view mark) {
  if (bytes.substr(0, mark.size()) != mark) return false;
  bytes.remove_prefix(mark.size());
  return true;
}

std::string FromMarkedUtf8(std::string_view bytes) {
  std::string utf8;
  while (!bytes.empty()) {
    const std::size_t length = SequenceLength(bytes);
    if (length == 0) {
      AppendUtf8(utf8, Replacement);
    } else {
      utf8 += bytes.substr(0, length);
    }
    bytes.remove_prefix(length == 0 ? 1 : length);
  }
  return utf8;
}

}  // namespace

std::string FileTextToUtf8(std::string_view bytes) {
  if (TakeMark(bytes, Utf16LittleEndianMark)) return FromUtf16(bytes, false);
  if (TakeMark(bytes, Utf16BigEndianMark)) return FromUtf16(bytes, true);
  if (TakeMark(bytes, Utf8Mark)) return FromMarkedUtf8(bytes);
  return IsUtf8(bytes) ? std::string(bytes) : FromEightBits(bytes);
}

}  // namespace shorttest
