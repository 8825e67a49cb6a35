#pragma once

#include <string>
#include <string_view>

namespace shorttest {

/// A text in Windows-1252 as UTF-8. Never fails: the five bytes without a character stand for the control
/// characters of the same number, as Windows itself reads them.
std::string Windows1252ToUtf8(std::string_view text);

/// A text in the system's 8-bit encoding (the ANSI code page on Windows, the encoding of the user's locale
/// elsewhere) as UTF-8. Bytes that mean nothing in that encoding are read as Windows-1252 rather than lost.
std::string SystemTextToUtf8(std::string_view text);

/// A UTF-8 text as a driver library hands it out: in the ANSI code page on Windows, in UTF-8 elsewhere,
/// whatever the locale.
std::string Utf8ToSystemText(const std::string& utf8);

}  // namespace shorttest
