#pragma once

#include <string>
#include <string_view>

namespace shorttest {

/// Takes the text of the driver's pending error, converts it to UTF-8 and gives the driver's memory back,
/// also when the conversion fails. A driver that hands out no text yields a text that says so.
std::string TakeDriverErrorText();

/// Converts a text from the system's 8-bit encoding (the ANSI code page on Windows, the locale's encoding
/// elsewhere) to UTF-8. Bytes that are none in that encoding are read as Windows-1252 rather than lost.
std::string SystemTextToUtf8(std::string_view text);

}  // namespace shorttest
