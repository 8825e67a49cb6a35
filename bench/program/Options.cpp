#include "bench/program/Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <system_error>

#include "bench/program/Failure.h"
#include "bench/program/Record.h"

namespace kxbench {

namespace {

constexpr const char* Footer = R"(Exit status:
  0  no findings
  1  findings: the device is not what it should be
  2  it could not run; one line on standard error says why
  3  cancelled, or ended without a result
  Where several apply, 2 goes before 3 and 3 before 1: a script with findings that is then
  cancelled ends with 3.

Ctrl-C, SIGTERM and SIGHUP press the cancel button, also that of the editor dialog; relays are
opened before the program ends. A second one ends it though its output is not read.
A script holds one command call a line; // starts a comment. Strings stand in double quotes,
a doubled quote stands for one; + joins texts; PROJEKTPFAD (which ends in a separator) and
PROJECTNAME are variables.)";

template <typename Integer>
bool ReadInteger(const std::string& text, Integer& value) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size();
}

ChannelRange ReadChannels(const std::string& text) {
  const std::size_t dash = text.find('-');
  ChannelRange range{};
  const bool read = dash != std::string::npos && ReadInteger(text.substr(0, dash), range.first) &&
                    ReadInteger(text.substr(dash + 1), range.last);
  if (!read || range.first < 1 || range.last < range.first) {
    throw Failure("--channels: expected FIRST-LAST with channel numbers from 1, such as 1-48, not " + text);
  }
  return range;
}

double ReadThreshold(const std::string& text) {
  const std::optional<double> ohm = NumberOf(text);
  if (!ohm || !(*ohm > 0)) throw Failure("--threshold: expected a resistance above 0 Ohm, not " + text);
  return *ohm;
}

/// One of the words that an option takes.
template <typename Choice>
struct Word {
  const char* text;
  Choice choice;
};

template <typename Choice, std::size_t Count>
Choice ReadWord(const std::string& option, const std::string& text, const Word<Choice> (&words)[Count]) {
  std::string expected;
  for (std::size_t i = 0; i < Count; ++i) {
    if (text == words[i].text) return words[i].choice;
    expected += (i == 0 ? "" : i + 1 == Count ? " or " : ", ") + std::string(words[i].text);
  }
  throw Failure(option + ": expected " + expected + ", not " + text);
}

constexpr Word<ProgressChoice> ProgressWords[] = {{"auto", ProgressChoice::Auto},
                                                  {"terminal", ProgressChoice::Terminal},
                                                  {"window", ProgressChoice::Window},
                                                  {"none", ProgressChoice::None}};
constexpr Word<OutputFormat> FormatWords[] = {{"report", OutputFormat::Report},
                                              {"records", OutputFormat::Records}};
constexpr Word<NearThreshold> NearThresholdWords[] = {
    {"ask", NearThreshold::Ask}, {"ignore", NearThreshold::Ignore}, {"cancel", NearThreshold::Cancel}};
constexpr Word<std::int32_t> VoltageControlWords[] = {{"0", 0}, {"1", 1}, {"2", 2}};

/// The command line as CLI11 reads it; what options mean is read afterwards.
struct RawOptions {
  BenchCommand command = BenchCommand::Info;
  std::string file;
  std::optional<std::string> plugin, device, project, progress, format;
  std::optional<std::string> channels, threshold, voltageControl, nearThreshold;
};

void AddOptions(CLI::App& app, RawOptions& raw) {
  const auto add = [&app](const char* name, std::optional<std::string>& value, const char* type,
                          const char* description) {
    return app.add_option(name, value, description)->type_name(type);
  };
  add("--plugin", raw.plugin, "PATH", "Plug-in library (default: ShortTest beside the program)");
  add("--device", raw.device, "FILE", "Device description that the simulated tester loads");
  add("--project", raw.project, "DIR/NAME", "Project folder and name (default: current folder, FILE's name)");
  add("--progress", raw.progress, "auto|terminal|window|none", "Where progress is shown (auto: terminal)");
  add("--format", raw.format, "report|records", "A report to read, or the records alone as they are sent");

  const char* learn = "Options of learn";
  add("--channels", raw.channels, "FIRST-LAST", "Channels; needed when FILE does not exist")->group(learn);
  add("--threshold", raw.threshold, "OHM", "Below this resistance two channels are connected")->group(learn);
  add("--voltage-control", raw.voltageControl, "0|1|2", "None; measure voltages; wait for discharge too")
      ->group(learn);
  add("--near-threshold", raw.nearThreshold, "ask|ignore|cancel",
      "On a resistance near the threshold (default: ask on a terminal, else ignore)")
      ->group(learn);
}

