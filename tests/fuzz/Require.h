#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace fuzz {

/// Ends the program with `what` when a property does not hold; the fuzzer then keeps the input.
inline void Require(bool holds, const char* what, const std::string& detail = {}) {
  if (holds) return;
  std::fprintf(stderr, "property broken: %s %s\n", what, detail.c_str());
  std::abort();
}

}  // namespace fuzz
