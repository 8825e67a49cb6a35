#pragma once

#include <cstdint>

#include "plugin/data/ShorttestData.h"

/// Voltage at which a channel counts as live, V.
inline constexpr double VoltageLimit = 0.7;

/// The four passes of a check. `data` is the expectation, `work` takes what is measured; both cover the same
/// range. The thresholds are those of `work`; everything else is read from `data`. Each pass returns at its
/// next progress point when the user cancels; what it entered in `work` stays. Each counts its errors from
/// zero against MaxError. Hardware errors pass through; the driver of the check opens the relays.

/// Continuity: measures every pair that is expected to be connected and not yet settled. Returns the number
/// of open connections found; ends at once, with two channels left switched on, when that reaches MaxError.
std::int32_t CheckConnectionPass(const TShortTestData& data, TShortTestData& work);

/// Measures each channel's voltage against the channels before it and leaves them all on line 1 for the
/// isolation pass. Returns 0, or MaxError when a channel carries VoltageLimit or more; that channel is
/// suspended in `work` and the pass ends.
std::int32_t CheckVoltagePass(const TShortTestData& data, TShortTestData& work);

/// Measures each channel's net against all other channels. Returns the channels whose net is not isolated,
/// with the resistance found; empty when cancelled. REQUIRES: every channel in use is on line 1.
TConnFound CheckIsolationPass(const TShortTestData& data, TShortTestData& work);

/// Measures the candidates pair by pair. Returns the number of pairs that differ from the expectation; ends
/// at once, with channels left switched on, when that reaches MaxError.
std::int32_t CheckPairPass(const TShortTestData& data, TShortTestData& work, const TConnFound& candidates);
