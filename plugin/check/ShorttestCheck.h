#pragma once

#include <cstdint>

#include "plugin/data/ShorttestData.h"

/// Carries out one check of a device against the expectation `data`: shows the progress dialog, disables the
/// host's other windows, switches the terminating resistor on, runs the passes and sends the findings to the
/// host. The caller keeps ownership of `data`.
///
/// On every way out once the hardware is reset, also after an exception, all lines are reset, the terminating
/// resistor is off, the windows are enabled again and the dialog is closed; the host's TestEnvironment is
/// told when the user pressed "Abbrechen". A cancelled check sends no records, and neither does one that
/// fails. Throws what the hardware throws (TShortTestHWException) and what the user interface throws; and
/// std::logic_error, with nothing done, when it is called from within a running check or learning.
///
/// Runs on the host's user-interface thread, which is kept alive at the progress points.
void RunShortTest(const TShortTestData& data);
