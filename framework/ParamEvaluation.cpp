#include "framework/ParamEvaluation.h"

namespace kx {

void EvaluateParams(const TParamList& params, TKXParser* parser, TParamList& evaluated) {
  for (const TParam& param : params.Items()) {
    const auto expression = parser == nullptr ? nullptr : parser->ParseExpression(param.expression);
    auto value =
        expression == nullptr ? std::make_unique<TStringValue>(param.expression) : expression->Evaluate();
    evaluated.Set(param.name, param.expression, std::move(value));
  }
}

}  // namespace kx
