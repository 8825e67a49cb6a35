#pragma once

#include "contracts/UserInterface.h"
#include "ui/wx/InterruptCloser.h"
#include "ui/wx/TaskWindows.h"
#include "ui/wx/Toolkit.h"

namespace kxbench {

/// The user interface with real windows. Everything on the thread that made it.
class WxUserInterface : public UserInterface {
 public:
  /// Starts the toolkit. Throws std::runtime_error when no display can be reached.
  WxUserInterface() = default;

  void ProcessMessages() override;
  int ShowMessage(const MessageBoxRequest& request) override;
  std::unique_ptr<ProgressDialog> CreateProgressDialog(const ProgressDialogLayout& layout) override;
  TaskWindowList DisableTaskWindows(WindowHandle except) override;
  void EnableTaskWindows(const TaskWindowList& windows) override;

  /// See kxCloseOnInterrupt.
  void CloseOnInterrupt(bool (*interrupted)()) { closer_.Watch(interrupted); }

 private:
  Toolkit toolkit_;
  TaskWindows taskWindows_;
  InterruptCloser closer_;
};

}  // namespace kxbench
