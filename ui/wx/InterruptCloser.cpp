#include "ui/wx/InterruptCloser.h"

#include <wx/dialog.h>

#include <chrono>

#include "ui/wx/MessageBox.h"

namespace kxbench {

namespace {

constexpr std::chrono::milliseconds AskEvery{100};

wxDialog* FrontDialog() {
  // The latest comes last.
  for (auto node = wxTopLevelWindows.GetLast(); node != nullptr; node = node->GetPrevious()) {
    auto* dialog = wxDynamicCast(node->GetData(), wxDialog);
    if (dialog != nullptr && dialog->IsModal()) return dialog;
  }
  return nullptr;
}

}  // namespace

void InterruptCloser::Watch(bool (*interrupted)()) {
  asking_ = std::jthread([this, interrupted](const std::stop_token& stop) { Ask(stop, interrupted); });
}

void InterruptCloser::Ask(const std::stop_token& stop, bool (*interrupted)()) {
  std::unique_lock lock(waiting_);
  while (!stopped_.wait_for(lock, stop, AskEvery, [&stop] { return stop.stop_requested(); })) {
    if (interrupted()) CallAfter(&InterruptCloser::CloseFrontDialog);
  }
}

void InterruptCloser::CloseFrontDialog() {
  // Below a message box no dialog can be ended: the toolkit ends the loop on top, which is the box's.
  if (MessageBoxIsOpen()) return;
  if (wxDialog* dialog = FrontDialog()) dialog->Close();
}

}  // namespace kxbench
