#pragma once

#include <string>

#include "framework/kxcomponents.h"

class wxTextCtrl;

namespace shorttest {

/// The edit that holds the data file's script expression. It has its text also while the dialog's window does
/// not exist: the command fills it, and a script is checked on machines without a screen.
class DataFileEdit : public TKXEdit {
 public:
  std::string GetText() const override { return text_; }
  void SetText(const std::string& text) override;

  /// Shows the text in `control` from now on, and takes over what is typed there. This object outlives it.
  void Attach(wxTextCtrl& control);

  /// The edit's control; null while there is none.
  wxTextCtrl* Control() const { return control_; }

 private:
  std::string text_;
  wxTextCtrl* control_ = nullptr;
};

}  // namespace shorttest
