#include "text/SystemText.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "text/Utf8.h"

#ifdef _WIN32
#include "text/WideText.h"
#else
#include <iconv.h>
#include <langinfo.h>
#include <locale.h>
#endif

namespace shorttest {
namespace {

// Windows-1252 from 0x80 to 0x9F; the rest of it is Latin-1.
constexpr std::array<char32_t, 32> Windows1252High = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

#ifdef _WIN32

std::optional<std::string> FromSystemEncoding(std::string_view text) {
  const std::wstring wide = WideText(text, CP_ACP, MB_ERR_INVALID_CHARS);
  if (wide.empty() && !text.empty()) return std::nullopt;
  return NarrowText(wide, CP_UTF8);
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

std::string Windows1252ToUtf8(std::string_view text) {
  std::string utf8;
  for (const char character : text) {
    const auto byte = static_cast<std::uint8_t>(character);
    AppendUtf8(utf8, byte >= 0x80 && byte < 0xA0 ? Windows1252High[byte - 0x80U] : byte);
  }
  return utf8;
}

std::string SystemTextToUtf8(std::string_view text) {
  const auto converted = FromSystemEncoding(text);
  return converted ? *converted : Windows1252ToUtf8(text);
}

#ifdef _WIN32
std::string Utf8ToSystemText(const std::string& utf8) { return NarrowText(WideText(utf8, CP_UTF8), CP_ACP); }
#else
std::string Utf8ToSystemText(const std::string& utf8) { return utf8; }
#endif

}  // namespace shorttest
