#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bench/program/host/CommonOptions.h"
#include "bench/program/system/ExitStatus.h"
#include "bench/proof/Proof.h"

namespace kxbench {

enum class ProofFormat { Report, Json };

/// What `kxbench prove` is asked for.
struct ProveOptions {
  std::string file;
  ProofFormat format = ProofFormat::Report;
  proof::PlanOptions plan;
  double netOhm = proof::UsualNetOhm;
  std::size_t jobs = 0;  ///< processes; 0: as many as the machine has cores
  std::vector<proof::EscapeReason> accepted;
  std::vector<std::string> outputs;  ///< "html:FILE", "json:FILE", "csv:FILE"
  bool suggest = false;              ///< thresholds that would find more
  std::size_t throughPlugin = 0;     ///< faults to check through the plug-in's library, too
  bool strict = false;
};

/// Proves, prints and writes. Throws Failure.
ExitStatus Prove(const CommonOptions& common, const ProveOptions& options);

}  // namespace kxbench
