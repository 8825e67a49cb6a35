#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace kxbench {

/// JSON on one line with blanks, `{"nets": [[1, 14], [2, 15]]}`, which the library writes only without or
/// with line ends. Numbers take the shortest form that reads back as the same number: 10, not 10.0. What is
/// not UTF-8 becomes U+FFFD.
std::string JsonLine(const nlohmann::ordered_json& json);

}  // namespace kxbench
