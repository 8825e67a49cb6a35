#include "bench/program/check/RunScript.h"

#include "bench/program/check/Report.h"
#include "bench/program/system/System.h"

namespace kxbench {

namespace {

constexpr ChoiceWord<OutputFormat> ScriptFormatWords[] = {{"report", OutputFormat::Report},
                                                          {"records", OutputFormat::Records}};

}  // namespace

void RunOptions::DeclareIn(OptionList& list) {
  list.Words("--format", ScriptFormatWords, "A report to read, or the records alone as they are sent",
             format);
  DeclareStrictIn(list);
  results.DeclareIn(list);
}

void RunOptions::DeclareStrictIn(OptionList& list) {
  list.Flag("--strict", "Refuse an expectation file that leaves pairs unchecked, instead of warning", strict);
}

std::unique_ptr<RunObserver> PrinterOf(const RunOptions& options, Output& output, CheckSession& session) {
  const auto clearTerminal = [&session] { session.User().HideProgress(); };
  if (options.format == OutputFormat::Records) return std::make_unique<RecordPrinter>(output, clearTerminal);
  if (options.format == OutputFormat::Json) return std::make_unique<RunObserver>();
  return std::make_unique<ReportPrinter>(
      output, OutputShowsColours(), wiring::ChannelNames(session.CurrentProject().IniFile()), clearTerminal);
}

ExitStatus RunScript(const CommonOptions& common, const RunOptions& options, const std::string& file,
                     const ScriptSource& source) {
  ResultRecorder recorder(options.results);
  CheckSession session(common, options.strict, file, recorder);
  StandardOutput output;
  const auto printer = PrinterOf(options, output, session);
  return session.Run(session.Load(source), *printer);
}

}  // namespace kxbench
