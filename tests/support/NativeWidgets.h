#pragma once

#include <wx/textctrl.h>

#include <optional>
#include <string>

namespace widget_test {

/// Text (UTF-8) of the one-line edit that has the keyboard, also in the system's own dialogs, which the
/// toolkit knows nothing of. No value when something else has the keyboard.
std::optional<std::string> TextOfFocusedEntry();

/// Turns the mouse wheel by one notch towards the user, wherever the mouse is.
void TurnWheel();

/// Number of the line, from 0, at the top of a text of several lines.
int FirstVisibleLine(const wxTextCtrl& memo);

/// Whether a text of several lines has a horizontal scroll bar, be it that it shows or that it would for a
/// wider text.
bool HasHorizontalBar(const wxTextCtrl& memo);

}  // namespace widget_test
