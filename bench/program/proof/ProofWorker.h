#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bench/program/system/ExitStatus.h"
#include "bench/proof/DeviceModel.h"

namespace kxbench {

/// As many bytes as an expectation may have.
inline constexpr std::uintmax_t MostProofFileBytes = std::uintmax_t{64} << 20U;

/// First word of the command line of a process that checks faults for a proof. No user types it.
inline constexpr const char* ProofWorkerWord = "--proof-worker";

/// What a worker is to check; every worker of a proof gets the same.
struct ProofTask {
  std::string file;    ///< expectation, UTF-8
  std::string sha256;  ///< of that file
  double netOhm = 0;   ///< of the ideal device
  std::string device;  ///< description that takes the ideal device's place; empty for none

  std::vector<std::string> Arguments() const;
  static ProofTask FromArguments(const std::vector<std::string>& arguments);
};

/// The device that every fault of the task is put into. Throws Failure for a description that cannot be used.
proof::DeviceModel GoodDevice(const ProofTask& task);

/// Checks what standard input asks for, a line each, and answers with a line each, until the input ends:
///   fault WORDS          -> verdict WORDS (see ProofFault.h, Verdict.h)
///   capacitor WORDS      -> alarm 0 or 1
///   records WORDS        -> records, each after a tab; "no records" when the check could not be carried out
///   joint CHANNEL        -> limit OHM, or "limit none"
///   insulation A B       -> the same
///   lowest, highest      -> the same: the thresholds at which the good device just passes
///   with LOWER UPPER WORDS -> alarm 0 or 1: whether these thresholds find the fault
/// Before that it says "good SECONDS COUNT" and COUNT findings of the good device, a line each. What keeps it
/// from working it says in a line that begins with "failed ".
ExitStatus RunProofWorker(const std::vector<std::string>& arguments);

}  // namespace kxbench
