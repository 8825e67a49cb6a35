#include <stdexcept>
#include <utility>

#include "framework/AsciiCase.h"
#include "framework/Prototype.h"
#include "framework/ScriptCall.h"
#include "framework/ScriptEnvironment.h"
#include "framework/ScriptExpression.h"
#include "framework/ScriptLexer.h"
#include "framework/kxcomponents.h"

namespace {

TKXEdit* FindParameterEdit(TKXEditorForm* editor, const TKXPrototypeParam& parameter) {
  return editor == nullptr ? nullptr : editor->FindEdit("KXEdit_" + parameter.name);
}

/// True when the expression can be evaluated, and is an integer.
bool IsInteger(const TKXExpression& expression, std::string& text) {
  try {
    const auto value = expression.Evaluate();
    text = TStringValue::GetVal(value.get());
    return dynamic_cast<const kx::IntegerValue*>(value.get()) != nullptr;
  } catch (const TKXScriptError&) {
    return false;  // an unknown variable: the line says so when it is read
  }
}

/// What a script line shows for a parameter: its expression, or a literal where there is none or where its
/// value is no text although the parameter is one, so that the line can always be read again.
std::string ScriptText(const std::string& expression, const TKXPrototypeParam& parameter, TKXParser* parser) {
  if (expression.empty() && kx::EqualIgnoringCase(parameter.type, "Integer")) return "0";
  const auto parsed = parser == nullptr ? nullptr : parser->ParseExpression(expression);
  if (parsed == nullptr) return kx::QuoteLiteral(expression);
  std::string text;
  const bool isText = kx::EqualIgnoringCase(parameter.type, "String");
  return isText && IsInteger(*parsed, text) ? kx::QuoteLiteral(text) : expression;
}

kx::ScriptCall ParseLine(const std::string& line, TKXParser* parser) {
  if (parser != nullptr) return kx::ParseScriptCall(line, parser->GetEnvironment());
  const kx::ScriptEnvironment noVariables;
  kx::ScriptCall call = kx::ParseScriptCall(line, noVariables);
  for (kx::ScriptArgument& argument : call.arguments) argument.expression.reset();
  return call;
}

}  // namespace

TKXThreadRunEdit::TKXThreadRunEdit(const std::string& prototype, std::unique_ptr<TKXEditorForm> editor,
                                   TKXParser* parser)
    : prototype_(prototype), editor_(std::move(editor)), parser_(parser) {
  kx::Prototype parsed = kx::ParsePrototype(prototype);
  name_ = std::move(parsed.name);
  parameters_ = std::move(parsed.parameters);
}

TKXThreadRunEdit::~TKXThreadRunEdit() = default;

bool TKXThreadRunEdit::EditCommand() { return Edit(ownParams_); }

std::string TKXThreadRunEdit::RecodeScript() {
  std::string line;
  GetDescription(line, ownParams_);
  return line;
}

void TKXThreadRunEdit::SetDefaults() {
  // A prototype declares no default values: every control starts empty.
  for (const TKXPrototypeParam& parameter : parameters_) {
    if (TKXEdit* edit = FindParameterEdit(editor_.get(), parameter)) edit->SetText("");
  }
}

void TKXThreadRunEdit::GetDescription(std::string& text) { GetDescription(text, ownParams_); }

bool TKXThreadRunEdit::CheckParams(const TParamList& params) {
  for (const TKXPrototypeParam& parameter : parameters_) {
    if (!params.Contains(parameter.name)) return false;
  }
  return true;
}

bool TKXThreadRunEdit::Edit(TParamList& params) {
  if (editor_ == nullptr) throw std::logic_error("the command " + name_ + " has no editor dialog");
  ReadParams(params);
  if (editor_->ShowModal() != mrOk) return false;
  SetParams(params);
  PostEdit();
  return true;
}

void TKXThreadRunEdit::SetParams(TParamList& params) {
  for (const TKXPrototypeParam& parameter : parameters_) {
    if (const TKXEdit* edit = FindParameterEdit(editor_.get(), parameter)) {
      params.Set(parameter.name, edit->GetText(), nullptr);
    }
  }
}

void TKXThreadRunEdit::ReadParams(const TParamList& params) {
  for (const TKXPrototypeParam& parameter : parameters_) {
    if (TKXEdit* edit = FindParameterEdit(editor_.get(), parameter)) {
      edit->SetText(params.GetExpression(parameter.name));
    }
  }
}

void TKXThreadRunEdit::DecodeScript(const std::string& line) { ParseCommandLine(line, ownParams_); }

void TKXThreadRunEdit::ParseCommandLine(const std::string& line, TParamList& params) {
  const kx::ScriptCall call = ParseLine(line, parser_);
  if (!kx::EqualIgnoringCase(call.name, name_)) {
    throw TKXScriptError("expected " + name_ + ", found " + call.name, call.nameColumn);
  }
  const std::size_t given = call.arguments.size();
  if (given != parameters_.size()) {
    const std::size_t column =
        given > parameters_.size() ? call.arguments[parameters_.size()].column : call.endColumn;
    throw TKXScriptError(name_ + " takes " + std::to_string(parameters_.size()) +
                             (parameters_.size() == 1 ? " parameter, not " : " parameters, not ") +
                             std::to_string(given),
                         column);
  }
  for (std::size_t i = 0; i < given; ++i) params.Set(parameters_[i].name, call.arguments[i].text, nullptr);
}

/// The stand-in host knows one form of parameters, the named list.
bool TKXThreadRunEdit::V3ParamHandling() { return false; }

void TKXThreadRunEdit::SetClientData(void* data) { clientData_ = data; }

void TKXThreadRunEdit::GetDescription(std::string& text, const TParamList& params) {
  text = name_;
  if (parameters_.empty()) return;
  std::string separator = "(";
  for (const TKXPrototypeParam& parameter : parameters_) {
    text += separator + ScriptText(params.GetExpression(parameter.name), parameter, parser_);
    separator = ", ";
  }
  text += ")";
}
