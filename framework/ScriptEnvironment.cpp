#include "framework/ScriptEnvironment.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "framework/AsciiCase.h"
#include "framework/ScriptExpression.h"
#include "framework/ScriptLexer.h"

namespace kx {

namespace {

std::string LowerCase(std::string_view name) {
  std::string lower(name);
  std::transform(lower.begin(), lower.end(), lower.begin(), AsciiLower);
  return lower;
}

/// The string of a text that is one string literal and nothing else.
std::optional<std::string> StringOfLiteral(const std::string& text) {
  try {
    ScriptLexer lexer(text);
    const Token literal = lexer.Take(TokenKind::String, "a string");
    if (lexer.Current().kind == TokenKind::End) return literal.text;
  } catch (const TKXScriptError&) {
    // Not a literal: the answer is none.
  }
  return std::nullopt;
}

}  // namespace

ScriptEnvironment::ScriptEnvironment(PathRules pathRules) : pathRules_(pathRules) {}
ScriptEnvironment::~ScriptEnvironment() = default;

void ScriptEnvironment::SetVariable(std::string_view name, std::string value) {
  variables_[LowerCase(name)] = std::make_unique<TStringValue>(std::move(value));
}

const TKXValue* ScriptEnvironment::FindVariable(const std::string& name) const {
  const auto found = variables_.find(LowerCase(name));
  return found == variables_.end() ? nullptr : found->second.get();
}

std::string ScriptEnvironment::ReplaceProjectPath(const std::string& quotedPath) const {
  const TKXValue* projectPath = FindVariable(std::string(ProjectPathVariable));
  const std::optional<std::string> path = StringOfLiteral(quotedPath);
  if (projectPath == nullptr || !path) return quotedPath;

  const std::optional<std::string> rest = PathBelow(projectPath->GetText(), *path, pathRules_);
  if (!rest) return quotedPath;
  return std::string(ProjectPathVariable) + " + " + QuoteLiteral(*rest);
}

ScriptParser::ScriptParser() = default;
ScriptParser::~ScriptParser() = default;

std::unique_ptr<TKXExpression> ScriptParser::ParseExpression(const std::string& text) {
  try {
    return ParseScriptExpression(text, environment_);
  } catch (const TKXScriptError&) {
    return nullptr;  // a plain file name, for instance
  }
}

ScriptEnvironment& ScriptParser::GetEnvironment() { return environment_; }

}  // namespace kx
