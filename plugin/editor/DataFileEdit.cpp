#include "plugin/editor/DataFileEdit.h"

#include <wx/textctrl.h>

namespace shorttest {

void DataFileEdit::SetText(const std::string& text) {
  text_ = text;
  if (control_ != nullptr) control_->ChangeValue(wxString::FromUTF8(text));
}

void DataFileEdit::Attach(wxTextCtrl& control) {
  control_ = &control;
  SetText(text_);
  control.Bind(wxEVT_TEXT, [this](wxCommandEvent&) { text_ = control_->GetValue().utf8_string(); });
  control.Bind(wxEVT_DESTROY, [this](wxWindowDestroyEvent&) { control_ = nullptr; });
}

}  // namespace shorttest
