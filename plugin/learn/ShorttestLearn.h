#pragma once

#include "plugin/data/ShorttestData.h"
#include "plugin/hardware/Measurement.h"

/// Learning: measures a known-good device into `data`. Runs on the user-interface thread, which stays alive
/// only through `progress`; the caller sees to it that no second measurement starts from there. The message
/// about readings near the threshold goes through Application().

/// The whole procedure: every pair that was Unknown, NotConnected or Connected before is measured anew, pairs
/// and channels in any other state stay. Each pass stops at its first progress call that answers true; pairs
/// not reached stay Unknown.
/// On every way out all lines are reset, the terminating resistor is switched off and `progress` is called
/// with 1.0. Throws what the hardware raises (TShortTestHWException), with all findings so far kept.
void LearnConnections(TShortTestData& data, TProgressFunc progress);

/// The steps of LearnConnections, in this order. They do not clean up after themselves.

/// Sets every cell that holds Unknown, NotConnected or Connected back to Unknown.
void ResetLearnedCells(TShortTestData& data);

/// Measures each channel's voltage against the channels already found free of voltage, which form a bundle on
/// line 1, and suspends channels that carry 0.5 V or more. Positions 0 to 0.25.
void LearnVoltagePass(TShortTestData& data, TProgressFunc progress);

/// Measures each channel against the whole bundle. Returns the channels connected to anything, ascending;
/// the others are settled as connected to nothing. Positions 0.25 to 0.5.
TConnFound LearnIsolationPass(TShortTestData& data, TProgressFunc progress);

/// Measures the candidates pair by pair, as far as the answer does not follow from what is known already.
/// Positions 0.5 to 1.0.
void LearnPairPass(TShortTestData& data, const TConnFound& candidates, TProgressFunc progress);
