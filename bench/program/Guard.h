#pragma once

#include <string>

namespace kxbench {

/// Opens the relays when the program cannot do so any more. The program splits in two: a process that works,
/// and a guard that loads nothing, touches no display and waits for it. When the working process ends without
/// a word, however that came about, the guard starts a third process, which opens every relay through the
/// driver library that had been loaded, and ends with ExitStatus::Failed and one line on standard error. When
/// the guard is ended, the working process notices and ends as on SIGTERM.
///
/// Each function does nothing where no guard was set up.

/// Sets up the guard. Returns in the working process alone: the guard ends with the working process's exit
/// status, and where there is a guard already at once. Called before anything is loaded that could switch a
/// relay, and before any thread is started. The environment is the one that the driver library will find.
/// Throws Failure when there can be no second process.
void EnterGuard();

/// Tells the guard where the driver library lies, once it is in memory. Called after every library loaded.
void TellGuardOfDriver();

/// Tells the guard that a command gets the file `file`, UTF-8: if it is an expectation, its terminating
/// resistor's relay may be closed.
void TellGuardOfExpectation(const std::string& file);

/// Tells the guard that no relay is in use any more, and will not be.
void LeaveGuard();

}  // namespace kxbench
