#pragma once

#include "framework/kxcomponents.h"

class wxButton;

namespace shorttest {

/// The host's help button on a button of the dialog.
class HelpButton : public TKXHelpButton {
 public:
  /// Stands for `control` from now on. This object outlives it.
  void Attach(wxButton& control);

  /// The button's control; null while there is none.
  wxButton* Control() const { return control_; }

 private:
  wxButton* control_ = nullptr;
};

}  // namespace shorttest
