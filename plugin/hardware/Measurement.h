#pragma once

#include <functional>

#include "plugin/data/ShorttestData.h"

/// The instrument between line 0 and line 1: resistance, voltage, and the wait for a charged device to
/// discharge. One thread at a time. Driver errors throw TShortTestHWException. A reading that is not a number
/// counts as one that has not settled; a measurement that ends on one throws std::runtime_error.

/// Takes the position within the running procedure, 0.0 to 1.0, and returns true when the procedure is to
/// stop. The type of UpdateProgress and LearnProgress.
using TProgressFunc = bool (*)(double position);

namespace shorttest {

/// What the procedures take: a TProgressFunc, or anything else of this signature. It must not be empty.
using ProgressFunction = std::function<bool(double position)>;

}  // namespace shorttest

/// One reading of the voltage between the lines, volts, as the instrument gives it.
double ReadVoltage();

/// Resistance between the lines, Ohm. `reference` (Ohm) is the threshold that the caller compares the result
/// with; it chooses the instrument's range and the settling tolerance once. Reads until two successive
/// readings (the first against 0) differ by less than the tolerance, at most 101 times; a reading that never
/// settles is returned as it is. The driver's error is looked at once, after the last reading.
/// Throws std::invalid_argument, before any reading, when `reference` is not above 0.
double MeasureResistance(double reference);

/// Voltage between the lines, volts; 0.0 without a reading when `data.U_Control` is below 1. With U_Control 2
/// a voltage above `limit` (volts, magnitude) is read again until it is at or below the limit, `data.Timeout`
/// (ms) has passed, or `progress` asks to stop; `progress` is called after every reading with a position from
/// `posFrom` to `posTo`, at the last call possibly a little past it. Any other U_Control reads once.
/// Returns the last voltage read, which may be above the limit.
/// Throws std::invalid_argument when waiting is needed and `data.Timeout` is 0.
double WaitForDischarge(const TShortTestData& data, double limit, double posFrom, double posTo,
                        const shorttest::ProgressFunction& progress);

namespace shorttest {

/// The instrument's range, 1 to 6, for a resistance threshold above 0, Ohm: the nearest integer (ties to
/// even) to log10(reference) - 0.75527238, clipped. The constant puts the changes of range just below 180
/// Ohm, 1.8 kOhm, 18 kOhm, 180 kOhm and 1.8 MOhm.
int ResistanceRange(double reference);

}  // namespace shorttest
