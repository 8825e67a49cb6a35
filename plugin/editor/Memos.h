#pragma once

#include <wx/textctrl.h>

namespace shorttest {

/// Makes a text of several lines that are not wrapped. `style`: further styles of wxTextCtrl. Its smallest
/// size is that of a pixel: what it stands in decides.
wxTextCtrl* MakeMemo(wxWindow* parent, long style);

/// The same without a horizontal scroll bar: what is wider scrolls with the caret.
wxTextCtrl* MakeMemoWithoutHorizontalBar(wxWindow* parent);

/// Keeps the same line at the top of two memos whose texts have the same lines, whichever of the two the user
/// scrolls. Before the user has touched either, `follower` follows.
void ScrollTogether(wxTextCtrl& leader, wxTextCtrl& follower);

}  // namespace shorttest
