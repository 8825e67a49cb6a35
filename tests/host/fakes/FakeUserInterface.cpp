#include <cstdio>
#include <cstdlib>
#include <memory>

#include "platform/UserInterfaceModule.h"

/// A user interface module without windows. FAKE_UI: "no-display", or the modal result that every message box
/// answers. What it does goes to standard error.

namespace {

class FakeProgress : public ProgressDialog {
 public:
  void Show() override { visible_ = true; }
  bool Visible() const override { return visible_; }
  int GetModalResult() const override { return mrNone; }
  int BarMaximum() const override { return 100; }
  void SetBarPosition(int) override {}
  WindowHandle Handle() const override { return 5; }

 private:
  bool visible_ = false;
};

class FakeUserInterface : public UserInterface {
 public:
  explicit FakeUserInterface(int answer) : answer_(answer) { std::fputs("windows started\n", stderr); }
  ~FakeUserInterface() override { std::fputs("windows ended\n", stderr); }
  void ProcessMessages() override {}
  int ShowMessage(const MessageBoxRequest& request) override {
    std::fprintf(stderr, "window: %s\n", request.text.c_str());
    return answer_;
  }
  std::unique_ptr<ProgressDialog> CreateProgressDialog(const ProgressDialogLayout&) override {
    return std::make_unique<FakeProgress>();
  }
  TaskWindowList DisableTaskWindows(WindowHandle) override { return {}; }
  void EnableTaskWindows(const TaskWindowList&) override {}

 private:
  int answer_;
};

}  // namespace

UserInterface* kxCreateUserInterface() {
  const char* choice = std::getenv("FAKE_UI");
  const std::string text = choice == nullptr ? "1" : choice;
  return text == "no-display" ? nullptr : new FakeUserInterface(std::atoi(text.c_str()));
}

void kxDestroyUserInterface(UserInterface* userInterface) { delete userInterface; }
