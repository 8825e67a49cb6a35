#pragma once

#include <memory>

#include "ui/terminal/BackgroundWriter.h"
#include "ui/terminal/Terminal.h"

namespace kxbench {

/// A terminal that nobody has to wait for: a thread of its own writes to another one, which may block.
class PatientTerminal : public Terminal {
 public:
  explicit PatientTerminal(std::unique_ptr<Terminal> inner);

  /// Waits until everything but drawings is written; a second interrupt ends the wait (see InterruptWatch).
  ~PatientTerminal() override;
  PatientTerminal(const PatientTerminal&) = delete;
  PatientTerminal& operator=(const PatientTerminal&) = delete;

  void Write(std::string_view text) override;
  void Draw(std::string_view text) override;
  bool Ready() const override { return writer_.Idle(); }
  void Settle() override { writer_.Settle(); }
  bool CanRedraw() const override { return inner_->CanRedraw(); }
  bool CanAsk() const override { return inner_->CanAsk(); }
  bool ShowsUnicode() const override { return inner_->ShowsUnicode(); }
  int Columns() const override { return inner_->Columns(); }
  std::optional<std::string> ReadLine() override;

 private:
  std::shared_ptr<Terminal> inner_;  ///< the thread's too, which may outlive this object
  BackgroundWriter writer_;
};

}  // namespace kxbench
