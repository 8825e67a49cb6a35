#pragma once

#include <string>
#include <vector>

namespace kxbench {

/// The word of `known` that `typed` was most likely meant to be: the one reached with the fewest letters
/// added, left out, replaced or exchanged with their neighbour; of equals the first. Empty when none is near:
/// when more than a third of the longer word's letters, and more than one, would have to change.
std::string NearestWord(const std::string& typed, const std::vector<std::string>& known);

}  // namespace kxbench
