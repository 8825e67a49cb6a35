#pragma once

#include <string>

#include "bench/program/system/Failure.h"
#include "ui/terminal/BackgroundWriter.h"

namespace kxbench {

/// Thrown when the user does not want to wait until the results are read.
class OutputAbandoned : public Failure {
 public:
  OutputAbandoned() : Failure("cancelled: nobody read standard output") {}
};

/// Where the program's results go.
class Output {
 public:
  virtual ~Output() = default;

  /// Writes `text`, and waits until it is taken. Called while no relay is closed. Throws Failure when it
  /// cannot be written: results must not get lost unnoticed; OutputAbandoned when a second interrupt ends the
  /// wait.
  virtual void Write(const std::string& text) = 0;
};

class StandardOutput : public Output {
 public:
  StandardOutput();
  void Write(const std::string& text) override;

 private:
  BackgroundWriter writer_;
};

}  // namespace kxbench
