#pragma once

#include "bench/proof/CheckOutcome.h"
#include "bench/proof/DeviceModel.h"

/// The entry of the proof module (`libkxproof.so`, `kxproof.dll`): the plug-in's check on simulated devices.
/// It brings its own driver, so that it must be a library of its own: the program has none.

#ifdef _WIN32
#define KX_PROOF_MODULE_API __declspec(dllexport)
#else
#define KX_PROOF_MODULE_API __attribute__((visibility("default")))
#endif

extern "C" {

/// Checks `device` with `expectation` in held time, see CheckStand. Takes the user interface that was set for
/// its own. One thread at a time. Never throws.
KX_PROOF_MODULE_API void kxProofCheck(const TShortTestData& expectation,
                                      const kxbench::proof::DeviceModel& device,
                                      kxbench::proof::CheckOutcome& outcome);

}  // extern "C"

using KxProofCheck = void (*)(const TShortTestData& expectation, const kxbench::proof::DeviceModel& device,
                              kxbench::proof::CheckOutcome& outcome);
inline constexpr char KxProofCheckName[] = "kxProofCheck";
