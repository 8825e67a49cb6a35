#pragma once

#include <optional>
#include <string>

namespace widget_test {

/// Text (UTF-8) of the one-line edit that has the keyboard, also in the system's own dialogs, which the
/// toolkit knows nothing of. No value when something else has the keyboard.
std::optional<std::string> TextOfFocusedEntry();

/// Turns the mouse wheel by one notch towards the user, wherever the mouse is.
void TurnWheel();

}  // namespace widget_test
