#include "framework/Prototype.h"

#include <algorithm>
#include <stdexcept>

#include "framework/AsciiCase.h"
#include "framework/ScriptLexer.h"

namespace kx {

namespace {

/// "First, Second : Type", appended to `parameters`.
void ParseGroup(ScriptLexer& lexer, std::vector<TKXPrototypeParam>& parameters) {
  const std::size_t first = parameters.size();
  for (;;) {
    const std::size_t begin = lexer.Current().begin;
    const std::string name = lexer.Take(TokenKind::Name, "a parameter").text;
    const bool taken = std::any_of(parameters.begin(), parameters.end(),
                                   [&](const auto& other) { return EqualIgnoringCase(other.name, name); });
    if (taken) lexer.FailAt(begin, "there is a parameter " + name + " already");
    parameters.push_back({name, {}});
    if (lexer.Current().kind != TokenKind::Comma) break;
    lexer.Advance();
  }
  lexer.Take(TokenKind::Colon, "':'");
  const std::string type = lexer.Take(TokenKind::Name, "a type").text;
  for (std::size_t i = first; i < parameters.size(); ++i) parameters[i].type = type;
}

}  // namespace

Prototype ParsePrototype(const std::string& text) {
  try {
    ScriptLexer lexer(text);
    const Token keyword = lexer.Take(TokenKind::Name, "'procedure'");
    if (!EqualIgnoringCase(keyword.text, "procedure")) lexer.FailAt(keyword.begin, "expected 'procedure'");

    Prototype prototype;
    prototype.name = lexer.Take(TokenKind::Name, "the command's name").text;
    if (lexer.Current().kind == TokenKind::Open) {
      do {
        lexer.Advance();
        ParseGroup(lexer, prototype.parameters);
      } while (lexer.Current().kind == TokenKind::Semicolon);
      lexer.Take(TokenKind::Close, "')'");
    }
    if (lexer.Current().kind != TokenKind::End) lexer.FailExpected("the end");
    return prototype;
  } catch (const TKXScriptError& error) {
    throw std::invalid_argument("the prototype \"" + text + "\" cannot be read: column " +
                                std::to_string(error.Column()) + ": " + error.what());
  }
}

}  // namespace kx
