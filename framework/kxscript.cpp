#include "framework/kxscript.h"

#include <utility>

#include "framework/AsciiCase.h"

TKXScriptError::TKXScriptError(const std::string& message, std::size_t column)
    : std::runtime_error(message), column_(column) {}
TKXScriptError::~TKXScriptError() = default;

TKXValue::~TKXValue() = default;
TKXExpression::~TKXExpression() = default;
TKXEnvironment::~TKXEnvironment() = default;
TKXParser::~TKXParser() = default;

TStringValue::TStringValue(std::string value) : value_(std::move(value)) {}

std::string TStringValue::GetText() const { return value_; }

std::string TStringValue::GetVal(const TKXValue* value) {
  if (value == nullptr) return {};
  const auto* string = dynamic_cast<const TStringValue*>(value);
  return string != nullptr ? string->GetVal() : value->GetText();
}

TParamList::TParamList() = default;
TParamList::~TParamList() = default;

void TParamList::Set(const std::string& name, const std::string& expression,
                     std::unique_ptr<TKXValue> value) {
  for (TParam& item : items_) {
    if (!kx::EqualIgnoringCase(item.name, name)) continue;
    item = TParam{name, expression, std::move(value)};
    return;
  }
  items_.push_back(TParam{name, expression, std::move(value)});
}

const TParam* TParamList::Find(const std::string& name) const {
  for (const TParam& item : items_) {
    if (kx::EqualIgnoringCase(item.name, name)) return &item;
  }
  return nullptr;
}

const TKXValue* TParamList::GetValue(const std::string& name) const {
  const TParam* found = Find(name);
  return found == nullptr ? nullptr : found->value.get();
}

std::string TParamList::GetExpression(const std::string& name) const {
  const TParam* found = Find(name);
  return found == nullptr ? std::string() : found->expression;
}

bool TParamList::Contains(const std::string& name) const { return Find(name) != nullptr; }
