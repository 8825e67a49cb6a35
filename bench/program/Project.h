#pragma once

#include "bench/program/Options.h"
#include "framework/ScriptEnvironment.h"

namespace kxbench {

/// Sets PROJEKTPFAD and PROJECTNAME from --project, or to the current folder and the file's name without its
/// ending. Throws Failure when the project has no name or its folder does not exist.
void SetProjectVariables(const Options& options, kx::ScriptEnvironment& environment);

}  // namespace kxbench
