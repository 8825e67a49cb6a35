#include "ui/terminal/SupervisedUserInterface.h"

#include <algorithm>
#include <utility>

#include "ui/terminal/ButtonNames.h"

namespace kxbench {

class SupervisedProgress : public ProgressDialog {
 public:
  SupervisedProgress(const SupervisedUserInterface& userInterface, std::unique_ptr<ProgressDialog> inner,
                     int buttonResult)
      : userInterface_(userInterface), inner_(std::move(inner)), buttonResult_(buttonResult) {}

  void Show() override { inner_->Show(); }
  bool Visible() const override { return inner_->Visible(); }
  int GetModalResult() const override {
    const int result = inner_->GetModalResult();
    return result == mrNone && userInterface_.pressed_ ? buttonResult_ : result;
  }
  int BarMaximum() const override { return inner_->BarMaximum(); }
  void SetBarPosition(int position) override { inner_->SetBarPosition(position); }
  WindowHandle Handle() const override { return inner_->Handle(); }

 private:
  const SupervisedUserInterface& userInterface_;
  std::unique_ptr<ProgressDialog> inner_;
  int buttonResult_;
};

SupervisedUserInterface::SupervisedUserInterface(UserInterface& inner, Supervision supervision)
    : inner_(inner), supervision_(std::move(supervision)) {}

SupervisedUserInterface::~SupervisedUserInterface() = default;

void SupervisedUserInterface::ProcessMessages() {
  inner_.ProcessMessages();
  if (supervision_.interrupted()) pressed_ = true;
}

int SupervisedUserInterface::ShowMessage(const MessageBoxRequest& request) {
  const std::vector<int>& buttons = request.buttons;
  const bool offered =
      supervision_.answer && std::find(buttons.begin(), buttons.end(), *supervision_.answer) != buttons.end();
  if (!offered) return inner_.ShowMessage(request);
  supervision_.warn(request.text + " (answered: " + ButtonName(*supervision_.answer) + ")");
  return *supervision_.answer;
}

std::unique_ptr<ProgressDialog> SupervisedUserInterface::CreateProgressDialog(
    const ProgressDialogLayout& layout) {
  return std::make_unique<SupervisedProgress>(*this, inner_.CreateProgressDialog(layout),
                                              layout.buttonResult);
}

TaskWindowList SupervisedUserInterface::DisableTaskWindows(WindowHandle except) {
  return inner_.DisableTaskWindows(except);
}

void SupervisedUserInterface::EnableTaskWindows(const TaskWindowList& windows) {
  inner_.EnableTaskWindows(windows);
}

}  // namespace kxbench
