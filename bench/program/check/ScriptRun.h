#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "bench/program/host/Record.h"
#include "bench/program/host/Script.h"
#include "bench/program/system/ExitStatus.h"

namespace kxbench {

/// How a command ended.
enum class StepEnd {
  Finished,   ///< it sent its records
  Cancelled,  ///< the user stopped it
  Silent,     ///< it ended by itself and sent no record: what it was to find out is not known
  Failed,     ///< it threw
  NotStored,  ///< it ended, but its result could not be kept: there is no verdict
};

struct StepResult {
  StepEnd end = StepEnd::Finished;
  std::vector<Record> records;
  std::string failure;  ///< text of a failure, or why the result was not kept; else empty

  ExitStatus Status() const;
};

/// What a run reports while it goes on.
class RunObserver {
 public:
  virtual ~RunObserver();

  virtual void StepEnded(const ScriptStep& step, const StepResult& result);

  /// `results` has those of the steps that were started; `left` steps were not.
  virtual void RunEnded(const std::vector<ExitStatus>& results, std::size_t left);
};

/// The host as the run sees it.
struct RunHost {
  std::function<bool()> cancelled;               ///< the command reported a cancel, or the user interrupted
  std::function<void()> rethrowKept;             ///< throws what failed while a record was received
  std::function<void(const std::string&)> tell;  ///< shows the user one line
  std::function<void(const ScriptStep&)>
      admit;  ///< called before a step; what it throws is the step's failure
  std::function<std::string(const std::string&)>
      explain;  ///< a failure's text, with what the user can do about it
  std::function<void(StepResult&)>
      keep;  ///< keeps the result of a step before anybody is told of it; NotStored where it cannot
};

/// Runs a script's steps in order. A failure and a cancel end the run after the step.
class ScriptRun {
 public:
  ScriptRun(RunHost host, RunObserver& observer);

  /// Takes a record that the running command sent.
  void Receive(const std::string& line);

  /// Runs the steps. The result is the gravest of theirs, and a cancel where steps were left.
  ExitStatus Run(const Script& script);

 private:
  StepResult RunStep(const ScriptStep& step);

  RunHost host_;
  RunObserver& observer_;
  std::vector<Record> records_;
};

}  // namespace kxbench
