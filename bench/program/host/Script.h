#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench/program/system/Failure.h"
#include "framework/kxcomponents.h"

namespace kxbench {

/// One command call of a script, checked and with its parameters evaluated.
struct ScriptStep {
  std::string where;  ///< "file:line", or empty for a command that comes from no script file
  std::string call;   ///< the call as written, without blanks around it and comment
  TKXFuncRunEdit* command;
  std::unique_ptr<TParamList> params;
};

using Script = std::vector<ScriptStep>;

/// Finds a command by its name, whatever the case; null when there is none.
using CommandFinder = std::function<TKXFuncRunEdit*(const std::string& name)>;

/// Reads and checks a whole script: one command call a line, blank lines, "//" comments. Every call names a
/// known command, has as many parameters as its prototype and of their types, and every expression can be
/// evaluated. `name` is the script file's for messages; `text` its content, UTF-8 with or without a
/// byte-order mark. Throws Failure "name:line:column: message" at the first fault, and when the script calls
/// nothing.
Script ReadScript(const std::string& name, const std::string& text, const CommandFinder& findCommand,
                  const TKXEnvironment& environment);

/// The script of the one call `command`("`argument`"). Throws Failure like ReadScript.
Script SingleCall(const std::string& command, const std::string& argument, const CommandFinder& findCommand,
                  const TKXEnvironment& environment);

}  // namespace kxbench
