#include "plugin/editor/UpDownEdit.h"

#include <algorithm>

#include "plugin/editor/StepButtons.h"
#include "text/NumberText.h"

namespace shorttest {

UpDownEdit::UpDownEdit(wxTextCtrl& edit, const Limits& limits, std::int32_t position)
    : edit_(edit), limits_(limits), buttons_(MakeStepButtons(*edit.GetParent(), [this](int direction) {
        edit_.SetFocus();
        Step(direction);
      })) {
  SetPosition(position);
  edit_.Bind(wxEVT_TEXT, [this](wxCommandEvent&) {
    Follow();
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
  position_ = std::max(limits_.minimum, std::min(position, limits_.maximum));
  SetText(std::to_string(position_));
}

std::string UpDownEdit::Text() const { return edit_.GetValue().utf8_string(); }

void UpDownEdit::SetText(const std::string& text) {
  const wxString value = wxString::FromUTF8(text);
  if (edit_.GetValue() != value) edit_.SetValue(value);
}

void UpDownEdit::Step(int direction) {
  const std::int64_t target = std::int64_t{position_} + std::int64_t{direction} * limits_.step;
  SetPosition(static_cast<std::int32_t>(
      std::clamp<std::int64_t>(target, std::min(limits_.minimum, limits_.maximum), limits_.maximum)));
}

void UpDownEdit::Follow() {
  const auto typed = TextToInteger(Text());
  if (typed && limits_.minimum <= *typed && *typed <= limits_.maximum) position_ = *typed;
}

}  // namespace shorttest
