#pragma once

// For Windows only: its own texts, in UTF-16, and those of its code pages (CP_UTF8, CP_ACP).

#include <windows.h>

#include <string>
#include <string_view>

namespace shorttest {

/// A text of a code page as UTF-16. Bytes that mean nothing there are replaced, or, with `flags`
/// MB_ERR_INVALID_CHARS, make the result empty.
inline std::wstring WideText(std::string_view text, UINT codePage, DWORD flags = 0) {
  const int length = static_cast<int>(text.size());
  std::wstring wide(
      static_cast<std::size_t>(MultiByteToWideChar(codePage, flags, text.data(), length, nullptr, 0)), L'\0');
  MultiByteToWideChar(codePage, flags, text.data(), length, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

/// The reverse. What the code page does not have is replaced.
inline std::string NarrowText(std::wstring_view wide, UINT codePage) {
  const int length = static_cast<int>(wide.size());
  std::string text(static_cast<std::size_t>(
                       WideCharToMultiByte(codePage, 0, wide.data(), length, nullptr, 0, nullptr, nullptr)),
                   '\0');
  WideCharToMultiByte(codePage, 0, wide.data(), length, text.data(), static_cast<int>(text.size()), nullptr,
                      nullptr);
  return text;
}

}  // namespace shorttest
