#include "ui/wx/InterruptTimer.h"

#include <wx/dialog.h>

#include "ui/wx/MessageBox.h"

namespace kxbench {

namespace {

constexpr int LookEveryMs = 100;

wxDialog* FrontDialog() {
  // The latest comes last.
  for (auto node = wxTopLevelWindows.GetLast(); node != nullptr; node = node->GetPrevious()) {
    auto* dialog = wxDynamicCast(node->GetData(), wxDialog);
    if (dialog != nullptr && dialog->IsModal()) return dialog;
  }
  return nullptr;
}

}  // namespace

void InterruptTimer::Watch(bool (*interrupted)()) {
  interrupted_ = interrupted;
  Start(LookEveryMs);
}

void InterruptTimer::Notify() {
  // Below a message box no dialog can be ended: the toolkit ends the loop on top, which is the box's.
  if (!interrupted_() || MessageBoxIsOpen()) return;
  if (wxDialog* dialog = FrontDialog()) dialog->Close();
}

}  // namespace kxbench
