#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "framework/ScriptLexer.h"
#include "framework/kxscript.h"

namespace kx {

/// An integer of the script language.
class KX_API IntegerValue : public TKXValue {
 public:
  explicit IntegerValue(std::int64_t value) : value_(value) {}
  ~IntegerValue() override;
  std::string GetText() const override;
  std::int64_t Get() const { return value_; }

 private:
  std::int64_t value_;
};

/// Parses the expression at the lexer's current token and leaves the lexer at the token after it:
///   expression = term { "+" term }
///   term       = string | integer | variable | "(" expression ")"
/// "+" adds two integers and otherwise joins the texts of both sides. Throws TKXScriptError with the column.
/// The expression looks its variables up in `environment` each time it is evaluated and keeps a reference to
/// it; an unknown variable is a TKXScriptError with the column.
KX_API std::unique_ptr<TKXExpression> ParseExpressionAt(ScriptLexer& lexer,
                                                        const TKXEnvironment& environment);

/// Parses `text`, which must be one expression and nothing else. Throws TKXScriptError with the column.
KX_API std::unique_ptr<TKXExpression> ParseScriptExpression(std::string_view text,
                                                            const TKXEnvironment& environment);

}  // namespace kx
