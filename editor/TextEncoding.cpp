#include "editor/TextEncoding.h"

#include <array>
#include <cstddef>
#include <cstdint>

#ifdef _WIN32
#include <windows.h>
#endif

namespace shorttest {
namespace {

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view Utf16LittleEndianMark = "\xFF\xFE";
constexpr std::string_view Utf16BigEndianMark = "\xFE\xFF";
constexpr char32_t Replacement = 0xFFFD;

// Windows-1252 from 0x80 to 0x9F; the rest of it is Latin-1. The five bytes without a character stand for the
// control characters of the same number, as Windows itself reads them.
constexpr std::array<char32_t, 32> Windows1252High = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void Append(std::string& utf8, char32_t c) {
  const auto trail = [c](int shift) { return static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
  if (c < 0x80) {
    utf8 += static_cast<char>(c);
  } else if (c < 0x800) {
    utf8 += static_cast<char>(0xC0 | (c >> 6));
    utf8 += trail(0);
  } else if (c < 0x10000) {
    utf8 += static_cast<char>(0xE0 | (c >> 12));
    utf8 += trail(6);
    utf8 += trail(0);
  } else {
    utf8 += static_cast<char>(0xF0 | (c >> 18));
    utf8 += trail(12);
    utf8 += trail(6);
    utf8 += trail(0);
  }
}

std::string FromWindows1252(std::string_view bytes) {
  std::string utf8;
  for (const char byte : bytes) {
    const auto code = static_cast<std::uint8_t>(byte);
    Append(utf8, code >= 0x80 && code < 0xA0 ? Windows1252High[code - 0x80U] : code);
  }
  return utf8;
}

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
    Append(utf8, IsHighSurrogate(c) || IsLowSurrogate(c) ? Replacement : c);
  }
  return utf8;
}

#ifdef _WIN32

// The code page that the system's own ini functions read a file in.
std::string FromSystemEncoding(std::string_view bytes) {
  if (GetACP() == CP_UTF8) return FromWindows1252(bytes);
  const int size = static_cast<int>(bytes.size());
  std::wstring wide(bytes.size(), L'\0');  // never more units than bytes
  wide.resize(
      static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, wide.data(), size)));
  return FromUtf16({reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(wchar_t)}, false);
}

#else

// Ini files come from Windows, wherever they are read.
std::string FromSystemEncoding(std::string_view bytes) { return FromWindows1252(bytes); }

#endif

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
      Append(utf8, Replacement);
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
  return IsUtf8(bytes) ? std::string(bytes) : FromSystemEncoding(bytes);
}

}  // namespace shorttest
