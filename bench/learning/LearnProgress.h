#pragma once

#include <memory>

#include "contracts/UserInterface.h"
#include "plugin/hardware/Measurement.h"

namespace kxbench {

/// The user interface while a device is learned: a progress dialog, and the memory of whether the user
/// stopped, be it by the dialog or by the answer to a question. It stands before Application() as long as it
/// lives.
class LearnProgress : public UserInterface {
 public:
  /// Shows the dialog. One object at a time.
  LearnProgress();
  ~LearnProgress() override;
  LearnProgress(const LearnProgress&) = delete;
  LearnProgress& operator=(const LearnProgress&) = delete;

  /// For the learn procedure: moves the bar, and answers true once the user wants to stop.
  static bool Report(double position);

  /// True when learning was not carried to its end.
  bool Stopped() const { return stopped_; }

  void ProcessMessages() override;
  int ShowMessage(const MessageBoxRequest& request) override;
  std::unique_ptr<ProgressDialog> CreateProgressDialog(const ProgressDialogLayout& layout) override;
  TaskWindowList DisableTaskWindows(WindowHandle except) override;
  void EnableTaskWindows(const TaskWindowList& windows) override;

 private:
  bool Update(double position);

  UserInterface& application_;
  std::unique_ptr<ProgressDialog> dialog_;
  bool stopped_ = false;
};

}  // namespace kxbench
