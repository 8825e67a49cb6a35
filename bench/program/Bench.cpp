#include "bench/program/Bench.h"

#include <utility>
#include <variant>

#include "bench/program/CommandLine.h"
#include "bench/program/Commands.h"
#include "bench/program/output/Output.h"
#include "bench/program/proof/ProofWorker.h"
#include "ui/terminal/Interrupt.h"

namespace kxbench {

ExitStatus RunBench(std::vector<std::string> arguments) {
  if (!arguments.empty() && arguments.front() == ProofWorkerWord) return RunProofWorker(arguments);
  const CommandList commands = AllCommands();
  const auto parsed = ParseCommandLine(std::move(arguments), commands);
  if (const auto* information = std::get_if<Information>(&parsed)) {
    StandardOutput().Write(information->text);
    return ExitStatus::NoFindings;
  }
  const auto& chosen = std::get<Chosen>(parsed);
  return chosen.command->Run(chosen.common);
}

}  // namespace kxbench
