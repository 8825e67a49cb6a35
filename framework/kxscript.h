#pragma once

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "contracts/Export.h"

/// Host package kxscript: script expressions, their values, the script environment, parameter lists.

/// A text that is not what the script language expects. `Column` counts from 1 within the text that was
/// parsed.
class KX_API TKXScriptError : public std::runtime_error {
 public:
  TKXScriptError(const std::string& message, std::size_t column);
  ~TKXScriptError() override;
  std::size_t Column() const { return column_; }

 private:
  std::size_t column_;
};

/// A value of the script language.
class KX_API TKXValue {
 public:
  virtual ~TKXValue();

  /// The value as text (UTF-8).
  virtual std::string GetText() const = 0;
};

class KX_API TStringValue : public TKXValue {
 public:
  explicit TStringValue(std::string value);
  std::string GetText() const override;

  /// The string held.
  const std::string& GetVal() const { return value_; }

  /// The text of any value: the string of a TStringValue, else GetText. Empty for null.
  static std::string GetVal(const TKXValue* value);

 private:
  std::string value_;
};

/// A parsed script expression.
class KX_API TKXExpression {
 public:
  virtual ~TKXExpression();

  /// Computes the value anew. Throws std::runtime_error naming an unknown variable.
  virtual std::unique_ptr<TKXValue> Evaluate() const = 0;
};

/// The script environment: the variables a script sees.
class KX_API TKXEnvironment {
 public:
  virtual ~TKXEnvironment();

  /// The variable's value, or null when there is none. Names are not case-sensitive. The environment owns it.
  virtual const TKXValue* FindVariable(const std::string& name) const = 0;

  /// Rewrites a path in double quotes into the expression to store for it: relative to the project path
  /// where it lies below that, unchanged elsewhere.
  virtual std::string ReplaceProjectPath(const std::string& quotedPath) const = 0;
};

class KX_API TKXParser {
 public:
  virtual ~TKXParser();

  /// Parses a script expression; null when `text` is none.
  virtual std::unique_ptr<TKXExpression> ParseExpression(const std::string& text) = 0;

  /// The script environment. The parser owns it.
  virtual TKXEnvironment& GetEnvironment() = 0;
};

/// One parameter of a command call: the expression as the script has it, and its value once evaluated.
struct TParam {
  std::string name;
  std::string expression;
  std::unique_ptr<TKXValue> value;
};

/// The parameters of a command call, in the order of the prototype. Names are not case-sensitive.
class KX_API TParamList {
 public:
  TParamList();
  ~TParamList();
  TParamList(const TParamList&) = delete;
  TParamList& operator=(const TParamList&) = delete;

  /// Adds a parameter, or replaces the one of the same name.
  void Set(const std::string& name, const std::string& expression, std::unique_ptr<TKXValue> value);

  /// The value object of the named parameter; null when there is none or it was not evaluated. The list owns
  /// it.
  const TKXValue* GetValue(const std::string& name) const;

  /// The parameter's expression as the script has it; empty when there is no such parameter.
  std::string GetExpression(const std::string& name) const;

  /// True when the list holds a parameter of that name, evaluated or not.
  bool Contains(const std::string& name) const;

  const std::vector<TParam>& Items() const { return items_; }

 private:
  const TParam* Find(const std::string& name) const;

  std::vector<TParam> items_;
};
