#pragma once

#include <wx/textctrl.h>

#include <cstdint>
#include <functional>
#include <string>

#include "plugin/editor/NumberPosition.h"

namespace shorttest {

/// Two arrow buttons attached to an edit: together they hold a whole number, the position, see
/// NumberPosition. The edit alone may be empty or hold something else.
class UpDownEdit {
 public:
  /// Attaches arrow buttons, children of the edit's parent, to `edit`, which outlives this object, and writes
  /// `position` into it.
  UpDownEdit(wxTextCtrl& edit, const NumberLimits& limits, std::int32_t position);
  UpDownEdit(const UpDownEdit&) = delete;
  UpDownEdit& operator=(const UpDownEdit&) = delete;

  /// Called after every change of the edit's text but those of Show, once the position has followed.
  void OnChange(std::function<void()> handler) { changeHandler_ = std::move(handler); }

  std::int32_t Position() const { return position_.Value(); }

  /// Moves the position, clipped to the limits, and writes it into the edit.
  void SetPosition(std::int32_t position);

  /// Shows a position, also one outside the limits, with a text of its own, which the position follows if it
  /// can. Nobody is told of the change.
  void Show(std::int32_t position, const std::string& text);

  /// Shows another text for what the edit was left with.
  void ShowText(const std::string& text) { Show(Position(), text); }

  std::int32_t Minimum() const { return position_.Limits().minimum; }
  std::int32_t Maximum() const { return position_.Limits().maximum; }
  std::int32_t StepWidth() const { return position_.Limits().step; }

  /// Change the limits of later movements. Position and text stay, even outside the new limits.
  void SetMinimum(std::int32_t minimum) { position_.SetMinimum(minimum); }
  void SetMaximum(std::int32_t maximum) { position_.SetMaximum(maximum); }

  /// The edit's text (UTF-8).
  std::string Text() const;

  /// Replaces the edit's text; the position follows if it can.
  void SetText(const std::string& text);

  wxTextCtrl& Edit() const { return edit_; }

  /// The arrow buttons, for the layout.
  wxWindow& Buttons() const { return *buttons_; }

 private:
  void Step(int direction);

  wxTextCtrl& edit_;
  NumberPosition position_;
  std::function<void()> changeHandler_;
  wxWindow* buttons_;
};

}  // namespace shorttest
