#pragma once

#include <functional>
#include <optional>
#include <string>

#include "bench/program/host/Script.h"
#include "bench/wiring/ExpectationFacts.h"

namespace kxbench {

/// The script command that checks a device against the expectation file it names.
inline constexpr const char* CheckCommandName = "ShortTest";

/// The expectation file that a step checks with; none for another command.
std::optional<std::string> ExpectationOf(const ScriptStep& step);

/// Looks at expectation files before anything is measured with them: the plug-in reads any file as it stands,
/// and a device could pass because its file is damaged.
class ExpectationGate {
 public:
  /// `warn` gets a line for each thing that a file leaves unchecked; with `strict` that refuses the file.
  ExpectationGate(bool strict, std::function<void(const std::string& line)> warn);

  /// Lets the file pass and returns what it holds, or throws Failure: it cannot be read, or nothing can be
  /// checked with it. `where` is the script line that names it, or empty.
  wiring::ExpectationFacts AdmitFile(const std::string& where, const std::string& file) const;

  /// Lets the files of a whole script pass, before its first line runs.
  void AdmitScript(const Script& script) const;

  /// The same just before a line runs, because its file may have changed since; does not warn again.
  void AdmitStep(const ScriptStep& step) const;

 private:
  bool strict_;
  std::function<void(const std::string& line)> warn_;
};

}  // namespace kxbench
