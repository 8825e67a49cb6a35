#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace shorttest {

/// What may stand at the start of a UTF-8 file and belongs to no text.
inline constexpr std::string_view Utf8ByteOrderMark = "\xEF\xBB\xBF";

/// Takes the byte order mark off the front of a text; returns whether there was one.
bool TakeByteOrderMark(std::string_view& text);

/// Appends a code point, at most U+10FFFF and no surrogate, to a UTF-8 text.
void AppendUtf8(std::string& utf8, char32_t codePoint);

/// Length in bytes of the well-formed character at the start of `text`; 0 when there is none: no overlong
/// form, no surrogate, nothing past U+10FFFF (Unicode 15, table 3-7).
std::size_t Utf8CharacterSize(std::string_view text);

/// Whether `text` is well-formed UTF-8.
bool IsUtf8(std::string_view text);

/// A text with U+FFFD for every byte that belongs to no well-formed character.
std::string ToWellFormedUtf8(std::string_view text);

/// UTF-16 as UTF-8; half a surrogate pair becomes U+FFFD.
std::string Utf8FromUtf16(std::u16string_view text);

}  // namespace shorttest
