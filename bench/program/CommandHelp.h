#pragma once

#include <string>
#include <vector>

#include "bench/program/Command.h"

namespace kxbench {

inline constexpr const char* ProgramName = "kxbench";
inline constexpr const char* HelpOption = "-h,--help";
inline constexpr const char* VersionOption = "--version";

/// A command with all that it takes.
struct DeclaredCommand {
  Command* command;
  OptionList list;
};

/// What `kxbench --help` prints.
std::string ProgramHelp(const std::vector<DeclaredCommand>& commands);

/// What `kxbench COMMAND --help` prints.
std::string CommandHelp(const DeclaredCommand& declared);

}  // namespace kxbench
