#pragma once

#include <cstdint>

namespace kxbench {

/// What the procedures of this module have asked of the driver. The difference of two values is what one
/// learning took.
struct DriverUse {
  std::uint64_t readings = 0;         ///< readings of the instrument
  std::uint64_t relayOperations = 0;  ///< relays opened or closed, and line resets
};

/// The count since the module was loaded. The linker leads the driver's functions through it: see
/// CMakeLists.txt.
DriverUse DriverUseSoFar();

}  // namespace kxbench
