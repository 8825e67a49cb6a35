#include <stdexcept>
#include <utility>

#include "framework/ParamEvaluation.h"
#include "framework/kxcomponents.h"

TKXFuncRunEdit::TKXFuncRunEdit(const std::string& prototype, std::unique_ptr<TKXEditorForm> editor,
                               TKXParser* parser)
    : TKXThreadRunEdit(prototype, std::move(editor), parser) {}

TKXFuncRunEdit::~TKXFuncRunEdit() = default;

void TKXFuncRunEdit::RunCommand() {
  TParamList evaluated;
  kx::EvaluateParams(OwnParams(), Parser(), evaluated);
  RunThreaded(evaluated);
}

/// Commands expect the user-interface thread, where they show their dialogs, and that is where the stand-in
/// host runs its scripts.
void TKXFuncRunEdit::RunThreaded(const TParamList& params) {
  if (!CheckParams(params))
    throw std::invalid_argument("the command " + CommandName() + " lacks a parameter");
  Run(params);
}

void TKXFuncRunEdit::OnEditorTest() {
  TParamList shown;
  SetParams(shown);
  TParamList evaluated;
  kx::EvaluateParams(shown, Parser(), evaluated);
  RunThreaded(evaluated);
}
