#include "bench/program/Bench.h"

#include <array>
#include <fstream>
#include <variant>

#include "bench/program/Extension.h"
#include "bench/program/Failure.h"
#include "bench/program/Guard.h"
#include "bench/program/HostSetup.h"
#include "bench/program/Interaction.h"
#include "bench/program/Learn.h"
#include "bench/program/Options.h"
#include "bench/program/Output.h"
#include "bench/program/RecordReceiver.h"
#include "bench/program/Report.h"
#include "bench/program/Script.h"
#include "bench/program/ScriptRun.h"
#include "bench/program/System.h"
#include "ui/terminal/Interrupt.h"

namespace kxbench {

namespace {

/// The command that kxbench's own commands check and edit use.
constexpr const char* CheckCommand = "ShortTest";

std::filesystem::path PluginFile(const Options& options) {
  if (options.plugin) return PathFromUtf8(*options.plugin);
  return ProgramFolder() / LibraryFileName("ShortTest", LibraryPrefix::None);
}

std::string ReadScriptFile(const std::string& name) {
  std::ifstream file(PathFromUtf8(name), std::ios::binary);
  std::string text;
  for (std::array<char, 4096> part{}; file.read(part.data(), part.size()) || file.gcount() > 0;) {
    text.append(part.data(), static_cast<std::size_t>(file.gcount()));
  }
  // A folder can be opened like a file on some systems, but not read.
  if (!file.is_open() || file.bad()) throw Failure("cannot read the script " + name);
  return text;
}

Script ScriptOf(const Options& options, const Extension& extension, const TKXEnvironment& environment) {
  const auto find = [&](const std::string& name) { return extension.FindCommand(name); };
  if (options.command == BenchCommand::Check)
    return SingleCall(CheckCommand, options.file, find, environment);
  return ReadScript(options.file, ReadScriptFile(options.file), find, environment);
}

std::unique_ptr<RunObserver> PrinterOf(const Options& options, Output& output, Interaction& interaction) {
  const auto clearTerminal = [&interaction] { interaction.HideProgress(); };
  if (options.format == OutputFormat::Records) return std::make_unique<RecordPrinter>(output, clearTerminal);
  return std::make_unique<ReportPrinter>(output, OutputShowsColours(), clearTerminal);
}

void TellGuardOfFiles(const Script& script) {
  for (const ScriptStep& step : script) {
    for (const TKXPrototypeParam& parameter : step.command->Parameters()) {
      if (parameter.type != "String") continue;
      TellGuardOfExpectation(TStringValue::GetVal(step.params->GetValue(parameter.name)));
    }
  }
}

ExitStatus RunScript(const Options& options) {
  HostSetup host(options);
  EnterGuard();
  Interaction interaction(SurfaceOf(options.progress), std::nullopt);
  StandardOutput output;
  const auto printer = PrinterOf(options, output, interaction);

  std::function<void(const std::string&)> receive;
  RecordReceiver receiver([&receive](const std::string& line) { receive(line); });
  const auto cancelled = [&host] { return host.TestState().Cancelled() || InterruptWatch::Interrupted(); };
  ScriptRun run({cancelled, [&receiver] { receiver.RethrowKept(); },
                 [&interaction](const std::string& line) { interaction.Tell(line); }},
                *printer);
  receive = [&run](const std::string& line) { run.Receive(line); };

  const Extension extension(PluginFile(options), host.HostValues(receiver.Handle()));
  const Script script = ScriptOf(options, extension, host.Parser().GetEnvironment());
  TellGuardOfFiles(script);
  return run.Run(script);
}

ExitStatus ShowInfo(const Options& options) {
  HostSetup host(options);
  Interaction interaction(Surface::Silent, std::nullopt);
  RecordReceiver receiver([](const std::string&) {});
  const Extension extension(PluginFile(options), host.HostValues(receiver.Handle()));
  StandardOutput().Write(DescribeExtension(extension));
  return ExitStatus::NoFindings;
}

ExitStatus EditFile(const Options& options) {
  HostSetup host(options);
  EnterGuard();
  TellGuardOfExpectation(options.file);
  Interaction interaction(Surface::Windows, std::nullopt);
  RecordReceiver receiver([](const std::string&) {});
  const Extension extension(PluginFile(options), host.HostValues(receiver.Handle()));
  const Script script = SingleCall(
      CheckCommand, options.file, [&](const std::string& name) { return extension.FindCommand(name); },
      host.Parser().GetEnvironment());

  const ScriptStep& step = script.front();
  // Without a file the dialog opens as for a command that was never edited.
  if (options.file.empty()) step.params->Set(step.command->Parameters().front().name, "", nullptr);
  bool confirmed = false;
  std::string line;
  CallExtension([&] {
    confirmed = step.command->Edit(*step.params);
    if (confirmed) step.command->GetDescription(line, *step.params);
  });
  if (!confirmed) return ExitStatus::Cancelled;
  StandardOutput().Write(line + "\n");
  return ExitStatus::NoFindings;
}

}  // namespace

ExitStatus RunBench(std::vector<std::string> arguments) {
  const auto parsed = ParseOptions(std::move(arguments));
  if (const auto* information = std::get_if<Information>(&parsed)) {
    StandardOutput().Write(information->text);
    return ExitStatus::NoFindings;
  }
  const Options& options = std::get<Options>(parsed);
  switch (options.command) {
    case BenchCommand::Info:
      return ShowInfo(options);
    case BenchCommand::Check:
    case BenchCommand::Run:
      return RunScript(options);
    case BenchCommand::Edit:
      return EditFile(options);
    case BenchCommand::Learn:
      break;
  }
  return LearnDevice(options);
}

}  // namespace kxbench
