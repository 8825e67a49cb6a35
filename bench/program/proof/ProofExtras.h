#pragma once

#include <cstddef>
#include <functional>

#include "bench/program/host/CommonOptions.h"
#include "bench/program/proof/ProofWorkers.h"
#include "bench/proof/Proof.h"

namespace kxbench {

/// What stands between the good device's resistances and thresholds that are suggested.
inline constexpr double SuggestedMargin = 3;

/// Puts into `result` the thresholds that would find more. REQUIRES: all faults have their verdicts.
void AddAdvice(ProofWorkers& workers, proof::Proof& result, const std::function<bool()>& cancelled);

/// Checks `count` faults of the proof, chosen by its seed, once more through the plug-in's library, the
/// driver library and real time, and puts into `result` what ends otherwise. False when it was cancelled.
/// Throws Failure, also for a device that no device description can describe.
bool CompareWithPlugin(ProofWorkers& workers, const CommonOptions& common, std::size_t count,
                       proof::Proof& result, const std::function<bool()>& cancelled);

}  // namespace kxbench
