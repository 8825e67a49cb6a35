#pragma once

#include <optional>
#include <string>

#include "framework/ScriptEnvironment.h"

namespace kxbench {

/// The project that a command works in: where its folder is, and what it is called.
struct Project {
  std::string path;  ///< absolute, UTF-8, ends in a separator
  std::string name;

  /// The project's ini file, which names the channels.
  std::string IniFile() const { return path + name + ".ini"; }
};

/// The project of --project ("folder/name"); without that the current folder, and the name of `file` without
/// its ending. Throws Failure when the project has no name or its folder does not exist.
Project ProjectOf(const std::optional<std::string>& option, const std::string& file);

/// Sets PROJEKTPFAD and PROJECTNAME.
void SetProjectVariables(const Project& project, kx::ScriptEnvironment& environment);

}  // namespace kxbench