enum class FileArgument { None, Optional, Required };

void AddCommand(CLI::App& app, RawOptions& raw, BenchCommand command, const char* name,
                const char* description, FileArgument file) {
  CLI::App* subcommand = app.add_subcommand(name, description);
  // Options may stand behind the command too.
  subcommand->fallthrough();
  subcommand->group("Commands");
  subcommand->callback([&raw, command] { raw.command = command; });
  if (file == FileArgument::None) return;
  subcommand->add_option("FILE", raw.file)->required(file == FileArgument::Required)->type_name("");
}

Options Understood(const RawOptions& raw) {
  Options options;
  options.command = raw.command;
  options.file = raw.file;
  options.plugin = raw.plugin;
  options.device = raw.device;
  options.project = raw.project;
  if (raw.progress) options.progress = ReadWord("--progress", *raw.progress, ProgressWords);
  if (raw.format) options.format = ReadWord("--format", *raw.format, FormatWords);

  const bool learnOnly = raw.channels || raw.threshold || raw.voltageControl || raw.nearThreshold;
  if (learnOnly && raw.command != BenchCommand::Learn) {
    throw Failure("--channels, --threshold, --voltage-control and --near-threshold apply to learn alone");
  }
  if (raw.channels) options.channels = ReadChannels(*raw.channels);
  if (raw.threshold) options.thresholdOhm = ReadThreshold(*raw.threshold);
  if (raw.voltageControl) {
    options.voltageControl = ReadWord("--voltage-control", *raw.voltageControl, VoltageControlWords);
  }
  if (raw.nearThreshold) {
    options.nearThreshold = ReadWord("--near-threshold", *raw.nearThreshold, NearThresholdWords);
  }
  return options;
}

}  // namespace

std::variant<Options, Information> ParseOptions(std::vector<std::string> arguments) {
  RawOptions raw;
  CLI::App app("Runs commands of a test-system plug-in without the test system.", "kxbench");
  // "/home/x" is a file on every system, not an option.
  app.allow_windows_style_options(false);
  app.require_subcommand(1);
  app.set_version_flag("--version", "kxbench " KXBENCH_VERSION);
  app.footer(Footer);
  app.get_formatter()->column_width(34);
  app.get_formatter()->label("SUBCOMMAND", "COMMAND [FILE]");

  AddOptions(app, raw);
  AddCommand(app, raw, BenchCommand::Check, "check", "Check a device against the expectation file FILE",
             FileArgument::Required);
  AddCommand(app, raw, BenchCommand::Run, "run", "Run the script FILE", FileArgument::Required);
  AddCommand(app, raw, BenchCommand::Learn, "learn",
             "Learn a known-good device into the expectation file FILE", FileArgument::Required);
  AddCommand(app, raw, BenchCommand::Edit, "edit", "Open the editor dialog, on FILE or on a new file",
             FileArgument::Optional);
  AddCommand(app, raw, BenchCommand::Info, "info", "Describe the plug-in and its commands",
             FileArgument::None);

  try {
    std::reverse(arguments.begin(), arguments.end());  // the order that CLI11 takes them in
    app.parse(arguments);
  } catch (const CLI::CallForHelp&) {
    return Information{app.help()};
  } catch (const CLI::CallForVersion& version) {
    return Information{std::string(version.what()) + "\n"};
  } catch (const CLI::RequiredError& error) {
    if (app.get_subcommands().empty()) {
      throw Failure("expected a command: check, run, learn, edit or info (see kxbench --help)");
    }
    throw Failure(std::string(error.what()) + " (see kxbench --help)");
  } catch (const CLI::ParseError& error) {
    throw Failure(std::string(error.what()) + " (see kxbench --help)");
  }
  return Understood(raw);
}

}  // namespace kxbench
