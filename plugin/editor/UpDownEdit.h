#pragma once

#include <wx/textctrl.h>

#include <cstdint>
#include <functional>
#include <string>

namespace shorttest {

/// Two arrow buttons attached to an edit: together they hold a whole number, the position. The position
/// follows what is typed as long as that is a number within the limits. The edit alone may be empty or hold
/// something else; the position then keeps its last value.
class UpDownEdit {
 public:
  struct Limits {
    std::int32_t minimum;
    std::int32_t maximum;
    std::int32_t step = 1;
  };

  /// Attaches arrow buttons, children of the edit's parent, to `edit`, which outlives this object, and writes
  /// `position` into it.
  UpDownEdit(wxTextCtrl& edit, const Limits& limits, std::int32_t position);
  UpDownEdit(const UpDownEdit&) = delete;
  UpDownEdit& operator=(const UpDownEdit&) = delete;

  /// Called after every change of the edit's text, whoever changed it, once the position has followed.
  void OnChange(std::function<void()> handler) { changeHandler_ = std::move(handler); }

  std::int32_t Position() const { return position_; }

  /// Moves the position, clipped to the limits, and writes it into the edit.
  void SetPosition(std::int32_t position);

  std::int32_t Minimum() const { return limits_.minimum; }
  std::int32_t Maximum() const { return limits_.maximum; }
  std::int32_t StepWidth() const { return limits_.step; }

  /// Change the limits of later movements. Position and text stay, even outside the new limits.
  void SetMinimum(std::int32_t minimum) { limits_.minimum = minimum; }
  void SetMaximum(std::int32_t maximum) { limits_.maximum = maximum; }

  /// The edit's text (UTF-8).
  std::string Text() const;

  /// Replaces the edit's text; the position follows if it can.
  void SetText(const std::string& text);

  wxTextCtrl& Edit() const { return edit_; }

  /// The arrow buttons, for the layout.
  wxWindow& Buttons() const { return *buttons_; }

 private:
  void Step(int direction);
  void Follow();

  wxTextCtrl& edit_;
  Limits limits_;
  std::int32_t position_ = 0;
  std::function<void()> changeHandler_;
  wxWindow* buttons_;
};

}  // namespace shorttest
