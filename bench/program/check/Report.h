#pragma once

#include <functional>
#include <string>

#include "bench/program/check/ScriptRun.h"
#include "bench/program/output/Output.h"
#include "bench/wiring/ChannelNames.h"

namespace kxbench {

/// A step's findings as a table, its other values, and its verdict. Channels that have a name carry it.
std::string StepReport(const ScriptStep& step, const StepResult& result, bool colours,
                       const wiring::ChannelNames& names = wiring::ChannelNames());

/// The text of a finding with the names of its channels beside their numbers: "fehlende Verbindung zwischen 1
/// (A1-L) und 14 (B1-L)". The text of anything else comes back as it is.
std::string WithChannelNames(const std::string& text, const wiring::ChannelNames& names);

/// The last line for a script of several steps.
std::string RunVerdict(const std::vector<ExitStatus>& results, std::size_t left, bool colours);

/// Prints a readable report, step by step.
class ReportPrinter : public RunObserver {
 public:
  /// `beforeOutput` is called before anything is written, to clear the terminal of a progress bar.
  ReportPrinter(Output& output, bool colours, wiring::ChannelNames names, std::function<void()> beforeOutput);

  void StepEnded(const ScriptStep& step, const StepResult& result) override;
  void RunEnded(const std::vector<ExitStatus>& results, std::size_t left) override;

 private:
  Output& output_;
  bool colours_;
  wiring::ChannelNames names_;
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
