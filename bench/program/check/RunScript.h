#pragma once

#include <string>

#include "bench/program/check/CheckSession.h"
#include "bench/program/host/CommonOptions.h"
#include "bench/program/host/Script.h"
#include "bench/program/output/Output.h"
#include "bench/program/system/ExitStatus.h"

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
  ResultOptions results;

  /// Adds --format for a report or records, --strict, and those of results.
  void DeclareIn(OptionList& list);
  void DeclareStrictIn(OptionList& list);
};

/// What prints a run as its options say. The output and the session outlive it.
std::unique_ptr<RunObserver> PrinterOf(const RunOptions& options, Output& output, CheckSession& session);

/// Runs a script on the plug-in's commands and prints what they find. `file` is the one on the command line,
/// which may name the project. Throws Failure.
ExitStatus RunScript(const CommonOptions& common, const RunOptions& options, const std::string& file,
                     const ScriptSource& source);

}  // namespace kxbench
