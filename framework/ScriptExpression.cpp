#include "framework/ScriptExpression.h"

#include <limits>
#include <utility>
#include <vector>

namespace kx {

IntegerValue::~IntegerValue() = default;

std::string IntegerValue::GetText() const { return std::to_string(value_); }

namespace {

using Value = std::unique_ptr<TKXValue>;
using Expression = std::unique_ptr<TKXExpression>;

/// Deeper nesting of parentheses is no script that a person wrote, and would use up the call stack.
constexpr int MaxNesting = 100;

class StringLiteral : public TKXExpression {
 public:
  explicit StringLiteral(std::string text) : text_(std::move(text)) {}
  Value Evaluate() const override { return std::make_unique<TStringValue>(text_); }

 private:
  std::string text_;
};

class IntegerLiteral : public TKXExpression {
 public:
  explicit IntegerLiteral(std::int64_t value) : value_(value) {}
  Value Evaluate() const override { return std::make_unique<IntegerValue>(value_); }

 private:
  std::int64_t value_;
};

Value CopyOf(const TKXValue& value) {
  if (const auto* integer = dynamic_cast<const IntegerValue*>(&value)) {
    return std::make_unique<IntegerValue>(integer->Get());
  }
  return std::make_unique<TStringValue>(TStringValue::GetVal(&value));
}

class Variable : public TKXExpression {
 public:
  Variable(std::string name, std::size_t column, const TKXEnvironment& environment)
      : name_(std::move(name)), column_(column), environment_(environment) {}

  Value Evaluate() const override {
    const TKXValue* value = environment_.FindVariable(name_);
    if (value == nullptr) throw TKXScriptError("unknown variable " + name_, column_);
    return CopyOf(*value);
  }

 private:
  std::string name_;
  std::size_t column_;
  const TKXEnvironment& environment_;
};

/// Two or more terms joined by "+", evaluated from left to right.
class Sum : public TKXExpression {
 public:
  Sum(std::vector<Expression> terms, std::size_t column) : terms_(std::move(terms)), column_(column) {}

  Value Evaluate() const override {
    Value sum = terms_.front()->Evaluate();
    for (std::size_t i = 1; i < terms_.size(); ++i) sum = Add(*sum, *terms_[i]->Evaluate());
    return sum;
  }

 private:
  Value Add(const TKXValue& left, const TKXValue& right) const {
    const auto* a = dynamic_cast<const IntegerValue*>(&left);
    const auto* b = dynamic_cast<const IntegerValue*>(&right);
    if (a == nullptr || b == nullptr) return std::make_unique<TStringValue>(left.GetText() + right.GetText());
    // Literals and so sums are never negative: only the upper end can be passed.
    if (a->Get() > std::numeric_limits<std::int64_t>::max() - b->Get()) {
      throw TKXScriptError("the number is too large", column_);
    }
    return std::make_unique<IntegerValue>(a->Get() + b->Get());
  }

  std::vector<Expression> terms_;
  std::size_t column_;
};

class Parser {
 public:
  Parser(ScriptLexer& lexer, const TKXEnvironment& environment) : lexer_(lexer), environment_(environment) {}

  Expression ParseSum() {
    const std::size_t column = lexer_.CurrentColumn();
    std::vector<Expression> terms;
    terms.push_back(ParseTerm());
    while (lexer_.Current().kind == TokenKind::Plus) {
      lexer_.Advance();
      terms.push_back(ParseTerm());
    }
    if (terms.size() == 1) return std::move(terms.front());
    return std::make_unique<Sum>(std::move(terms), column);
  }

 private:
  Expression ParseTerm() {
    const Token token = lexer_.Current();
    const std::size_t column = lexer_.CurrentColumn();
    switch (token.kind) {
      case TokenKind::String:
        lexer_.Advance();
        return std::make_unique<StringLiteral>(token.text);
      case TokenKind::Integer:
        lexer_.Advance();
        return std::make_unique<IntegerLiteral>(token.integer);
      case TokenKind::Name:
        lexer_.Advance();
        return std::make_unique<Variable>(token.text, column, environment_);
      case TokenKind::Open:
        return ParseGroup();
      default:
        lexer_.FailExpected("a value");
    }
  }

  Expression ParseGroup() {
    if (++nesting_ > MaxNesting)
      lexer_.FailAt(lexer_.Current().begin, "the parentheses are nested too deeply");
    lexer_.Advance();
    Expression inner = ParseSum();
    lexer_.Take(TokenKind::Close, "')'");
    --nesting_;
    return inner;
  }

  ScriptLexer& lexer_;
  const TKXEnvironment& environment_;
  int nesting_ = 0;
};

}  // namespace

std::unique_ptr<TKXExpression> ParseExpressionAt(ScriptLexer& lexer, const TKXEnvironment& environment) {
  return Parser(lexer, environment).ParseSum();
}

std::unique_ptr<TKXExpression> ParseScriptExpression(std::string_view text,
                                                     const TKXEnvironment& environment) {
  ScriptLexer lexer(text);
  Expression expression = ParseExpressionAt(lexer, environment);
  if (lexer.Current().kind != TokenKind::End) lexer.FailExpected("'+' or the end of the expression");
  return expression;
}

}  // namespace kx
