#include "tests/support/FakeUserInterface.h"

namespace shorttest::testkit {

class FakeUserInterface::Dialog : public ProgressDialog {
 public:
  explicit Dialog(FakeUserInterface& owner) : owner_(owner) {
    ++owner_.dialogs_;
    owner_.modalResult_ = mrNone;
    owner_.visible_ = false;
  }
  ~Dialog() override {
    --owner_.dialogs_;
    owner_.visible_ = false;
    owner_.windows_.erase(DialogHandle);
    owner_.log_.Add("close dialog");
  }
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;

  void Show() override {
    owner_.CountCall();
    owner_.log_.Add("show");
    owner_.visible_ = true;
    owner_.windows_[DialogHandle] = true;
  }
  bool Visible() const override {
    owner_.CountCall();
    return owner_.visible_;
  }
  int GetModalResult() const override {
    owner_.CountCall();
    return owner_.modalResult_;
  }
  int BarMaximum() const override {
    owner_.CountCall();
    return owner_.barMaximum_;
  }
  void SetBarPosition(int position) override {
    owner_.CountCall();
    owner_.log_.Add("bar " + std::to_string(position));
    owner_.bar_ = position;
  }
  WindowHandle Handle() const override {
    owner_.CountCall();
    return DialogHandle;
  }

 private:
  FakeUserInterface& owner_;
};

void FakeUserInterface::CountCall() {
  ++calls_;
  if (throwAt_ != 0 && calls_ == throwAt_) throw UserInterfaceFailure();
}

bool FakeUserInterface::AllWindowsEnabled() const {
  // Window 13 is disabled for reasons of its own and stays so.
  for (const auto& [window, enabled] : windows_) {
    if (!enabled && window != 13) return false;
  }
  return true;
}

void FakeUserInterface::ProcessMessages() {
  CountCall();
  log_.Add("messages");
  ++messages_;
  if (messages_ == cancelAt_) modalResult_ = layout_.buttonResult;
  if (messages_ == closeAt_) visible_ = false;
  if (withinMessages_) withinMessages_();
}

int FakeUserInterface::ShowMessage(const MessageBoxRequest& request) {
  CountCall();
  const char* const kind = request.kind == MessageKind::Information ? "information"
                           : request.kind == MessageKind::Warning   ? "warning"
                                                                    : "error";
  std::string line = std::string("box ") + kind + " [";
  for (const int button : request.buttons) line += " " + std::to_string(button);
  log_.Add(line + " ] " + std::to_string(request.helpContext) + ": " + request.text);
  boxes_.push_back(request);
  if (answers_.empty()) return request.buttons.back();
  const int answer = answers_.front();
  answers_.erase(answers_.begin());
  return answer;
}

std::unique_ptr<ProgressDialog> FakeUserInterface::CreateProgressDialog(const ProgressDialogLayout& layout) {
  CountCall();
  log_.Add("create dialog");
  layout_ = layout;
  return std::make_unique<Dialog>(*this);
}

TaskWindowList FakeUserInterface::DisableTaskWindows(WindowHandle except) {
  CountCall();
  log_.Add("disable all but " + std::to_string(except));
  TaskWindowList disabled;
  for (auto& [window, enabled] : windows_) {
    if (!enabled || window == except) continue;
    enabled = false;
    disabled.push_back(window);
  }
  return disabled;
}

void FakeUserInterface::EnableTaskWindows(const TaskWindowList& windows) {
  CountCall();
  std::string line = "enable";
  for (const WindowHandle window : windows) {
    line += " " + std::to_string(window);
    if (const auto found = windows_.find(window); found != windows_.end()) found->second = true;
  }
  log_.Add(line);
}

}  // namespace shorttest::testkit
