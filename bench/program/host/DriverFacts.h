#pragma once

#include <string>

namespace kxbench {

/// What a driver library says of itself and of its tester; what is not known is empty.
struct DriverFacts {
  std::string file;        ///< the library in memory, UTF-8
  std::string generation;  ///< of the measuring hardware
  std::string cards;       ///< how many relay cards answer, of those that are probed for
};

/// Asks the driver that is in memory; all empty when there is none. Cards are probed as the plug-in's dialog
/// does when it opens, but without a write to the bus. REQUIRES: no check is running.
DriverFacts AskDriver();

}  // namespace kxbench
