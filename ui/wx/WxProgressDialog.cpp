#include "ui/wx/WxProgressDialog.h"

#include <wx/button.h>
#include <wx/font.h>
#include <wx/gauge.h>

#include <algorithm>
#include <cmath>

namespace kxbench {
namespace {

constexpr double PointsPerPixel = 72.0 / 96.0;  // at the layout's 96 pixels per inch

wxFont LayoutFont(const ProgressDialogLayout& layout) {
  return wxFont(
      wxFontInfo(std::abs(layout.fontHeight) * PointsPerPixel).FaceName(wxString::FromUTF8(layout.fontName)));
}

// By how much the button must outgrow its layout for its caption, where the user's font is larger.
wxSize ButtonGrowth(const wxWindow& button, const wxSize& laidOut) {
  const wxSize padding = button.FromDIP(wxSize(4, 3));
  wxSize growth = button.GetTextExtent(button.GetLabel()) + 2 * padding - laidOut;
  growth.IncTo(wxSize(0, 0));
  return growth;
}

}  // namespace

WxProgressDialog::WxProgressDialog(const ProgressDialogLayout& layout, TaskWindows& taskWindows)
    : taskWindows_(taskWindows),
      dialog_(new wxDialog(nullptr, wxID_ANY, wxString::FromUTF8(layout.caption), wxDefaultPosition,
                           wxDefaultSize, wxCAPTION | wxSYSTEM_MENU | wxCLOSE_BOX)),
      barMinimum_(layout.barMinimum),
      barMaximum_(layout.barMaximum) {
  dialog_->SetFont(LayoutFont(layout));
  bar_ = new wxGauge(dialog_.get(), wxID_ANY, barMaximum_ - barMinimum_);
  // The identifier makes Escape press it.
  button_ = new wxButton(dialog_.get(), wxID_CANCEL, wxString::FromUTF8(layout.buttonCaption));
  Arrange(layout);

  // Neither handler lets the event go on: pressing the button must leave the dialog open, and the close box
  // must not press the button.
  button_->Bind(wxEVT_BUTTON,
                [this, result = layout.buttonResult](wxCommandEvent&) { modalResult_ = result; });
  dialog_->Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { dialog_->Hide(); });
}

WxProgressDialog::~WxProgressDialog() {
  if (dialog_) dialog_->Destroy();
}

void WxProgressDialog::Arrange(const ProgressDialogLayout& layout) {
  const auto point = [this](const ControlBounds& b) { return dialog_->FromDIP(wxPoint(b.left, b.top)); };
  const auto size = [this](const ControlBounds& b) { return dialog_->FromDIP(wxSize(b.width, b.height)); };
  const wxSize growth = ButtonGrowth(*button_, size(layout.button));
  bar_->SetSize(wxRect(point(layout.bar), size(layout.bar) + wxSize(growth.x, 0)));
  button_->SetSize(wxRect(point(layout.button), size(layout.button) + growth));
  dialog_->SetClientSize(dialog_->FromDIP(wxSize(layout.clientWidth, layout.clientHeight)) + growth);
}

void WxProgressDialog::Show() {
  dialog_->CentreOnScreen();
  dialog_->Show();
  button_->SetFocus();
}

bool WxProgressDialog::Visible() const { return dialog_ && dialog_->IsShown(); }

void WxProgressDialog::SetBarPosition(int position) {
  if (dialog_) bar_->SetValue(std::clamp(position, barMinimum_, barMaximum_) - barMinimum_);
}

WindowHandle WxProgressDialog::Handle() const { return dialog_ ? taskWindows_.HandleOf(*dialog_) : 0; }

}  // namespace kxbench
