#pragma once

#include <wx/textctrl.h>

namespace widget_test {

/// Turns the mouse wheel by one notch towards the user, wherever the mouse is.
void TurnWheel();

/// Number of the line, from 0, at the top of a text of several lines.
int FirstVisibleLine(const wxTextCtrl& memo);

/// Whether a text of several lines has a horizontal scroll bar, be it that it shows or that it would for a
/// wider text.
bool HasHorizontalBar(const wxTextCtrl& memo);

}  // namespace widget_test
