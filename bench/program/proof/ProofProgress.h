#pragma once

#include <cstddef>
#include <string>

#include "ui/terminal/Terminal.h"
#include "ui/terminal/TerminalUserInterface.h"

namespace kxbench {

/// "Proving, 0:42 left": what is done, and how long the rest will take if it goes on as it did.
std::string ProofCaption(double fraction, double seconds);

/// The progress of a proof on a terminal: a bar that is redrawn, or a line for each tenth.
class ProofProgress {
 public:
  /// Draws nothing when not `shown`. `terminal` outlives it.
  ProofProgress(Terminal& terminal, bool shown, SecondsSource seconds = SteadySeconds);
  ~ProofProgress();
  ProofProgress(const ProofProgress&) = delete;
  ProofProgress& operator=(const ProofProgress&) = delete;

  void Report(std::size_t done, std::size_t total);

 private:
  Terminal& terminal_;
  bool shown_;
  SecondsSource seconds_;
  double started_;
  double lastLine_ = 0;
  bool drawn_ = false;
};

}  // namespace kxbench
