#pragma once

#include <memory>
#include <string>

#include "contracts/UserInterface.h"

namespace kxbench {

/// The progress dialog of a device that is being learned or measured.
class LearnProgress {
 public:
  /// Shows the dialog.
  explicit LearnProgress(const std::string& caption = "Learning");

  /// Lets the user interface work and moves the bar to `position`, 0.0 to 1.0. True once the user has
  /// cancelled; the bar then stays.
  bool Report(double position);

  /// Whether the user has pressed the button or closed the dialog.
  bool Cancelled() const { return dialog_->GetModalResult() != mrNone || !dialog_->Visible(); }

 private:
  std::unique_ptr<ProgressDialog> dialog_;
};

}  // namespace kxbench
