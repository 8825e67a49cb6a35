#pragma once

#include "bench/program/Command.h"

namespace kxbench {

// The commands, each in a file of its own in commands/.
std::unique_ptr<Command> MakeCheckCommand();
std::unique_ptr<Command> MakeDiagnoseCommand();
std::unique_ptr<Command> MakeResultsCommand();
std::unique_ptr<Command> MakeProveCommand();
std::unique_ptr<Command> MakeStationCommand();
std::unique_ptr<Command> MakeDrawCommand();
std::unique_ptr<Command> MakeRunCommand();
std::unique_ptr<Command> MakeLearnCommand();
std::unique_ptr<Command> MakeEditCommand();
std::unique_ptr<Command> MakeSelfTestCommand();
std::unique_ptr<Command> MakeInfoCommand();
std::unique_ptr<Command> MakeImportCommand();
std::unique_ptr<Command> MakeExportCommand();
std::unique_ptr<Command> MakeCompareCommand();

/// All of them, in the order of the program's help.
CommandList AllCommands();

}  // namespace kxbench
