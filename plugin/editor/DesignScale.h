#pragma once

#include <wx/font.h>
#include <wx/window.h>

namespace shorttest {

/// The dialog's font, Segoe UI 9 pt.
wxFont DialogFont();

/// Pixels on this screen for a length given at 96 pixels per inch. Follows the size in which the font comes
/// out, whether the screen's resolution or the user's wish for larger text is the reason.
int Scaled(const wxWindow& window, int pixels);

/// Height of a one-line edit: the text, and a little room around it. Some toolkits think it
/// should be twice that.
int LineHeight(const wxWindow& window);

}  // namespace shorttest
