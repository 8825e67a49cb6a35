#pragma once

#include <string>

#include "bench/program/check/DeviceDiagnosis.h"
#include "bench/program/check/ScriptRun.h"
#include "bench/results/Result.h"
#include "bench/wiring/ChannelNames.h"
#include "bench/wiring/ExpectationFacts.h"

namespace kxbench {

/// Enters what a check sent and how it ended into a result: verdict, records, nets, and for findings the
/// diagnosis that the records alone allow.
void EnterCheck(const StepResult& check, const wiring::ExpectationFacts& facts,
                const wiring::ChannelNames& names, results::Result& result);

/// Enters a diagnosis, in the place of any other.
void EnterDiagnosis(const DeviceDiagnosis& diagnosis, const wiring::ChannelNames& names,
                    results::Result& result);

/// Enters the nets that the expectation wants, and the findings of the result's records that name a channel
/// of each.
void EnterNets(const wiring::ExpectationFacts& facts, const wiring::ChannelNames& names,
               results::Result& result);

}  // namespace kxbench
