#pragma once

#include <string>
#include <variant>
#include <vector>

#include "bench/program/Command.h"

namespace kxbench {

/// What to print instead of doing something: a help or the version.
struct Information {
  std::string text;
};

/// What to do: one of the commands, its members filled from the command line.
struct Chosen {
  Command* command;
  CommonOptions common;
};

/// Reads the command line (UTF-8, without the program's name) for one of `commands`, which outlive the
/// result. Options stand before the command's name or after it. Throws Failure with one line that names the
/// fault, and for an unknown word the nearest known one.
std::variant<Chosen, Information> ParseCommandLine(std::vector<std::string> arguments,
                                                   const CommandList& commands);

}  // namespace kxbench
