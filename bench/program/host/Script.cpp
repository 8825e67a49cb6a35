#include "bench/program/host/Script.h"

#include <string_view>
#include <utility>

#include "framework/AsciiCase.h"
#include "framework/ScriptCall.h"
#include "framework/ScriptExpression.h"
#include "framework/ScriptLexer.h"
#include "text/Lines.h"
#include "text/Utf8.h"

namespace kxbench {

namespace {

/// Throws TKXScriptError when a value is not of the declared type. Types that this host does not know are the
/// command's business.
void CheckType(const TKXValue& value, const TKXPrototypeParam& parameter, std::size_t column) {
  const bool isInteger = dynamic_cast<const kx::IntegerValue*>(&value) != nullptr;
  const bool mismatch = isInteger ? kx::EqualIgnoringCase(parameter.type, "String")
                                  : kx::EqualIgnoringCase(parameter.type, "Integer");
  if (mismatch) {
    throw TKXScriptError("the parameter " + parameter.name + " must be of type " + parameter.type, column);
  }
}

/// `line` without the blanks around it and without its comment, which ParseScriptCall has passed over.
std::string CallText(std::string_view line) {
  kx::ScriptLexer lexer(line, kx::Comments::AtEndOfLine);
  const std::size_t begin = lexer.Current().begin;
  std::size_t end = begin;
  for (; lexer.Current().kind != kx::TokenKind::End; lexer.Advance()) end = lexer.Current().end;
  return std::string(line.substr(begin, end - begin));
}

/// Reads and checks one line. Throws TKXScriptError with the column.
ScriptStep ReadCall(std::string_view line, const CommandFinder& findCommand,
                    const TKXEnvironment& environment) {
  const kx::ScriptCall call = kx::ParseScriptCall(line, environment);
  TKXFuncRunEdit* command = findCommand(call.name);
  if (command == nullptr) throw TKXScriptError("unknown command " + call.name, call.nameColumn);

  ScriptStep step{"", CallText(line), command, std::make_unique<TParamList>()};
  CallExtension([&] { command->ParseCommandLine(std::string(line), *step.params); });

  const std::vector<TKXPrototypeParam>& parameters = command->Parameters();
  for (std::size_t i = 0; i < parameters.size() && i < call.arguments.size(); ++i) {
    const kx::ScriptArgument& argument = call.arguments[i];
    std::unique_ptr<TKXValue> value = argument.expression->Evaluate();
    CheckType(*value, parameters[i], argument.column);
    step.params->Set(parameters[i].name, argument.text, std::move(value));
  }
  return step;
}

}  // namespace

Script ReadScript(const std::string& name, const std::string& text, const CommandFinder& findCommand,
                  const TKXEnvironment& environment) {
  std::string_view content = text;
  shorttest::TakeByteOrderMark(content);

  Script script;
  std::size_t number = 0;
  while (!content.empty()) {
    const std::string_view line = shorttest::TakeLine(content, shorttest::LineEnds::LineFeed).text;
    const std::string where = name + ":" + std::to_string(++number);
    if (!shorttest::IsUtf8(line)) throw Failure(where + ":1: the line is not UTF-8");
    if (kx::IsEmptyScriptLine(line)) continue;
    try {
      script.push_back(ReadCall(line, findCommand, environment));
      script.back().where = where;
    } catch (const TKXScriptError& error) {
      throw Failure(where + ":" + std::to_string(error.Column()) + ": " + error.what());
    }
  }
  if (script.empty()) throw Failure(name + ":1:1: the script calls no command");
  return script;
}

Script SingleCall(const std::string& command, const std::string& argument, const CommandFinder& findCommand,
                  const TKXEnvironment& environment) {
  const std::string line = command + "(" + kx::QuoteLiteral(argument) + ")";
  Script script;
  try {
    script.push_back(ReadCall(line, findCommand, environment));
  } catch (const TKXScriptError& error) {
    throw Failure(line + ": " + error.what());
  }
  return script;
}

}  // namespace kxbench
