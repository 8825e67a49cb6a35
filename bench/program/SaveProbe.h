#pragma once

#include <string>

namespace kxbench {

/// Finds out whether `file` (UTF-8) can be saved, as far as that can be told before: its folder must exist,
/// and it must be a file that can be written, or the folder one that a file can be made in. Leaves nothing
/// behind. Throws Failure with the cause.
void RequireSavable(const std::string& file);

}  // namespace kxbench
