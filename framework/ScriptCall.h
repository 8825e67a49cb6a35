#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "framework/kxscript.h"

namespace kx {

/// One argument of a call: its expression as written and parsed, and where it stands in the line.
struct ScriptArgument {
  std::string text;
  std::size_t column;  ///< from 1
  std::unique_ptr<TKXExpression> expression;
};

/// One command call of a script, "Name(expression, expression)" or "Name".
struct ScriptCall {
  std::string name;
  std::size_t nameColumn;  ///< from 1
  std::vector<ScriptArgument> arguments;
  std::size_t endColumn;  ///< of the closing parenthesis, where a missing argument is reported
};

/// True when the line holds nothing but blanks and a comment.
KX_API bool IsEmptyScriptLine(std::string_view line);

/// Parses a script line; "//" outside a string starts a comment. Evaluates nothing. Throws TKXScriptError
/// with the column.
KX_API ScriptCall ParseScriptCall(std::string_view line, const TKXEnvironment& environment);

}  // namespace kx
