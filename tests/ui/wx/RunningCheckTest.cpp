// A running check with its real dialog: what the user does there, and what becomes of the other windows.

#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/gauge.h>

#include <functional>

#include "framework/Kxcommandinterfaces.h"
#include "framework/kxcomponents.h"
#include "plugin/check/CheckForm.h"
#include "plugin/check/ShorttestCheck.h"
#include "tests/support/CallLog.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeDriver.h"
#include "tests/support/FakeTestEnvironment.h"
#include "tests/support/WidgetTest.h"

namespace {

using shorttest::testkit::CallLog;
using shorttest::testkit::FakeClock;
using shorttest::testkit::FakeDriver;
using shorttest::testkit::FakeTestEnvironment;
using widget_test::Click;
using widget_test::Press;
using widget_test::Settle;
using widget_test::WaitFor;

wxDialog* Window() { return static_cast<wxDialog*>(widget_test::FindTopLevel("Kurzschlusstest")); }

wxWindow& Abbrechen() { return *wxWindow::FindWindowById(wxID_CANCEL, Window()); }

int Bar() { return static_cast<const wxGauge*>(Window()->GetChildren().front())->GetValue(); }

bool HasKeyboard() { return Window() != nullptr && Window()->IsActive(); }

class ProgressDialogOfTheCheck : public ::testing::Test {
 protected:
  ProgressDialogOfTheCheck() {
    SetApplication(&widget_test::Windows());
    CheckForm = std::make_unique<TShortTestCheckForm>();
    CheckForm->Show();
    EXPECT_TRUE(WaitFor(HasKeyboard));
    Settle();
  }
  ~ProgressDialogOfTheCheck() override {
    CheckForm.reset();
    SetApplication(nullptr);
    Settle();
  }
};

TEST_F(ProgressDialogOfTheCheck, BarIsRoundedTiesToEven) {
  EXPECT_FALSE(UpdateProgress(0.5));
  EXPECT_EQ(Bar(), 50);
  EXPECT_FALSE(UpdateProgress(0.125));
  EXPECT_EQ(Bar(), 12);
}

TEST_F(ProgressDialogOfTheCheck, AfterAbbrechenEveryCallStopsAndTheBarStays) {
  EXPECT_FALSE(UpdateProgress(0.25));
  Click(Abbrechen());
  EXPECT_TRUE(UpdateProgress(0.5));
  EXPECT_TRUE(UpdateProgress(0.75));
  EXPECT_EQ(Bar(), 25);
  EXPECT_EQ(CheckForm->GetModalResult(), mrCancel);
}

TEST_F(ProgressDialogOfTheCheck, AfterEscapeEveryCallStopsAndTheBarStays) {
  EXPECT_FALSE(UpdateProgress(0.25));
  Press(WXK_ESCAPE);
  EXPECT_TRUE(UpdateProgress(0.5));
  EXPECT_TRUE(UpdateProgress(0.75));
  EXPECT_EQ(Bar(), 25);
  EXPECT_EQ(CheckForm->GetModalResult(), mrCancel);
}

TEST_F(ProgressDialogOfTheCheck, AfterTheCloseBoxEveryCallStopsAndTheModalResultIsStillNone) {
  Window()->Close();
  EXPECT_TRUE(UpdateProgress(0.5));
  EXPECT_TRUE(UpdateProgress(0.75));
  EXPECT_EQ(CheckForm->GetModalResult(), mrNone);
  EXPECT_FALSE(CheckForm->Visible());
}

class RunningCheck : public ::testing::Test {
 protected:
  RunningCheck() : host(new wxFrame(nullptr, wxID_ANY, "host")) {
    SetApplication(&widget_test::Windows());
    SetTestEnvironment(&environment);
    host->Show();
    Settle();
    driver.Wire(1, 3);
  }
  ~RunningCheck() override {
    SetTestEnvironment(nullptr);
    SetApplication(nullptr);
    host->Destroy();
    Settle();
  }

  /// Channels 1 to 4, 1 and 3 connected.
  static TShortTestData Expectation() {
    TShortTestData data(1, 4);
    data.Put(0, 2, CellState::Connected, 0.4);
    for (int i = 1; i < 4; ++i) {
      for (int j = 0; j < i; ++j) data.Put(i, j, CellState::NotConnected, 1e9);
    }
    return data;
  }

  /// Runs the check; `action` happens before the first reading, with the dialog in front.
  void Run(const std::function<void()>& action) {
    driver.BeforeReading([this, &action] {
      if (happened) return;
      happened = true;
      EXPECT_TRUE(WaitFor(HasKeyboard));
      Settle();
      action();
    });
    RunShortTest(Expectation());
  }

  CallLog log;
  FakeClock clock;
  FakeDriver driver{log};
  FakeTestEnvironment environment{log};
  wxFrame* host;
  bool happened = false;
};

TEST_F(RunningCheck, DisablesTheOtherWindowsAndEnablesThemAgain) {
  Run([this] {
    EXPECT_FALSE(host->IsEnabled());
    EXPECT_TRUE(Window()->IsEnabled());
  });
  EXPECT_TRUE(happened);
  EXPECT_TRUE(host->IsEnabled());
  EXPECT_EQ(Window(), nullptr);
}

TEST_F(RunningCheck, EnablesTheOtherWindowsAfterAnError) {
  EXPECT_ANY_THROW(Run([this] {
    EXPECT_FALSE(host->IsEnabled());
    driver.FailAt(1, "Relaiskarte antwortet nicht");
  }));
  EXPECT_TRUE(host->IsEnabled());
  EXPECT_EQ(Window(), nullptr);
  EXPECT_TRUE(driver.AllRelaysOpen());
  EXPECT_EQ(environment.Cancels(), 0);
}

TEST_F(RunningCheck, AbbrechenTellsTheHostOnce) {
  Run([] { Click(Abbrechen()); });
  EXPECT_EQ(environment.Cancels(), 1);
  EXPECT_TRUE(host->IsEnabled());
  EXPECT_TRUE(driver.AllRelaysOpen());
}

TEST_F(RunningCheck, EscapeTellsTheHostOnce) {
  Run([] {
    Press(WXK_ESCAPE);
    Press(WXK_ESCAPE);
  });
  EXPECT_EQ(environment.Cancels(), 1);
  EXPECT_TRUE(driver.AllRelaysOpen());
}

TEST_F(RunningCheck, CloseBoxStopsWithoutTellingTheHost) {
  Run([] { EXPECT_TRUE(widget_test::PressCloseBox([] { return !CheckForm->Visible(); })); });
  EXPECT_TRUE(happened);
  EXPECT_EQ(log.Count("read"), 1);
  EXPECT_EQ(environment.Cancels(), 0);
  EXPECT_TRUE(host->IsEnabled());
  EXPECT_TRUE(driver.AllRelaysOpen());
}

}  // namespace
