#pragma once

#include <string>

#include "bench/results/Result.h"
#include "bench/wiring/ChannelNames.h"
#include "bench/wiring/ExpectationFacts.h"

namespace kxbench {

/// The wiring that the expectation wants, as an <svg> element, with the result's faults marked; empty where
/// nothing is known of the expectation.
std::string ResultDrawing(const results::Result& result, const wiring::ExpectationFacts& facts,
                          const wiring::ChannelNames& names);

}  // namespace kxbench
