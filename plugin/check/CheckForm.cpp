#include "plugin/check/CheckForm.h"

#include "framework/kxcomponents.h"
#include "text/Rounding.h"

std::unique_ptr<TShortTestCheckForm> CheckForm;

namespace {

constexpr ControlBounds ProgressBar1 = {8, 8, 150, 17};
constexpr ControlBounds Button1 = {45, 40, 75, 25};

ProgressDialogLayout Layout() {
  ProgressDialogLayout layout;
  layout.caption = "Kurzschlusstest";
  layout.clientWidth = 166;
  layout.clientHeight = 73;
  layout.fontName = "Segoe UI";
  layout.fontHeight = -12;
  layout.bar = ProgressBar1;
  layout.barMinimum = 0;
  layout.barMaximum = 100;
  layout.button = Button1;
  layout.buttonCaption = "Abbrechen";
  layout.buttonResult = mrCancel;
  return layout;
}

}  // namespace

TShortTestCheckForm::TShortTestCheckForm() : dialog_(Application().CreateProgressDialog(Layout())) {}

void TShortTestCheckForm::Show() {
  FormShow();
  dialog_->Show();
}

void TShortTestCheckForm::FormShow() { dialog_->SetBarPosition(0); }

void TShortTestCheckForm::SetProgress(double position) {
  dialog_->SetBarPosition(static_cast<int>(shorttest::RoundToEven(dialog_->BarMaximum() * position)));
}

bool UpdateProgress(double position) {
  Application().ProcessMessages();
  if (CheckForm->GetModalResult() != mrNone) return true;
  if (!CheckForm->Visible()) return true;
  CheckForm->SetProgress(position);
  return false;
}
