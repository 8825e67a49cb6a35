#pragma once

#include <string>

namespace kxbench {

/// Opens the relays when the program cannot do so any more. The program splits in two: a process that works,
/// and a guard that loads nothing, touches no display and waits for it. When the working process ends without
/// saying that it is done, for whatever reason, the guard starts a third process, which opens every relay
/// through the driver library that had been loaded; the guard then ends with ExitStatus::Failed and one line
/// on standard error. When the guard is ended, the working process notices and ends as on SIGTERM.
///
/// Each function does nothing where no guard was set up.

/// Sets up the guard. Returns only in the working process, at once when there is a guard already; the guard
/// itself ends with the working process's exit status. Called before anything is loaded that could switch a
/// relay, and before any thread is started. The environment is the one that the driver library will find.
/// Throws Failure when no second process can be had.
void EnterGuard();

/// Tells the guard where the driver library lies, once it is in memory. Called after every library loaded.
void TellGuardOfDriver();

/// Tells the guard that a command gets the file `file`, UTF-8: if it is an expectation, its terminating
/// resistor's relay may be closed.
void TellGuardOfExpectation(const std::string& file);

/// Tells the guard that no relay is in use any more, nor will be.
void LeaveGuard();

}  // namespace kxbench
