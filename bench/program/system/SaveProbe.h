#pragma once

#include <string>

namespace kxbench {

/// Finds out whether `file` (UTF-8) can be saved, as far as that can be known in advance: its folder must
/// exist, and it must be a file that can be written, or the folder one in which a file can be made. No trace
/// of it remains. Throws Failure with the cause.
void RequireSavable(const std::string& file);

/// Whether two names (UTF-8) are those of one file, be it there or not.
bool AreOneFile(const std::string& a, const std::string& b);

}  // namespace kxbench
