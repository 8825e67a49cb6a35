#pragma once

#include "host/framework/ScriptEnvironment.h"
#include "host/kxbench/Options.h"

namespace kxbench {

/// Sets PROJEKTPFAD and PROJECTNAME from --project, or to the current folder and the file's name without its
/// ending. Throws Failure when the project has no name or its folder does not exist.
void SetProjectVariables(const Options& options, ScriptEnvironment& environment);

}  // namespace kxbench
