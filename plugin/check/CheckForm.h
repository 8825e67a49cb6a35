#pragma once

#include <memory>

#include "contracts/UserInterface.h"

/// The modeless dialog of a running check: the progress bar `ProgressBar1` and the button `Button1`,
/// "Abbrechen". The user interface that the host chose draws it.
class TShortTestCheckForm {
 public:
  /// Makes the dialog without showing it.
  TShortTestCheckForm();

  /// Shows it, the bar at 0.
  void Show();

  /// Modal result: 0 until `Button1` or Escape was pressed, then 2. The close box leaves it alone.
  int GetModalResult() const { return dialog_->GetModalResult(); }

  /// False once the user closed the dialog with its close box.
  bool Visible() const { return dialog_->Visible(); }

  /// Moves `ProgressBar1` to this fraction (0.0 to 1.0) of its range, rounded, ties to even.
  void SetProgress(double position);

  /// The dialog's native window.
  WindowHandle Handle() const { return dialog_->Handle(); }

 private:
  void FormShow();

  std::unique_ptr<ProgressDialog> dialog_;
};

/// The dialog of the check that is running, null when none is. The check's driver makes and frees it.
extern std::unique_ptr<TShortTestCheckForm> CheckForm;

/// Reports the position (0.0 to 1.0) of the running check and lets the user interface work. True when the
/// check is to stop: the user pressed "Abbrechen" or closed the dialog; from then on every call answers true.
/// Has the signature of TProgressFunc. REQUIRES: CheckForm is there.
bool UpdateProgress(double position);
