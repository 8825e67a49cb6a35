#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace data_test {

/// The lines of an expectation file that are not ours, without their line ends: everything but the first
/// headers of our sections, the first of each of our keys in them, and the data blocks with all their lines.
/// Saving must leave them as they are. Found by a reading of its own.
std::vector<std::string> ForeignLines(std::string_view content);

}  // namespace data_test
