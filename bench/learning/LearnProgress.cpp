#include "bench/learning/LearnProgress.h"

#include <cmath>

#include "contracts/UserInterface.h"

namespace kxbench {

namespace {

/// The learn procedure takes a plain function, so the object it speaks for must be found without one.
LearnProgress* current = nullptr;

ProgressDialogLayout Layout() {
  ProgressDialogLayout layout{};
  layout.caption = "Learning";
  layout.clientWidth = 266;
  layout.clientHeight = 73;
  layout.fontName = "Segoe UI";
  layout.fontHeight = -12;
  layout.bar = {8, 8, 250, 17};
  layout.barMinimum = 0;
  layout.barMaximum = 1000;
  layout.button = {95, 40, 75, 25};
  layout.buttonCaption = "Cancel";
  layout.buttonResult = mrCancel;
  return layout;
}

}  // namespace

LearnProgress::LearnProgress()
    : application_(Application()), dialog_(application_.CreateProgressDialog(Layout())) {
  dialog_->Show();
  current = this;
  SetApplication(this);
}

LearnProgress::~LearnProgress() {
  SetApplication(&application_);
  current = nullptr;
}

bool LearnProgress::Report(double position) { return current->Update(position); }

bool LearnProgress::Update(double position) {
  application_.ProcessMessages();
  if (dialog_->GetModalResult() != mrNone || !dialog_->Visible()) stopped_ = true;
  if (stopped_) return true;
  dialog_->SetBarPosition(static_cast<int>(std::lround(position * dialog_->BarMaximum())));
  return false;
}

void LearnProgress::ProcessMessages() { application_.ProcessMessages(); }

int LearnProgress::ShowMessage(const MessageBoxRequest& request) {
  const int answer = application_.ShowMessage(request);
  if (answer == mrCancel) stopped_ = true;
  return answer;
}

std::unique_ptr<ProgressDialog> LearnProgress::CreateProgressDialog(const ProgressDialogLayout& layout) {
  return application_.CreateProgressDialog(layout);
}

TaskWindowList LearnProgress::DisableTaskWindows(WindowHandle except) {
  return application_.DisableTaskWindows(except);
}

void LearnProgress::EnableTaskWindows(const TaskWindowList& windows) {
  application_.EnableTaskWindows(windows);
}

}  // namespace kxbench
