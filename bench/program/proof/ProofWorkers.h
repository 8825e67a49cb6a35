#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench/program/proof/ProofWorker.h"
#include "bench/program/system/ChildProcess.h"

namespace kxbench {

/// One question to a worker, and where its answer goes.
struct ProofRequest {
  std::string line;
  std::function<void(const std::string& answer)> take;  ///< called on any thread, for each request once
};

/// The processes that check the faults of a proof. Each has the plug-in's procedures, which are made for one
/// thread, to itself.
class ProofWorkers {
 public:
  /// Starts `jobs` of them and waits until the first has checked the good device. Throws Failure with what
  /// keeps it from working.
  ProofWorkers(const ProofTask& task, std::size_t jobs);

  const std::vector<std::string>& GoodFindings() const { return goodFindings_; }
  double GoodSeconds() const { return goodSeconds_; }

  /// Has all requests answered, in any order, and returns when that is done or `cancelled` is true. `watch`
  /// is called several times a second with the number of answers so far. Throws Failure when a worker fails.
  /// False when it was cancelled.
  bool Answer(const std::vector<ProofRequest>& requests, const std::function<bool()>& cancelled,
              const std::function<void(std::size_t answered)>& watch);

 private:
  void ReadGoodDevice(ChildProcess& worker, bool keep);

  std::vector<std::unique_ptr<ChildProcess>> workers_;
  std::vector<bool> ready_;
  std::vector<std::string> goodFindings_;
  double goodSeconds_ = 0;
};

}  // namespace kxbench
