#pragma once

#include <string>
#include <string_view>

#include "contracts/Export.h"

namespace kx {

/// UTF-16 as UTF-8; half a surrogate pair becomes U+FFFD.
KX_API std::string Utf8FromUtf16(std::u16string_view text);

/// True when `text` is well-formed UTF-8.
KX_API bool IsUtf8(std::string_view text);

}  // namespace kx
