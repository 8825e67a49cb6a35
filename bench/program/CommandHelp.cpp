#include "bench/program/CommandHelp.h"

#include <CLI/CLI.hpp>

namespace kxbench {

namespace {

constexpr const char* ProgramNotes =
    R"(kxbench COMMAND --help lists what a command takes. Options may stand before the command, too.

Exit status:
  0  no findings
  1  findings: the device is not what it should be
  2  it could not run; one line on standard error says why
  3  cancelled, or ended without a result
  Where several apply, 2 goes before 3 and 3 before 1: a script with findings that is then
  cancelled ends with 3.

Ctrl-C, SIGTERM and SIGHUP press the cancel button, also that of the editor dialog; relays are
opened before the program ends. A second one ends it though its output is not read.)";

std::string HelpText(CLI::App& page, const std::string& notes) {
  page.footer(notes);
  page.set_help_flag(HelpOption, "Print this help message and exit");
  page.get_formatter()->column_width(34);
  return page.help();
}

}  // namespace

std::string ProgramHelp(const std::vector<DeclaredCommand>& commands) {
  CLI::App page("Runs commands of a test-system plug-in without the test system.", ProgramName);
  page.set_version_flag(VersionOption, "");
  page.require_subcommand(1);
  page.get_formatter()->label("SUBCOMMAND", "COMMAND [FILE]");
  for (const DeclaredCommand& declared : commands) {
    page.add_subcommand(declared.command->Name(), declared.command->Summary())->group("Commands");
  }
  return HelpText(page, ProgramNotes);
}

std::string CommandHelp(const DeclaredCommand& declared) {
  CLI::App page(declared.command->Summary(), ProgramName + (" " + declared.command->Name()));
  for (const CommandArgument& argument : declared.list.Arguments()) {
    page.add_option(argument.name, argument.description)
        ->required(argument.needed == Needed::Yes)
        ->type_name("");
  }
  for (const CommandOption& option : declared.list.Options()) {
    if (!option.listed) continue;
    CLI::Option* shown = option.type.empty() ? page.add_flag(option.name, option.description)
                                             : page.add_option(option.name, option.description);
    if (!option.type.empty()) shown->type_name(option.valueOptional ? "[" + option.type + "]" : option.type);
  }
  return HelpText(page, declared.command->Notes());
}

}  // namespace kxbench
