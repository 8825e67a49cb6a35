#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "contracts/UserInterface.h"

namespace kxbench {

/// What the program decides in the user's place.
struct Supervision {
  /// True once the user wants to stop.
  std::function<bool()> interrupted;

  /// The answer to every question that offers it, given without asking; none: the user is asked.
  std::optional<int> answer;

  /// Gets the text and the answer of each question that was not asked.
  std::function<void(const std::string&)> warn;
};

/// Stands before another user interface and lets the program act as the user: from the first call of
/// ProcessMessages after an interrupt on, every progress dialog has the result of its button, as if it had
/// been pressed; questions can be answered in advance.
class SupervisedUserInterface : public UserInterface {
 public:
  /// `inner` outlives the object, and the object its dialogs.
  SupervisedUserInterface(UserInterface& inner, Supervision supervision);
  ~SupervisedUserInterface() override;
  SupervisedUserInterface(const SupervisedUserInterface&) = delete;
  SupervisedUserInterface& operator=(const SupervisedUserInterface&) = delete;

  /// Takes an interrupt back that has pressed buttons: those of the dialogs that follow are not pressed.
  void ForgetInterrupt() { pressed_ = false; }

  void ProcessMessages() override;
  int ShowMessage(const MessageBoxRequest& request) override;
  std::unique_ptr<ProgressDialog> CreateProgressDialog(const ProgressDialogLayout& layout) override;
  TaskWindowList DisableTaskWindows(WindowHandle except) override;
  void EnableTaskWindows(const TaskWindowList& windows) override;

 private:
  friend class SupervisedProgress;

  UserInterface& inner_;
  Supervision supervision_;
  bool pressed_ = false;
};

}  // namespace kxbench
