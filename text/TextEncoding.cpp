#include "text/TextEncoding.h"

#include <cstddef>
#include <cstdint>

#include "text/SystemText.h"
#include "text/Utf8.h"

namespace shorttest {
namespace {

constexpr std::string_view Utf16LittleEndianMark = "\xFF\xFE";
constexpr std::string_view Utf16BigEndianMark = "\xFE\xFF";

bool TakeMark(std::string_view& bytes, std::string_view mark) {
  if (!bytes.starts_with(mark)) return false;
  bytes.remove_prefix(mark.size());
  return true;
}

std::string FromUtf16(std::string_view bytes, bool bigEndian) {
  std::u16string units;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto first = static_cast<std::uint8_t>(bytes[i]);
    const auto second = static_cast<std::uint8_t>(bytes[i + 1]);
    units += static_cast<char16_t>(bigEndian ? first * 256U + second : second * 256U + first);
  }
  return Utf8FromUtf16(units);
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

}  // namespace

std::string FileTextToUtf8(std::string_view bytes) {
  if (TakeMark(bytes, Utf16LittleEndianMark)) return FromUtf16(bytes, false);
  if (TakeMark(bytes, Utf16BigEndianMark)) return FromUtf16(bytes, true);
  if (TakeByteOrderMark(bytes)) return ToWellFormedUtf8(bytes);
  return IsUtf8(bytes) ? std::string(bytes) : FromEightBits(bytes);
}

}  // namespace shorttest
