#include "bench/program/check/ScriptRun.h"

#include <algorithm>
#include <utility>

namespace kxbench {

namespace {

/// What the user is told of a step that failed, was cancelled or fell silent; empty for one that finished.
std::string StepMessage(const ScriptStep& step, const StepResult& result) {
  const std::string where = step.where.empty() ? step.call : step.where;
  switch (result.end) {
    case StepEnd::Failed:
      return where + ": " + result.failure;
    case StepEnd::Cancelled:
      return where + ": cancelled";
    case StepEnd::Silent:
      return where + ": the check ended without a record: it was not finished";
    case StepEnd::NotStored:
      return "error: result not stored: " + result.failure;
    case StepEnd::Finished:
      break;
  }
  return "";
}

}  // namespace

ExitStatus StepResult::Status() const {
  switch (end) {
    case StepEnd::Failed:
    case StepEnd::NotStored:
      return ExitStatus::Failed;
    case StepEnd::Cancelled:
    case StepEnd::Silent:
      return ExitStatus::Cancelled;
    case StepEnd::Finished:
      break;
  }
  return std::any_of(records.begin(), records.end(), IsFinding) ? ExitStatus::Findings
                                                                : ExitStatus::NoFindings;
}

RunObserver::~RunObserver() = default;
void RunObserver::StepEnded(const ScriptStep&, const StepResult&) {}
void RunObserver::RunEnded(const std::vector<ExitStatus>&, std::size_t) {}

ScriptRun::ScriptRun(RunHost host, RunObserver& observer) : host_(std::move(host)), observer_(observer) {}

void ScriptRun::Receive(const std::string& line) { records_.push_back(ParseRecord(line)); }

StepResult ScriptRun::RunStep(const ScriptStep& step) {
  records_.clear();
  StepResult result;
  try {
    host_.admit(step);
    CallExtension([&] { step.command->RunThreaded(*step.params); });
  } catch (const std::exception& error) {
    result.end = StepEnd::Failed;
    result.failure = host_.explain(error.what());
  }
  result.records = std::move(records_);
  if (result.end == StepEnd::Failed) return result;
  if (host_.cancelled()) {
    result.end = StepEnd::Cancelled;
  } else if (result.records.empty()) {
    result.end = StepEnd::Silent;
  }
  return result;
}

ExitStatus ScriptRun::Run(const Script& script) {
  // A step's records are not kept: a script may check a thousand devices a day.
  std::vector<ExitStatus> results;
  results.reserve(script.size());
  ExitStatus status = ExitStatus::NoFindings;
  for (const ScriptStep& step : script) {
    if (host_.cancelled()) {
      status = Graver(status, ExitStatus::Cancelled);
      host_.tell(StepMessage(step, {StepEnd::Cancelled, {}, ""}));
      break;
    }
    StepResult result = RunStep(step);
    host_.rethrowKept();
    host_.keep(result);
    results.push_back(result.Status());
    status = Graver(status, results.back());
    observer_.StepEnded(step, result);
    const std::string message = StepMessage(step, result);
    if (!message.empty()) host_.tell(message);
    if (result.Status() == ExitStatus::Failed || result.end == StepEnd::Cancelled) break;
  }
  observer_.RunEnded(results, script.size() - results.size());
  return status;
}

}  // namespace kxbench
