#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kxbench::documents {

/// The sequence of wire colours that a cable's `color_code` names: DIN (DIN 47100), IEC (IEC 60757), BW, TEL,
/// TELALT (25-pair telephone cable), T568A, T568B. Empty for a code that is not known.
std::vector<std::string> WireVizColorCode(std::string_view code);

}  // namespace kxbench::documents
