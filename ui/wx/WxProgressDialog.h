#pragma once

#include <wx/dialog.h>
#include <wx/weakref.h>

#include "contracts/UserInterface.h"
#include "ui/wx/TaskWindows.h"

class wxGauge;

namespace kxbench {

/// The modeless progress dialog.
class WxProgressDialog : public ProgressDialog {
 public:
  /// `taskWindows` outlives the dialog.
  WxProgressDialog(const ProgressDialogLayout& layout, TaskWindows& taskWindows);
  ~WxProgressDialog() override;
  WxProgressDialog(const WxProgressDialog&) = delete;
  WxProgressDialog& operator=(const WxProgressDialog&) = delete;

  void Show() override;
  bool Visible() const override;
  int GetModalResult() const override { return modalResult_; }
  int BarMaximum() const override { return barMaximum_; }
  void SetBarPosition(int position) override;
  WindowHandle Handle() const override;

 private:
  void Arrange(const ProgressDialogLayout& layout);

  TaskWindows& taskWindows_;
  wxWeakRef<wxDialog> dialog_;  // gone without us when the toolkit ends first
  wxGauge* bar_;
  wxWindow* button_;
  int barMinimum_;
  int barMaximum_;
  int modalResult_ = mrNone;
};

}  // namespace kxbench
