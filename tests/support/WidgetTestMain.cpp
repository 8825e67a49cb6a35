#include <gtest/gtest.h>
#include <wx/debug.h>

#include "contracts/UserInterfaceModule.h"
#include "tests/support/WidgetTest.h"

namespace {

void FailOnAssert(const wxString& file, int line, const wxString& function, const wxString& condition,
                  const wxString& message) {
  ADD_FAILURE() << "toolkit assertion " << condition << " in " << function << " (" << file << ":" << line
                << "): " << message;
}

class Screen : public ::testing::Environment {
 public:
  void SetUp() override {
    windows_ = kxCreateUserInterface();
    ASSERT_NE(windows_, nullptr) << "this test needs a screen: run it through tests/support/xvfb";
    wxSetAssertHandler(FailOnAssert);
    widget_test::SetWindows(windows_);
  }
  void TearDown() override {
    widget_test::SetWindows(nullptr);
    kxDestroyUserInterface(windows_);
  }

 private:
  UserInterface* windows_ = nullptr;
};

}  // namespace

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  ::testing::AddGlobalTestEnvironment(new Screen);
  return RUN_ALL_TESTS();
}
