#pragma once

#include <string>

/// What the working process tells its guard, and what the guard says of it in the end.

namespace kxbench {

/// Name of the driver's library, as this system calls it.
std::string DriverLibraryName();

/// The message that the driver library `file` (UTF-8) is in memory.
std::string DriverMessage(const std::string& file);

/// The message that the work is done.
std::string DoneMessage();

/// All that the working process said.
struct GuardNews {
  bool done = false;
  std::string driver;  ///< the driver library, UTF-8; empty when none was loaded
};

/// Reads the messages; one that was cut off when the process ended is passed over.
GuardNews ReadNews(const std::string& messages);

/// The guard's line, without its end. `how` is how the process ended; `driver` as in GuardNews; `failure` is
/// why the relays could not be opened, empty when they were.
std::string GuardLine(const std::string& how, const std::string& driver, const std::string& failure);

/// Opens every relay of every card through the driver library `driver` (UTF-8): both lines of each card are
/// reset. Empty when that went well; else what went wrong.
std::string OpenEveryRelay(const std::string& driver);

}  // namespace kxbench
