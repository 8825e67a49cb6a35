#pragma once

#include <wx/window.h>

#include <functional>

namespace shorttest {

/// Called with +1 or -1 for each step the user asks for, repeatedly while a button is held down.
using StepHandler = std::function<void(int direction)>;

/// Makes the two small arrow buttons beside an edit. They never take the keyboard. The parent owns them.
wxWindow* MakeStepButtons(wxWindow& parent, StepHandler onStep);

}  // namespace shorttest
