#pragma once

#include <string>
#include <string_view>

namespace shorttest {

/// The text of a file as UTF-8, without a byte order mark. A file that begins with the byte order mark of
/// UTF-16 (either order) or UTF-8 is read as such; one without is UTF-8 when its bytes are valid UTF-8, else
/// in the ANSI code page on Windows, in Windows-1252 elsewhere. Nothing fails: code units that mean nothing
/// become U+FFFD.
std::string FileTextToUtf8(std::string_view bytes);

}  // namespace shorttest
