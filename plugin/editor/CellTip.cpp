#include "plugin/editor/CellTip.h"

#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "plugin/editor/DesignScale.h"

namespace shorttest {
namespace {

constexpr int TipBorder = 4;

}  // namespace

CellTip::CellTip(wxWindow& parent, const wxString& text, const wxRect& area)
    : window_(new wxPopupWindow(&parent, wxBORDER_SIMPLE)),
      label_(new wxStaticText(window_.get(), wxID_ANY, "")) {
  window_->SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_INFOBK));
  label_->SetForegroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_INFOTEXT));
  auto* const frame = new wxBoxSizer(wxVERTICAL);
  frame->Add(label_, wxSizerFlags().Border(wxALL, Scaled(parent, TipBorder)));
  window_->SetSizer(frame);
  Show(text, area);
  window_->Show();
}

CellTip::~CellTip() {
  if (window_) window_->Destroy();
}

void CellTip::Show(const wxString& text, const wxRect& area) {
  if (!window_) return;
  if (label_->GetLabelText() != text) {
    label_->SetLabelText(text);
    window_->Fit();
  }
  window_->Position(area.GetPosition(), area.GetSize());
}

wxString CellTip::Text() const { return window_ ? label_->GetLabelText() : wxString(); }

wxRect CellTip::Area() const { return window_ ? window_->GetScreenRect() : wxRect(); }

}  // namespace shorttest
