#include "framework/ScriptCall.h"

#include <utility>

#include "framework/ScriptExpression.h"
#include "framework/ScriptLexer.h"

namespace kx {

namespace {

ScriptArgument ParseArgument(ScriptLexer& lexer, std::string_view line, const TKXEnvironment& environment) {
  const std::size_t begin = lexer.Current().begin;
  const std::size_t column = lexer.CurrentColumn();
  auto expression = ParseExpressionAt(lexer, environment);

  std::string_view text = line.substr(begin, lexer.Current().begin - begin);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return {std::string(text), column, std::move(expression)};
}

}  // namespace

bool IsEmptyScriptLine(std::string_view line) {
  const std::size_t first = line.find_first_not_of(" \t");
  return first == std::string_view::npos || line.substr(first).starts_with("//");
}

ScriptCall ParseScriptCall(std::string_view line, const TKXEnvironment& environment) {
  ScriptLexer lexer(line, Comments::AtEndOfLine);
  ScriptCall call;
  call.nameColumn = lexer.CurrentColumn();
  call.endColumn = call.nameColumn;
  call.name = lexer.Take(TokenKind::Name, "a command").text;

  if (lexer.Current().kind == TokenKind::Open) {
    lexer.Advance();
    while (lexer.Current().kind != TokenKind::Close) {
      if (!call.arguments.empty()) lexer.Take(TokenKind::Comma, "'+', ',' or ')'");
      call.arguments.push_back(ParseArgument(lexer, line, environment));
    }
    call.endColumn = lexer.CurrentColumn();
    lexer.Advance();
  }
  if (lexer.Current().kind != TokenKind::End) {
    const bool hasList = call.endColumn != call.nameColumn;
    lexer.FailExpected(hasList ? "the end of the line" : "'('");
  }
  return call;
}

}  // namespace kx
