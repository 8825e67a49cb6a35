#pragma once

#include <functional>
#include <memory>

#include "contracts/UserInterface.h"
#include "ui/terminal/Terminal.h"

namespace kxbench {

class TerminalProgress;

enum class ProgressStyle {
  Shown,   ///< a bar that is redrawn in place; a line now and then where output cannot be redrawn
  Silent,  ///< nothing; questions are still asked
};

/// Seconds since any fixed moment; never runs backwards.
using SecondsSource = std::function<double()>;

/// The system's steady clock.
double SteadySeconds();

/// The user interface on a terminal. It has no windows, so none is disabled, and no close box, so its
/// progress dialogs stay visible. Its cancel button is Ctrl-C, which SupervisedUserInterface presses.
class TerminalUserInterface : public UserInterface {
 public:
  /// `terminal` outlives the object, and the object its dialogs.
  TerminalUserInterface(Terminal& terminal, ProgressStyle style, SecondsSource seconds = SteadySeconds);
  ~TerminalUserInterface() override;
  TerminalUserInterface(const TerminalUserInterface&) = delete;
  TerminalUserInterface& operator=(const TerminalUserInterface&) = delete;

  void ProcessMessages() override;

  /// Asks on the terminal. Where nobody can be asked, and for a box with a single button, it prints the text
  /// and answers what closing the box would.
  int ShowMessage(const MessageBoxRequest& request) override;

  std::unique_ptr<ProgressDialog> CreateProgressDialog(const ProgressDialogLayout& layout) override;
  TaskWindowList DisableTaskWindows(WindowHandle except) override;
  void EnableTaskWindows(const TaskWindowList& windows) override;

  /// Takes the bar off the terminal, so that other output starts on a clean line; it comes back by itself.
  void HideProgress();

 private:
  friend class TerminalProgress;

  Terminal& terminal_;
  ProgressStyle style_;
  SecondsSource seconds_;
  TerminalProgress* shown_ = nullptr;
};

}  // namespace kxbench
