#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "framework/Kxcommandinterfaces.h"
#include "framework/kxcomponents.h"
#include "framework/kxextension.h"

namespace {

class SilentUserInterface : public UserInterface {
 public:
  void ProcessMessages() override {}
  int ShowMessage(const MessageBoxRequest&) override { return mrOk; }
  std::unique_ptr<ProgressDialog> CreateProgressDialog(const ProgressDialogLayout&) override {
    return nullptr;
  }
  TaskWindowList DisableTaskWindows(WindowHandle) override { return {}; }
  void EnableTaskWindows(const TaskWindowList&) override {}
};

TEST(HostGlobals, ApplicationIsTheOneTheHostChose) {
  SilentUserInterface userInterface;
  SetApplication(&userInterface);
  EXPECT_EQ(&Application(), &userInterface);
  SetApplication(nullptr);
  EXPECT_THROW(Application(), std::logic_error);
}

TEST(HostGlobals, InterfacesAreNullOutsideAHost) {
  EXPECT_EQ(TestEnvironment(), nullptr);
  EXPECT_EQ(VarAccess(), nullptr);
}

}  // namespace
