#include "bench/program/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>
#include <utility>

#include "bench/program/CommandHelp.h"
#include "bench/program/NearestWord.h"
#include "bench/program/system/Failure.h"

namespace kxbench {

namespace {

/// The command line, taken apart.
struct Typed {
  std::vector<std::string> words;    ///< what is no option: the command, its arguments
  std::vector<std::string> unknown;  ///< what looks like an option and is none of any command
  bool unknownFirst = false;         ///< one of those stands before the first word
  std::map<std::string, std::vector<std::string>> values;  ///< options as declared; one entry for each time
  bool help = false;
  bool version = false;
};

std::vector<DeclaredCommand> Declared(const CommandList& commands, CommonOptions& common) {
  std::vector<DeclaredCommand> declared;
  for (const auto& command : commands) {
    declared.push_back({command.get(), {}});
    common.DeclareIn(declared.back().list);
    command->Declare(declared.back().list);
  }
  return declared;
}

/// The spellings of an option: "-o,--output" has two.
std::vector<std::string> Spellings(const std::string& name) {
  std::vector<std::string> spellings;
  for (std::size_t begin = 0; begin <= name.size();) {
    const std::size_t end = std::min(name.find(',', begin), name.size());
    spellings.push_back(name.substr(begin, end - begin));
    begin = end + 1;
  }
  return spellings;
}

/// Every option of every command, each once.
std::map<std::string, CommandOption> AllOptions(const std::vector<DeclaredCommand>& commands) {
  std::map<std::string, CommandOption> all;
  for (const DeclaredCommand& command : commands) {
    for (const CommandOption& option : command.list.Options()) all.emplace(option.name, option);
  }
  return all;
}

void RefuseMisplacedValues(const std::vector<std::string>& arguments,
                           const std::map<std::string, CommandOption>& options) {
  for (const std::string& argument : arguments) {
    if (argument == "--") return;
    const std::size_t equals = argument.find('=');
    const auto option = options.find(argument.substr(0, equals));
    const bool isFlag = option != options.end() && option->second.type.empty();
    if (isFlag && equals != std::string::npos) throw Failure(option->first + " takes no value");
    // The parser would take the next word for the value.
    if (argument.size() > 3 && argument.starts_with("--") && argument.ends_with('=')) {
      throw Failure(argument.substr(0, argument.size() - 1) + " has an empty value");
    }
  }
}

void SortRemaining(const std::vector<std::string>& remaining, Typed& typed) {
  bool wordsOnly = false;
  for (const std::string& word : remaining) {
    const bool option = !wordsOnly && word.size() > 1 && word.front() == '-';
    if (!option) {
      typed.words.push_back(word);
    } else if (word == "--") {
      wordsOnly = true;
    } else {
      typed.unknownFirst = typed.unknownFirst || typed.words.empty();
      typed.unknown.push_back(word);
    }
  }
}

Typed TakeApart(std::vector<std::string> arguments, const std::map<std::string, CommandOption>& options) {
  RefuseMisplacedValues(arguments, options);
  CLI::App app("", ProgramName);
  app.allow_extras();
  // "/home/x" is a file on every system, not an option.
  app.allow_windows_style_options(false);
  app.set_help_flag();
  CLI::Option* help = app.add_flag(HelpOption)->disable_flag_override();
  CLI::Option* version = app.add_flag(VersionOption)->disable_flag_override();
  std::map<std::string, CLI::Option*> added;
  for (const auto& [name, option] : options) {
    CLI::Option* one = option.type.empty() ? app.add_flag(name)->disable_flag_override()
                                           : app.add_option(name)->expected(option.valueOptional ? 0 : 1, 1);
    added[name] = one->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  }
  const std::string last = arguments.empty() ? "" : arguments.back();
  std::reverse(arguments.begin(), arguments.end());  // the order that CLI11 takes them in
  try {
    app.parse(arguments);
  } catch (const CLI::ArgumentMismatch&) {
    throw Failure(last + " needs a value (see kxbench --help)");
  } catch (const CLI::ParseError& error) {
    throw Failure(std::string(error.what()) + " (see kxbench --help)");
  }

  Typed typed;
  typed.help = help->count() > 0;
  typed.version = version->count() > 0;
  for (const auto& [name, option] : added) {
    if (option->count() > 0) typed.values[name] = option->results();
  }
  SortRemaining(app.remaining(), typed);
  return typed;
}

std::string SeeHelp(const std::string& command = "") {
  return " (see kxbench " + command + (command.empty() ? "" : " ") + "--help)";
}

/// "; did you mean check?", or nothing.
std::string Suggestion(const std::string& typed, const std::vector<std::string>& known) {
  const std::string nearest = NearestWord(typed, known);
  return nearest.empty() ? "" : "; did you mean " + nearest + "?";
}

/// `command` is null when the option stands before anything that could be one.
[[noreturn]] void FailUnknownOption(const std::string& typed, const DeclaredCommand* command,
                                    const std::vector<DeclaredCommand>& commands) {
  std::vector<std::string> known = {"--help", VersionOption};
  for (const DeclaredCommand& declared : commands) {
    if (command != nullptr && command != &declared) continue;
    for (const CommandOption& option : declared.list.Options()) {
      for (const std::string& spelling : Spellings(option.name)) known.push_back(spelling);
    }
  }
  const std::string name = typed.substr(0, typed.find('='));
  throw Failure("unknown option " + name + Suggestion(name, known) +
                SeeHelp(command == nullptr ? "" : command->command->Name()));
}

std::string CommandNames(const std::vector<DeclaredCommand>& commands) {
  std::string names;
  for (std::size_t i = 0; i < commands.size(); ++i) {
    names += (i == 0 ? "" : i + 1 == commands.size() ? " or " : ", ") + commands[i].command->Name();
  }
  return names;
}

const DeclaredCommand* LookUp(const std::string& name, const std::vector<DeclaredCommand>& commands) {
  for (const DeclaredCommand& declared : commands) {
    if (declared.command->Name() == name) return &declared;
  }
  return nullptr;
}

[[noreturn]] void FailUnknownCommand(const std::string& name, const std::vector<DeclaredCommand>& commands) {
  std::vector<std::string> known;
  known.reserve(commands.size());
  for (const DeclaredCommand& declared : commands) known.push_back(declared.command->Name());
  const std::string suggestion = Suggestion(name, known);
  throw Failure("unknown command " + (name.empty() ? "\"\"" : name) +
                (suggestion.empty() ? "; expected " + CommandNames(commands) : suggestion) + SeeHelp());
}

void ReadArguments(const DeclaredCommand& declared, const std::vector<std::string>& words) {
  const std::vector<CommandArgument>& arguments = declared.list.Arguments();
  const std::string command = declared.command->Name();
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const CommandArgument& argument = arguments[i];
    if (i + 1 < words.size()) {
      if (words[i + 1].empty()) throw Failure(argument.name + " of " + command + " is empty");
      argument.read(words[i + 1]);
    } else if (argument.needed == Needed::Yes) {
      throw Failure(command + " needs " + argument.name + SeeHelp(command));
    }
  }
  if (words.size() > arguments.size() + 1) {
    throw Failure("unexpected argument " + words[arguments.size() + 1] + SeeHelp(command));
  }
}

/// The commands that have the option, "learn or edit".
std::string OwnersOf(const std::string& option, const std::vector<DeclaredCommand>& commands) {
  std::string owners;
  for (const DeclaredCommand& declared : commands) {
    if (declared.list.Find(option) == nullptr) continue;
    owners += (owners.empty() ? "" : " or ") + declared.command->Name();
  }
  return owners;
}

void ReadOptions(const DeclaredCommand& declared, const Typed& typed,
                 const std::vector<DeclaredCommand>& commands) {
  const std::string command = declared.command->Name();
  for (const auto& [name, values] : typed.values) {
    const CommandOption* option = declared.list.Find(name);
    const std::string spoken = Spellings(name).back();
    if (option == nullptr) {
      std::string fault = spoken + " is an option of " + OwnersOf(name, commands);
      fault += ", not of " + command + SeeHelp(command);
      throw Failure(fault);
    }
    if (!option->repeatable && !option->type.empty() && values.size() > 1) {
      throw Failure(spoken + " is given " + std::to_string(values.size()) + " times");
    }
    for (const std::string& value : values) {
      if (value.empty() && !option->valueOptional) throw Failure(spoken + " has an empty value");
      option->read(value);
    }
  }
}

}  // namespace

