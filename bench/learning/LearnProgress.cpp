#include "bench/learning/LearnProgress.h"

#include <cmath>

namespace kxbench {

namespace {

ProgressDialogLayout Layout(const std::string& caption) {
  ProgressDialogLayout layout{};
  layout.caption = caption;
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

LearnProgress::LearnProgress(const std::string& caption)
    : dialog_(Application().CreateProgressDialog(Layout(caption))) {
  dialog_->Show();
}

bool LearnProgress::Report(double position) {
  Application().ProcessMessages();
  if (Cancelled()) return true;
  dialog_->SetBarPosition(static_cast<int>(std::lround(position * dialog_->BarMaximum())));
  return false;
}

}  // namespace kxbench
