#pragma once

#include <cmath>

namespace shorttest {

/// The integer nearest to `value`, ties going to the even one, whatever rounding mode the host has set.
inline double RoundToEven(double value) {
  const double below = std::floor(value);
  const double rest = value - below;
  if (rest < 0.5) return below;
  if (rest > 0.5) return below + 1.0;
  return std::fmod(below, 2.0) == 0.0 ? below : below + 1.0;
}

}  // namespace shorttest
