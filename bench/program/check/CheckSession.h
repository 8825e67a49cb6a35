#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "bench/program/check/ResultRecorder.h"
#include "bench/program/check/ScriptRun.h"
#include "bench/program/host/CommonOptions.h"
#include "bench/program/host/ExpectationGate.h"
#include "bench/program/host/Extension.h"
#include "bench/program/host/HostSetup.h"
#include "bench/program/host/Interaction.h"
#include "bench/program/host/RecordReceiver.h"

namespace kxbench {

/// Makes the script, once the commands of the plug-in are known.
using ScriptSource =
    std::function<Script(const CommandFinder& findCommand, const TKXEnvironment& environment)>;

/// The stand-in host with its guard, its user interface and the plug-in: what scripts run in, one after the
/// other. Results are kept by the recorder, where there is anything to keep them for, before an observer sees
/// them.
class CheckSession {
 public:
  /// `file` is the one on the command line, which may name the project; with `strict` whatever is doubtful
  /// about an expectation file refuses it. Everything outlives the session. Throws Failure.
  CheckSession(const CommonOptions& common, bool strict, const std::string& file, ResultRecorder& recorder);

  /// Who shows the user a line, instead of standard error.
  void TellBy(std::function<void(const std::string&)> tell);

  /// Makes a script, loads the plug-in for the first one, and looks at the script's expectation files, whose
  /// doubts are told. Throws Failure.
  Script Load(const ScriptSource& source);

  /// Runs a script that Load made. May be called again.
  ExitStatus Run(const Script& script, RunObserver& observer);

  Interaction& User() { return *interaction_; }
  const Project& CurrentProject() const { return host_.CurrentProject(); }

  /// Lets a check begin after one that was cancelled.
  void ForgetCancel();

 private:
  RunHost HostOfRun();

  const CommonOptions& common_;
  ResultRecorder& recorder_;
  HostSetup host_;
  std::optional<Interaction> interaction_;
  std::function<void(const std::string&)> tell_;
  ScriptRun* running_ = nullptr;
  RecordReceiver receiver_;
  ExpectationGate gate_;
  std::optional<Extension> extension_;
};

}  // namespace kxbench
