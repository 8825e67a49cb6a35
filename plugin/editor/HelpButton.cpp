#include "plugin/editor/HelpButton.h"

#include <wx/button.h>

namespace shorttest {

void HelpButton::Attach(wxButton& control) {
  control_ = &control;
  control.Bind(wxEVT_DESTROY, [this](wxWindowDestroyEvent&) { control_ = nullptr; });
}

}  // namespace shorttest