std::variant<Chosen, Information> ParseCommandLine(std::vector<std::string> arguments,
                                                   const CommandList& commands) {
  CommonOptions common;
  const std::vector<DeclaredCommand> declared = Declared(commands, common);
  const std::map<std::string, CommandOption> options = AllOptions(declared);
  const Typed typed = TakeApart(std::move(arguments), options);

  if (typed.version) return Information{std::string(ProgramName) + " " + KXBENCH_VERSION + "\n"};
  if (typed.words.empty()) {
    if (typed.help) return Information{ProgramHelp(declared)};
    if (!typed.unknown.empty()) FailUnknownOption(typed.unknown.front(), nullptr, declared);
    throw Failure("expected a command: " + CommandNames(declared) + SeeHelp());
  }
  const DeclaredCommand* found = LookUp(typed.words.front(), declared);
  if (found == nullptr && typed.unknownFirst) FailUnknownOption(typed.unknown.front(), nullptr, declared);
  if (found == nullptr) FailUnknownCommand(typed.words.front(), declared);
  const DeclaredCommand& chosen = *found;
  if (typed.help) return Information{CommandHelp(chosen)};
  if (!typed.unknown.empty()) FailUnknownOption(typed.unknown.front(), found, declared);
  ReadArguments(chosen, typed.words);
  ReadOptions(chosen, typed, declared);
  return Chosen{chosen.command, common};
}

}  // namespace kxbench
