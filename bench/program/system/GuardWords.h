#pragma once

#include <string>
#include <vector>

/// What the working process tells its guard, and what the guard reports of it in the end.

namespace kxbench {

/// Name of the driver's library, as this system calls it.
std::string DriverLibraryName();

/// The message that the driver library `file` (UTF-8) is in memory.
std::string DriverMessage(const std::string& file);

/// The message that a command gets the file `file` (UTF-8).
std::string ExpectationMessage(const std::string& file);

/// The message that the work is done.
std::string DoneMessage();

/// All that the working process said.
struct GuardNews {
  bool done = false;
  std::string driver;                     ///< the driver library, UTF-8; empty when none was loaded
  std::vector<std::string> expectations;  ///< files that may be expectations, UTF-8
};

/// Reads the messages; one that was cut off when the process ended is passed over.
GuardNews ReadNews(const std::string& messages);

/// The guard's line, without its end. `how` is how the process ended; `driver` as in GuardNews; `failure` is
/// why the relays could not be opened, empty when they were.
std::string GuardLine(const std::string& how, const std::string& driver, const std::string& failure);

/// Sends a message to the guard of this process; does nothing where there is none.
void SendToGuard(const std::string& message);

/// Opens every relay through the driver library of `news`: both lines of each card are reset, and the
/// terminating resistor of each expectation is switched off. Empty when that went well; else what went wrong.
std::string OpenEveryRelay(const GuardNews& news);

}  // namespace kxbench
