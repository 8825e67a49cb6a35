#pragma once

#include <wx/dialog.h>

#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "plugin/editor/UpDownEdit.h"

namespace shorttest {

/// The editor dialog's native window: what it does as a window, whatever its controls mean. Keeps the keys of
/// its labels and tells when the keyboard leaves a control for another one of the dialog.
class EditorDialog : public wxDialog {
 public:
  explicit EditorDialog(const wxString& caption);
  ~EditorDialog() override;

  /// Shows the dialog centred, wherever it was before.
  int ShowModal() override;

  /// Attaches arrow buttons to an edit; the dialog keeps the pair.
  UpDownEdit* AddUpDown(wxTextCtrl& edit, const NumberLimits& limits, std::int32_t position);

  /// Lets Alt and the letter after the "&" in `caption` move the keyboard to `target`. Of several controls
  /// with the same letter each press takes the next one.
  void AddAccelerator(const wxString& caption, wxWindow& target);

  /// `handler` runs when the keyboard leaves `control` for another control of this dialog. Not when another
  /// window comes to the front.
  void OnLeave(wxWindow& control, std::function<void()> handler);

  /// `handler` runs when the keyboard has come to another control of this dialog, after the previous one was
  /// left: with null for a control that does not report it.
  void OnEnter(std::function<void(const wxWindow*)> handler) { enterHandler_ = std::move(handler); }

  /// The control that had the keyboard is left.
  void LeaveControl();

  /// Acts as if the keyboard left the control that has it, and came back.
  void TakeOverControl();

  /// While `ignored`, Enter and the space bar press no button; Escape and the mouse do.
  void IgnorePressingKeys(bool ignored);

  /// `handler` runs when the user presses F1.
  void OnHelpKey(std::function<void()> handler) { helpHandler_ = std::move(handler); }

  /// `handler` runs when the user asks for another page, wherever the keyboard is: with false for the one
  /// before (Ctrl+PageUp, Ctrl+Shift+Tab), with true for the next one (Ctrl+PageDown, Ctrl+Tab).
  void OnPageKey(std::function<void(bool forward)> handler) { pageHandler_ = std::move(handler); }

  /// Forgets which control had the keyboard, without leaving it.
  void ForgetControl() { current_ = nullptr; }

 private:
  class PressingKeyFilter;

  void OnChildFocus(wxChildFocusEvent& event);
  void OnKillFocus(wxFocusEvent& event);
  void OnCharHook(wxKeyEvent& event);
  void Enter(const wxWindow* control);
  bool GoToAccelerator(wchar_t letter);
  wxWindow* NextTarget(wchar_t letter) const;

  std::vector<std::unique_ptr<UpDownEdit>> upDowns_;
  std::map<wchar_t, std::vector<wxWindow*>> accelerators_;
  std::map<wxWindow*, std::function<void()>> leaveHandlers_;
  std::function<void(const wxWindow*)> enterHandler_;
  std::function<void()> helpHandler_;
  std::function<void(bool)> pageHandler_;
  wxWindow* current_ = nullptr;
  std::unique_ptr<PressingKeyFilter> ignoredKeys_;
};

}  // namespace shorttest
