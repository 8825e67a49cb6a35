#include "hardware/DriverText.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>

#include "platform/BrenmorHWDevice.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <iconv.h>
#include <langinfo.h>
#include <locale.h>
#endif

namespace shorttest {
namespace {

void AppendUtf8(std::string& utf8, std::uint32_t codePoint) {
  if (codePoint < 0x80) {
    utf8 += static_cast<char>(codePoint);
  } else if (codePoint < 0x800) {
    utf8 += static_cast<char>(0xC0 | (codePoint >> 6));
    utf8 += static_cast<char>(0x80 | (codePoint & 0x3F));
  } else {
    utf8 += static_cast<char>(0xE0 | (codePoint >> 12));
    utf8 += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
    utf8 += static_cast<char>(0x80 | (codePoint & 0x3F));
  }
}

// Every byte has a meaning here, so this never fails; the five unassigned ones pass as control characters.
std::string Windows1252ToUtf8(std::string_view text) {
  static constexpr std::array<std::uint16_t, 32> From0x80 = {
      0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
      0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
      0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
  std::string utf8;
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    AppendUtf8(utf8, byte >= 0x80 && byte < 0xA0 ? From0x80[byte - 0x80U] : byte);
  }
  return utf8;
}

#ifdef _WIN32

std::optional<std::string> FromSystemEncoding(std::string_view text) {
  if (text.empty()) return std::string();
  const int size = static_cast<int>(text.size());
  const int wideSize = MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, text.data(), size, nullptr, 0);
  if (wideSize <= 0) return std::nullopt;
  std::wstring wide(static_cast<std::size_t>(wideSize), L'\0');
  MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), wideSize);
  const int utf8Size = WideCharToMultiByte(CP_UTF8, 0, wide.data(), wideSize, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(utf8Size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), wideSize, utf8.data(), utf8Size, nullptr, nullptr);
  return utf8;
}

#else

// The encoding that the user's locale names. The C locale names none but ASCII; texts are UTF-8 there.
std::string SystemEncoding() {
  const locale_t user = newlocale(LC_CTYPE_MASK, "", nullptr);
  if (user == nullptr) return "UTF-8";
  const std::string encoding = nl_langinfo_l(CODESET, user);
  freelocale(user);
  return encoding == "ANSI_X3.4-1968" ? "UTF-8" : encoding;
}

std::optional<std::string> FromSystemEncoding(std::string_view text) {
  const iconv_t converter = iconv_open("UTF-8", SystemEncoding().c_str());
  if (converter == reinterpret_cast<iconv_t>(-1)) return std::nullopt;
  std::string input(text);
  std::string utf8(4 * input.size() + 4, '\0');  // no 8-bit character takes more than four bytes in UTF-8
  char* in = input.data();
  std::size_t inLeft = input.size();
  char* out = utf8.data();
  std::size_t outLeft = utf8.size();
  const std::size_t result = iconv(converter, &in, &inLeft, &out, &outLeft);
  iconv_close(converter);
  if (result == static_cast<std::size_t>(-1)) return std::nullopt;
  utf8.resize(utf8.size() - outLeft);
  return utf8;
}

#endif

}  // namespace

std::string SystemTextToUtf8(std::string_view text) {
  const auto converted = FromSystemEncoding(text);
  return converted ? *converted : Windows1252ToUtf8(text);
}

std::string TakeDriverErrorText() {
  const std::unique_ptr<char, void (*)(void*)> text(brenmor_bus_get_error_msg(), brenmor_free_mem);
  if (text == nullptr) return "the driver reports an error without a text";
  return SystemTextToUtf8(text.get());
}

}  // namespace shorttest
