#include "bench/program/RunScript.h"

#include <memory>

#include "bench/program/DeviceHint.h"
#include "bench/program/ExpectationGate.h"
#include "bench/program/Extension.h"
#include "bench/program/Guard.h"
#include "bench/program/HostSetup.h"
#include "bench/program/Interaction.h"
#include "bench/program/Output.h"
#include "bench/program/RecordReceiver.h"
#include "bench/program/Report.h"
#include "bench/program/ScriptRun.h"
#include "bench/program/System.h"
#include "ui/terminal/Interrupt.h"

namespace kxbench {

namespace {

constexpr ChoiceWord<OutputFormat> FormatWords[] = {{"report", OutputFormat::Report},
                                                    {"records", OutputFormat::Records}};

std::unique_ptr<RunObserver> PrinterOf(const RunOptions& options, Output& output, Interaction& interaction,
                                       const Project& project) {
  const auto clearTerminal = [&interaction] { interaction.HideProgress(); };
  if (options.format == OutputFormat::Records) return std::make_unique<RecordPrinter>(output, clearTerminal);
  if (options.format == OutputFormat::Json) return std::make_unique<RunObserver>();
  return std::make_unique<ReportPrinter>(output, OutputShowsColours(),
                                         wiring::ChannelNames(project.IniFile()), clearTerminal);
}

void TellGuardOfFiles(const Script& script) {
  for (const ScriptStep& step : script) {
    for (const TKXPrototypeParam& parameter : step.command->Parameters()) {
      if (parameter.type != "String") continue;
      TellGuardOfExpectation(TStringValue::GetVal(step.params->GetValue(parameter.name)));
    }
  }
}

}  // namespace

void RunOptions::DeclareIn(OptionList& list) {
  list.Words("--format", FormatWords, "A report to read, or the records alone as they are sent", format);
  DeclareStrictIn(list);
}

void RunOptions::DeclareStrictIn(OptionList& list) {
  list.Flag("--strict", "Refuse an expectation file that leaves pairs unchecked, instead of warning", strict);
}

ExitStatus RunScript(const CommonOptions& common, const RunOptions& options, const std::string& file,
                     const ScriptSource& source) {
  HostSetup host(common, file);
  EnterGuard();
  Interaction interaction(SurfaceOf(common.progress), std::nullopt);
  StandardOutput output;
  const auto printer = PrinterOf(options, output, interaction, host.CurrentProject());
  const auto tell = [&interaction](const std::string& line) { interaction.Tell(line); };

  std::function<void(const std::string&)> receive;
  RecordReceiver receiver([&receive](const std::string& line) { receive(line); });
  const auto cancelled = [&host] { return host.TestState().Cancelled() || InterruptWatch::Interrupted(); };
  const ExpectationGate gate(options.strict, tell);
  ScriptRun run({cancelled, [&receiver] { receiver.RethrowKept(); }, tell,
                 [&gate](const ScriptStep& step) { gate.AdmitStep(step); },
                 [&common](const std::string& failure) { return WithDeviceHint(failure, common.device); }},
                *printer);
  receive = [&run](const std::string& line) { run.Receive(line); };

  const Extension extension(PluginFile(common.plugin), host.HostValues(receiver.Handle()));
  const Script script = source([&](const std::string& name) { return extension.FindCommand(name); },
                               host.Parser().GetEnvironment());
  gate.AdmitScript(script);
  TellGuardOfFiles(script);
  return run.Run(script);
}

}  // namespace kxbench
