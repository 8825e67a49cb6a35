#pragma once

#include "plugin/data/ShorttestData.h"
#include "plugin/hardware/Measurement.h"

namespace shorttest {

/// How a learning that did not fail has ended.
enum class LearnOutcome {
  Learned,  ///< carried to its end
  Stopped,  ///< by the user, through `progress` or the message about a reading near the threshold
};

/// Whether the tester has every channel of the range of `data` (1 to HWChannelCount, see InitHardware), and
/// the range is not empty. Whoever learns asks first: LearnConnections switches what the range says.
bool HasChannelsFor(const TShortTestData& data);

}  // namespace shorttest

/// Learning: measures a known-good device into `data`. Runs on the user-interface thread, which stays alive
/// only through `progress`; the caller sees to it that no second measurement starts from there. The message
/// about readings near the threshold goes through Application().

/// The whole procedure: every pair that was Unknown, NotConnected or Connected before is measured anew, pairs
/// and channels in any other state stay. Each pass stops at its first progress call that answers true; pairs
/// not reached stay Unknown.
/// On every way out all lines are reset, the terminating resistor is switched off and `progress` is called
/// with 1.0, its answer ignored. Returns Stopped when an earlier call of `progress` asked to stop, or the
/// user cancelled at a reading near the threshold. Throws what the hardware throws (TShortTestHWException),
/// with all findings so far kept; and std::logic_error, with nothing done, when it is called from within a
/// running check or learning.
shorttest::LearnOutcome LearnConnections(TShortTestData& data, const shorttest::ProgressFunction& progress);

/// The steps of LearnConnections, in this order. They do not clean up after themselves.

/// Sets every cell that holds Unknown, NotConnected or Connected back to Unknown.
void ResetLearnedCells(TShortTestData& data);

/// Measures each channel's voltage against the channels already found free of voltage, which form a bundle on
/// line 1, and suspends channels that carry 0.5 V or more. Positions 0 to 0.25.
void LearnVoltagePass(TShortTestData& data, const shorttest::ProgressFunction& progress);

/// Measures each channel against the whole bundle. Returns the channels connected to anything, ascending;
/// the others are settled as connected to nothing. Positions 0.25 to 0.5.
TConnFound LearnIsolationPass(TShortTestData& data, const shorttest::ProgressFunction& progress);

/// Measures the candidates pair by pair, as far as the answer does not follow from what is known already.
/// Stopped when `progress` asks for it, or the user cancels at a reading near the threshold. Positions 0.5 to
/// 1.0.
shorttest::LearnOutcome LearnPairPass(TShortTestData& data, const TConnFound& candidates,
                                      const shorttest::ProgressFunction& progress);
