#include "plugin/editor/UpDownEdit.h"

#include "plugin/editor/StepButtons.h"

namespace shorttest {

UpDownEdit::UpDownEdit(wxTextCtrl& edit, const NumberLimits& limits, std::int32_t position)
    : edit_(edit),
      position_(limits, position),
      buttons_(MakeStepButtons(*edit.GetParent(), [this](int direction) {
        edit_.SetFocus();
        Step(direction);
      })) {
  SetPosition(position);
  edit_.Bind(wxEVT_TEXT, [this](wxCommandEvent&) {
    position_.Follow(Text());
    if (changeHandler_) changeHandler_();
  });
  edit_.Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    const bool up = key == WXK_UP || key == WXK_NUMPAD_UP;
    const bool down = key == WXK_DOWN || key == WXK_NUMPAD_DOWN;
    if (event.HasAnyModifiers() || !(up || down)) {
      event.Skip();
    } else {
      Step(up ? 1 : -1);
    }
  });
}

void UpDownEdit::SetPosition(std::int32_t position) {
  position_.Set(position);
  SetText(std::to_string(Position()));
}

std::string UpDownEdit::Text() const { return edit_.GetValue().utf8_string(); }

void UpDownEdit::SetText(const std::string& text) {
  const wxString value = wxString::FromUTF8(text);
  if (edit_.GetValue() != value) edit_.SetValue(value);
}

void UpDownEdit::Show(std::int32_t position, const std::string& text) {
  position_.Keep(position);
  position_.Follow(text);
  const wxString value = wxString::FromUTF8(text);
  if (edit_.GetValue() != value) edit_.ChangeValue(value);
}

void UpDownEdit::Step(int direction) {
  position_.Step(direction);
  SetText(std::to_string(Position()));
}

}  // namespace shorttest
