#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "contracts/UserInterfaceModule.h"

/// A user interface module without windows. FAKE_UI: "no-display", or the modal result that every message box
/// answers. What it does goes to standard error.

namespace {

void Tell(const std::string& line) {
  std::fputs((line + "\n").c_str(), stderr);
  std::fflush(stderr);  // not every C library writes errors at once
}

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
  explicit FakeUserInterface(int answer) : answer_(answer) { Tell("windows started"); }
  ~FakeUserInterface() override { Tell("windows ended"); }
  void ProcessMessages() override {}
  int ShowMessage(const MessageBoxRequest& request) override {
    Tell("window: " + request.text);
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

void kxCloseOnInterrupt(UserInterface*, bool (*)()) {}

void kxDestroyUserInterface(UserInterface* userInterface) { delete userInterface; }
