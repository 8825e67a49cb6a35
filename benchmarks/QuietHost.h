#pragma once

#include <cstdint>
#include <memory>

#include "contracts/UserInterface.h"
#include "framework/MessageWindow.h"

/// A host that costs next to nothing: a user interface that shows nothing, and a window that counts records.
class QuietHost : public UserInterface {
 public:
  QuietHost();
  ~QuietHost() override;
  QuietHost(const QuietHost&) = delete;
  QuietHost& operator=(const QuietHost&) = delete;

  /// Records received so far.
  std::int64_t Records() const { return records_; }

  void ProcessMessages() override {}
  int ShowMessage(const MessageBoxRequest& request) override { return request.buttons.back(); }
  std::unique_ptr<ProgressDialog> CreateProgressDialog(const ProgressDialogLayout& layout) override;
  TaskWindowList DisableTaskWindows(WindowHandle /*except*/) override { return {}; }
  void EnableTaskWindows(const TaskWindowList& /*windows*/) override {}

 private:
  std::int64_t records_ = 0;
  kx::MessageWindow window_;
};
