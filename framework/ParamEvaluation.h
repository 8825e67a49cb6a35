#pragma once

#include "framework/kxscript.h"

namespace kx {

/// Evaluates every expression of `params` into `evaluated`. A text that is no expression stands for itself,
/// as in a command's dialog, where a plain file name may be typed. Without a parser every text stands for
/// itself. Throws what the evaluation throws.
void EvaluateParams(const TParamList& params, TKXParser* parser, TParamList& evaluated);

}  // namespace kx
