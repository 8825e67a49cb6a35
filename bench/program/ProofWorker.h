#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bench/program/ExitStatus.h"

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

/// Checks what standard input asks for, a line each, and answers with a line each, until the input ends:
///   fault WORDS          -> verdict WORDS (see ProofFault.h, Verdict.h)
///   capacitor WORDS      -> alarm 0 or 1
///   joint CHANNEL        -> limit OHM, or "limit none"
///   insulation A B       -> the same
/// Before that it says "good SECONDS COUNT" and COUNT findings of the good device, a line each. What keeps it
/// from working it says in a line that begins with "failed ".
ExitStatus RunProofWorker(const std::vector<std::string>& arguments);

}  // namespace kxbench
