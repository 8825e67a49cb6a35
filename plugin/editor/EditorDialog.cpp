#include "plugin/editor/EditorDialog.h"

#include <wx/button.h>
#include <wx/eventfilter.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include "plugin/editor/DesignScale.h"

namespace shorttest {
namespace {

// Whether a key asks for the next page (true) or the one before.
std::optional<bool> PageDirection(const wxKeyEvent& event) {
  const int modifiers = event.GetModifiers();
  switch (event.GetKeyCode()) {
    case WXK_PAGEUP:
    case WXK_PAGEDOWN:
      if (modifiers == wxMOD_CONTROL) return event.GetKeyCode() == WXK_PAGEDOWN;
      break;
    case WXK_TAB:
      if (modifiers == wxMOD_CONTROL) return true;
      if (modifiers == (wxMOD_CONTROL | wxMOD_SHIFT)) return false;
      break;
    default:
      break;
  }
  return std::nullopt;
}

bool PressesButtons(int key) {
  return key == WXK_RETURN || key == WXK_NUMPAD_ENTER || key == WXK_SPACE || key == WXK_NUMPAD_SPACE;
}

}  // namespace

// Takes the keys before any control does: on Windows a button keeps Enter from the dialog. Boxes above the
// dialog keep their keys.
class EditorDialog::PressingKeyFilter : public wxEventFilter {
 public:
  explicit PressingKeyFilter(EditorDialog& dialog) : dialog_(dialog) { wxEvtHandler::AddFilter(this); }
  ~PressingKeyFilter() override { wxEvtHandler::RemoveFilter(this); }
  PressingKeyFilter(const PressingKeyFilter&) = delete;
  PressingKeyFilter& operator=(const PressingKeyFilter&) = delete;

  int FilterEvent(wxEvent& event) override {
    if (event.GetEventType() != wxEVT_CHAR_HOOK) return Event_Skip;
    auto* const window = dynamic_cast<wxWindow*>(event.GetEventObject());
    const bool isOurs = window != nullptr && wxGetTopLevelParent(window) == &dialog_;
    return isOurs && PressesButtons(static_cast<const wxKeyEvent&>(event).GetKeyCode()) ? Event_Processed
                                                                                        : Event_Skip;
  }

 private:
  EditorDialog& dialog_;
};

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

int EditorDialog::ShowModal() {
  CentreOnParent();
  // A window manager that is still busy with the last showing may put it back to where it was then.
  CallAfter([this] { CentreOnParent(); });
  return wxDialog::ShowModal();
}

UpDownEdit* EditorDialog::AddUpDown(wxTextCtrl& edit, const NumberLimits& limits, std::int32_t position) {
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
  control.Bind(wxEVT_KILL_FOCUS, &EditorDialog::OnKillFocus, this);
}

void EditorDialog::TakeOverControl() {
  const auto leaving = leaveHandlers_.find(current_);
  if (leaving != leaveHandlers_.end()) leaving->second();
}

void EditorDialog::IgnorePressingKeys(bool ignored) {
  ignoredKeys_ = ignored ? std::make_unique<PressingKeyFilter>(*this) : nullptr;
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
  Enter(entered);
}

void EditorDialog::Enter(const wxWindow* control) {
  if (enterHandler_) enterHandler_(control);
}

void EditorDialog::OnCharHook(wxKeyEvent& event) {
  if (event.GetKeyCode() == WXK_F1 && helpHandler_) {
    helpHandler_();
  } else if (const auto forward = PageDirection(event); forward && pageHandler_) {
    pageHandler_(*forward);
  } else if (event.GetModifiers() != wxMOD_ALT ||
             !GoToAccelerator(static_cast<wchar_t>(event.GetUnicodeKey()))) {
    event.Skip();
  }
}

// Not every control tells that it got the keyboard: once the focus has settled, it is looked whether the one
// that lost it left it to a control of this dialog or to another window.
void EditorDialog::OnKillFocus(wxFocusEvent& event) {
  event.Skip();
  CallAfter([this, left = event.GetEventObject()] {
    const wxWindow* const entered = FindFocus();
    if (left != current_ || !IsActive() || entered == current_) return;
    LeaveControl();
    Enter(entered);
  });
}

// Not left to the toolkit: it does not act on the letters of labels everywhere, and on those of buttons only
// where the keyboard is in the same panel. A button that nothing else shares the letter with is pressed, and
// the keyboard stays where it is.
bool EditorDialog::GoToAccelerator(wchar_t letter) {
  wxWindow* const target = NextTarget(letter);
  if (target == nullptr) return false;
  auto* const button = dynamic_cast<wxButton*>(target);
  if (button == nullptr || accelerators_.at(letter).size() > 1) {
    target->SetFocus();
    return true;
  }
  // The key is dealt with first: what the button starts may take long.
  CallAfter([button] {
    wxCommandEvent click(wxEVT_BUTTON, button->GetId());
    click.SetEventObject(button);
    if (button->IsEnabled()) button->Command(click);
  });
  return true;
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
