#pragma once

#include <functional>
#include <string>

#include "bench/program/CommonOptions.h"
#include "bench/program/ExitStatus.h"
#include "bench/program/Script.h"

namespace kxbench {

enum class OutputFormat {
  Report,
  Records,
  Json,  ///< nothing of the run itself: who asks for it prints something of their own
};

/// What the commands that run a script have in common.
struct RunOptions {
  OutputFormat format = OutputFormat::Report;
  bool strict = false;  ///< what is doubtful about an expectation file refuses it

  /// Adds --format for a report or records, and --strict.
  void DeclareIn(OptionList& list);
  void DeclareStrictIn(OptionList& list);
};

/// Makes the script, once the commands of the plug-in are known.
using ScriptSource =
    std::function<Script(const CommandFinder& findCommand, const TKXEnvironment& environment)>;

/// Runs a script on the plug-in's commands and prints what they find. `file` is the one on the command line,
/// which may name the project. Throws Failure.
ExitStatus RunScript(const CommonOptions& common, const RunOptions& options, const std::string& file,
                     const ScriptSource& source);

}  // namespace kxbench
