#include "bench/program/Commands.h"

namespace kxbench {

CommandList AllCommands() {
  CommandList commands;
  commands.push_back(MakeCheckCommand());
  commands.push_back(MakeDiagnoseCommand());
  commands.push_back(MakeRunCommand());
  commands.push_back(MakeLearnCommand());
  commands.push_back(MakeEditCommand());
  commands.push_back(MakeInfoCommand());
  commands.push_back(MakeImportCommand());
  commands.push_back(MakeExportCommand());
  commands.push_back(MakeCompareCommand());
  commands.push_back(MakeDrawCommand());
  commands.push_back(MakeProveCommand());
  commands.push_back(MakeSelfTestCommand());
  commands.push_back(MakeStationCommand());
  commands.push_back(MakeResultsCommand());
  return commands;
}

}  // namespace kxbench
