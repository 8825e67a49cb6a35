#pragma once

#include <string>
#include <string_view>

namespace shorttest {

/// The SHA-256 of `bytes` (FIPS 180-4) as 64 lower-case hexadecimal digits. It says which file a result was
/// made with; nothing is kept secret with it, so that no library is needed that only one of the systems has.
std::string Sha256(std::string_view bytes);

}  // namespace shorttest
