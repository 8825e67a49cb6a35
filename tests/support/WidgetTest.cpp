#include "tests/support/WidgetTest.h"

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/stopwatch.h>
#include <wx/toplevel.h>
#include <wx/uiaction.h>
#include <wx/utils.h>

#include <exception>
#include <utility>

#include "platform/UserInterfaceModule.h"

namespace widget_test {
namespace {

constexpr long PatienceMs = 5000;

UserInterface* windows = nullptr;

void FailOnAssert(const wxString& file, int line, const wxString& function, const wxString& condition,
                  const wxString& message) {
  ADD_FAILURE() << "toolkit assertion " << condition << " in " << function << " (" << file << ":" << line
                << "): " << message;
}

class Screen : public ::testing::Environment {
 public:
  void SetUp() override {
    windows = kxCreateUserInterface();
    ASSERT_NE(windows, nullptr) << "this test needs a screen: run it through tests/support/xvfb";
    wxSetAssertHandler(FailOnAssert);
  }
  void TearDown() override {
    kxDestroyUserInterface(windows);
    windows = nullptr;
  }
};

}  // namespace

UserInterface& Windows() { return *windows; }

bool WaitFor(const std::function<bool()>& condition) {
  const wxStopWatch watch;
  for (;;) {
    windows->ProcessMessages();
    if (condition()) return true;
    if (watch.Time() > PatienceMs) return false;
    wxMilliSleep(1);
  }
}

void Settle() {
  // What was sent to the display server comes back through it: one round is not enough.
  for (int round = 0; round < 20; ++round) {
    windows->ProcessMessages();
    wxMilliSleep(1);
  }
}

void Click(wxWindow& window) {
  const wxSize size = window.GetSize();
  const wxPoint middle = window.ClientToScreen(wxPoint(size.x / 2, size.y / 2));
  wxUIActionSimulator mouse;
  mouse.MouseMove(middle);
  Settle();
  mouse.MouseClick();
  Settle();
}

void Press(int key, int modifiers) {
  wxUIActionSimulator().Char(key, modifiers);
  Settle();
}

void Type(const std::string& text) {
  wxUIActionSimulator().Text(wxString::FromUTF8(text));
  Settle();
}

wxWindow* FindTopLevel(const std::string& title) {
  for (wxWindow* const window : wxTopLevelWindows) {
    if (window->IsShown() && window->GetLabel() == wxString::FromUTF8(title)) return window;
  }
  return nullptr;
}

void OnceModal(std::function<void()> script) {
  wxTheApp->CallAfter([script = std::move(script)] {
    try {
      script();
    } catch (const std::exception& error) {
      ADD_FAILURE() << "the script failed: " << error.what();
    }
  });
}

}  // namespace widget_test

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  ::testing::AddGlobalTestEnvironment(new widget_test::Screen);
  return RUN_ALL_TESTS();
}
