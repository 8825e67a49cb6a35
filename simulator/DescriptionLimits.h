#pragma once

#include <cstddef>
#include <cstdint>

#include "simulator/TesterLayout.h"

namespace simulator {

// How large a device description may be. Within these bounds loading it, and one reading, take seconds at
// most however it is made; a harness at the largest tester needs a tenth of each.

inline constexpr int MaxIncludeDepth = 8;        ///< files inside each other
inline constexpr int MaxIncludes = 1000;         ///< included files in all, each as often as it is included
inline constexpr int MaxStatements = 1'000'000;  ///< in all files, each as often as it is read
inline constexpr std::size_t MaxFileBytes = std::size_t{4} << 20U;
inline constexpr std::size_t MaxTextBytes = std::size_t{32}
                                            << 20U;  ///< of all files, each as often as it is read
inline constexpr std::size_t MaxWordsOfALine = 2000;
inline constexpr int MaxPoints = 800;  ///< channels and inner nodes: solving takes the cube of their number
inline constexpr int MaxInnerNodes = MaxPoints - MaxChannels;

/// Wires, resistors and capacitances that all changes (`cut`, `disconnect`, `swap`, `joint`) may look at
/// together: each looks at all that were said before.
inline constexpr std::int64_t MaxChangeVisits = 20'000'000;

}  // namespace simulator
