#pragma once

#include <string>
#include <string_view>

namespace kxbench {

/// `text`, which is somebody else's, made harmless to a terminal: each control character but the line feed,
/// and each byte that is not UTF-8, has become a question mark, a tab a blank.
std::string Printable(std::string_view text);

}  // namespace kxbench
