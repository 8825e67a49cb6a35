#pragma once

#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "contracts/UserInterface.h"
#include "tests/support/CallLog.h"

namespace shorttest::testkit {

/// What the fake throws where it is told to.
class UserInterfaceFailure : public std::runtime_error {
 public:
  UserInterfaceFailure() : std::runtime_error("the user interface failed") {}
};

/// A user interface with a script instead of a user. It does not become Application() by itself.
///
///     ui.PressCancelAt(3);      // "Abbrechen" during the third ProcessMessages from now on
///     ui.CloseBoxAt(3);         // the close box instead
///     ui.ThrowAtCall(5);        // the fifth call of any kind from now on throws UserInterfaceFailure
///     ui.Answer({mrCancel});    // the next message box; without answers the last button is pressed
///
/// The log gets "messages", "create dialog", "show", "bar N", "close dialog", "disable all but N",
/// "enable N N ..." and "box KIND [BUTTONS] HELP: TEXT". Questions of the dialog (result, visibility, range,
/// handle) are counted as calls and not logged.
class FakeUserInterface : public UserInterface {
 public:
  static constexpr WindowHandle DialogHandle = 99;

  explicit FakeUserInterface(CallLog& log) : log_(log) {}

  // --- script ---
  void PressCancelAt(int n) { cancelAt_ = messages_ + n; }
  void CloseBoxAt(int n) { closeAt_ = messages_ + n; }
  void ThrowAtCall(int k) {
    calls_ = 0;
    throwAt_ = k;
  }
  void Answer(const std::vector<int>& answers) { answers_ = answers; }
  /// Upper end of the bar's range; a large one shows positions in full.
  void BarMaximum(int maximum) { barMaximum_ = maximum; }
  /// Called within every ProcessMessages.
  void WithinMessages(std::function<void()> action) { withinMessages_ = std::move(action); }
  /// The task's windows; all enabled unless told otherwise.
  void Windows(const std::map<WindowHandle, bool>& enabled) { windows_ = enabled; }

  // --- questions ---
  int Calls() const { return calls_; }            ///< of any kind, since ThrowAtCall or the beginning
  int MessageCalls() const { return messages_; }  ///< calls of ProcessMessages
  int Dialogs() const { return dialogs_; }        ///< progress dialogs that are there
  int BarPosition() const { return bar_; }
  bool Enabled(WindowHandle window) const { return windows_.at(window); }
  const std::map<WindowHandle, bool>& Windows() const { return windows_; }
  bool AllWindowsEnabled() const;
  const std::vector<MessageBoxRequest>& Boxes() const { return boxes_; }
  const ProgressDialogLayout& Layout() const { return layout_; }

  // --- UserInterface ---
  void ProcessMessages() override;
  int ShowMessage(const MessageBoxRequest& request) override;
  std::unique_ptr<ProgressDialog> CreateProgressDialog(const ProgressDialogLayout& layout) override;
  TaskWindowList DisableTaskWindows(WindowHandle except) override;
  void EnableTaskWindows(const TaskWindowList& windows) override;

 private:
  class Dialog;

  void CountCall();

  CallLog& log_;
  int calls_ = 0;
  int throwAt_ = 0;
  int messages_ = 0;
  int cancelAt_ = 0;
  int closeAt_ = 0;
  int barMaximum_ = 100;
  int bar_ = -1;
  int dialogs_ = 0;
  int modalResult_ = mrNone;
  bool visible_ = false;
  std::vector<int> answers_;
  std::vector<MessageBoxRequest> boxes_;
  std::function<void()> withinMessages_;
  ProgressDialogLayout layout_;
  std::map<WindowHandle, bool> windows_ = {{11, true}, {12, true}, {13, false}};
};

}  // namespace shorttest::testkit
