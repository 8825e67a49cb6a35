#include "editor/EditorDialog.h"

#include <wx/button.h>

#include <algorithm>
#include <cstddef>
#include <utility>

#include "editor/DesignScale.h"

namespace shorttest {

EditorDialog::EditorDialog(const wxString& caption)
    : wxDialog(nullptr, wxID_ANY, caption, wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER) {
  SetFont(DialogFont());
  Bind(wxEVT_CHILD_FOCUS, &EditorDialog::OnChildFocus, this);
  Bind(wxEVT_CHAR_HOOK, &EditorDialog::OnCharHook, this);
}

EditorDialog::~EditorDialog() {
  // Controls that go move the keyboard about; nobody is left to hear of it.
  SetEvtHandlerEnabled(false);
  DestroyChildren();
}

UpDownEdit* EditorDialog::AddUpDown(wxTextCtrl& edit, const UpDownEdit::Limits& limits,
                                    std::int32_t position) {
  upDowns_.push_back(std::make_unique<UpDownEdit>(edit, limits, position));
  return upDowns_.back().get();
}

void EditorDialog::AddAccelerator(const wxString& caption, wxWindow& target) {
  const int mark = caption.Find('&');
  if (mark == wxNOT_FOUND) return;
  const wxString letter = wxString(caption[static_cast<std::size_t>(mark) + 1]).Upper();
  accelerators_[static_cast<wchar_t>(letter[0].GetValue())].push_back(&target);
}

void EditorDialog::OnLeave(wxWindow& control, std::function<void()> handler) {
  leaveHandlers_[&control] = std::move(handler);
}

void EditorDialog::LeaveControl() {
  const auto leaving = leaveHandlers_.find(std::exchange(current_, nullptr));
  if (leaving != leaveHandlers_.end()) leaving->second();
}

void EditorDialog::OnChildFocus(wxChildFocusEvent& event) {
  event.Skip();
  wxWindow* const entered = event.GetWindow();
  if (entered == current_) return;
  LeaveControl();
  current_ = entered;
}

// The toolkit acts on the letters of buttons alone, and only some systems on those of labels.
void EditorDialog::OnCharHook(wxKeyEvent& event) {
  wxWindow* const target =
      event.GetModifiers() == wxMOD_ALT ? NextTarget(static_cast<wchar_t>(event.GetUnicodeKey())) : nullptr;
  const bool onlyButton = target != nullptr && wxDynamicCast(target, wxButton) != nullptr &&
                          accelerators_.at(static_cast<wchar_t>(event.GetUnicodeKey())).size() == 1;
  if (target == nullptr || onlyButton) {
    event.Skip();
  } else {
    target->SetFocus();
  }
}

wxWindow* EditorDialog::NextTarget(wchar_t letter) const {
  const auto entry = accelerators_.find(letter);
  if (entry == accelerators_.end()) return nullptr;
  const std::vector<wxWindow*>& targets = entry->second;
  const auto current = std::find(targets.begin(), targets.end(), FindFocus());
  const std::size_t start =
      current == targets.end() ? 0 : static_cast<std::size_t>(current - targets.begin()) + 1;
  for (std::size_t i = 0; i < targets.size(); ++i) {
    wxWindow* const target = targets[(start + i) % targets.size()];
    if (target->IsShownOnScreen() && target->IsEnabled()) return target;
  }
  return nullptr;
}

}  // namespace shorttest
