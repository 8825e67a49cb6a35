#include "ui/wx/WxUserInterface.h"

#include "ui/wx/MessageBox.h"
#include "ui/wx/WxProgressDialog.h"

namespace kxbench {

void WxUserInterface::ProcessMessages() { toolkit_.DispatchPendingEvents(); }

int WxUserInterface::ShowMessage(const MessageBoxRequest& request) { return ShowMessageBox(request); }

std::unique_ptr<ProgressDialog> WxUserInterface::CreateProgressDialog(const ProgressDialogLayout& layout) {
  return std::make_unique<WxProgressDialog>(layout, taskWindows_);
}

TaskWindowList WxUserInterface::DisableTaskWindows(WindowHandle except) {
  return taskWindows_.Disable(except);
}

void WxUserInterface::EnableTaskWindows(const TaskWindowList& windows) { taskWindows_.Enable(windows); }

}  // namespace kxbench
