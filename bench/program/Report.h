#pragma once

#include <functional>
#include <string>

#include "bench/program/Output.h"
#include "bench/program/ScriptRun.h"

namespace kxbench {

/// A step's findings as a table, its other values, and its verdict.
std::string StepReport(const ScriptStep& step, const StepResult& result, bool colours);

/// The last line for a script of several steps.
std::string RunVerdict(const std::vector<StepResult>& results, std::size_t left, bool colours);

/// Prints a readable report, step by step.
class ReportPrinter : public RunObserver {
 public:
  /// `beforeOutput` is called before anything is written, to clear the terminal of a progress bar.
  ReportPrinter(Output& output, bool colours, std::function<void()> beforeOutput);

  void StepEnded(const ScriptStep& step, const StepResult& result) override;
  void RunEnded(const std::vector<StepResult>& results, std::size_t left) override;

 private:
  Output& output_;
  bool colours_;
  std::function<void()> beforeOutput_;
  bool first_ = true;
};

/// Prints the records alone, those of a step when it has ended: while it runs, relays are closed.
class RecordPrinter : public RunObserver {
 public:
  RecordPrinter(Output& output, std::function<void()> beforeOutput);

  void StepEnded(const ScriptStep& step, const StepResult& result) override;

 private:
  Output& output_;
  std::function<void()> beforeOutput_;
};

}  // namespace kxbench
