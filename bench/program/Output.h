#pragma once

#include <string>

namespace kxbench {

/// Where the program's results go.
class Output {
 public:
  virtual ~Output() = default;

  /// Writes `text` at once. Throws Failure when it cannot be written: results must not get lost unnoticed.
  virtual void Write(const std::string& text) = 0;
};

class StandardOutput : public Output {
 public:
  void Write(const std::string& text) override;
};

}  // namespace kxbench
