#pragma once

#include <deque>
#include <optional>
#include <string>

#include "ui/terminal/Terminal.h"

namespace kxbench {

/// A terminal that keeps what was written and types what it was given.
class FakeTerminal : public Terminal {
 public:
  void Write(std::string_view text) override { written += text; }
  void Draw(std::string_view text) override { written += text; }
  bool Ready() const override { return ready; }
  void Settle() override {}
  bool CanRedraw() const override { return redraws; }
  bool CanAsk() const override { return asks; }
  bool ShowsUnicode() const override { return unicode; }
  int Columns() const override { return columns; }
  std::optional<std::string> ReadLine() override {
    if (answers.empty()) return std::nullopt;
    std::string line = answers.front();
    answers.pop_front();
    return line;
  }

  /// What was written since the last call.
  std::string TakeWritten() { return std::exchange(written, {}); }

  std::string written;
  std::deque<std::string> answers;
  bool ready = true;
  bool redraws = true;
  bool asks = true;
  bool unicode = false;
  int columns = 80;
};

}  // namespace kxbench
