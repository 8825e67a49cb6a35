#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/gauge.h>
#include <wx/utils.h>

#include "tests/support/WidgetTest.h"
#include "tests/ui/wx/ProgressLayout.h"

namespace {

using widget_test::Click;
using widget_test::Press;
using widget_test::Settle;
using widget_test::WaitFor;
using widget_test::Windows;

class CheckProgress : public ::testing::Test {
 protected:
  CheckProgress() : dialog(Windows().CreateProgressDialog(ProgressLayout("Kurzschlusstest"))) {}
  ~CheckProgress() override {
    dialog.reset();
    Settle();
  }

  void Show() {
    dialog->Show();
    ASSERT_TRUE(WaitFor([] { return Window() != nullptr && Window()->IsActive(); }));
    Settle();
  }

  static wxDialog* Window() { return static_cast<wxDialog*>(widget_test::FindTopLevel("Kurzschlusstest")); }
  static wxWindow& Button() { return *wxWindow::FindWindowById(wxID_CANCEL, Window()); }
  static wxGauge& Bar() { return *static_cast<wxGauge*>(Window()->GetChildren().front()); }

  std::unique_ptr<ProgressDialog> dialog;
};

TEST_F(CheckProgress, IsNotVisibleBeforeItIsShown) {
  EXPECT_FALSE(dialog->Visible());
  EXPECT_EQ(dialog->GetModalResult(), mrNone);
}

TEST_F(CheckProgress, IsLaidOutAsAsked) {
  Show();
  EXPECT_EQ(Window()->GetClientSize(), wxSize(166, 73));
  EXPECT_EQ(Bar().GetRect(), wxRect(8, 8, 150, 17));
  EXPECT_EQ(Button().GetRect(), wxRect(45, 40, 75, 25));
  EXPECT_EQ(Button().GetLabel(), "Abbrechen");
  EXPECT_FALSE(Window()->HasFlag(wxRESIZE_BORDER | wxMINIMIZE_BOX | wxMAXIMIZE_BOX));
}

TEST_F(CheckProgress, StandsInTheMiddleOfTheScreen) {
  Show();
  const wxRect frame = Window()->GetScreenRect();
  const wxSize screen = wxGetDisplaySize();
  EXPECT_NEAR(frame.x + frame.width / 2, screen.x / 2, 20);
  EXPECT_NEAR(frame.y + frame.height / 2, screen.y / 2, 30);
}

TEST_F(CheckProgress, BarMovesWithinItsRange) {
  Show();
  EXPECT_EQ(dialog->BarMaximum(), 100);
  dialog->SetBarPosition(50);
  EXPECT_EQ(Bar().GetValue(), 50);
  dialog->SetBarPosition(101);
  EXPECT_EQ(Bar().GetValue(), 100);
  dialog->SetBarPosition(-1);
  EXPECT_EQ(Bar().GetValue(), 0);
}

TEST_F(CheckProgress, AbbrechenSetsTheModalResultAndLeavesItOpen) {
  Show();
  Click(Button());
  EXPECT_TRUE(WaitFor([this] { return dialog->GetModalResult() == mrCancel; }));
  EXPECT_TRUE(dialog->Visible());
}

TEST_F(CheckProgress, EscapePressesAbbrechen) {
  Show();
  Press(WXK_ESCAPE);
  EXPECT_TRUE(WaitFor([this] { return dialog->GetModalResult() == mrCancel; }));
  EXPECT_TRUE(dialog->Visible());
}

TEST_F(CheckProgress, SpacePressesTheFocusedButton) {
  Show();
  Press(WXK_SPACE);
  EXPECT_TRUE(WaitFor([this] { return dialog->GetModalResult() == mrCancel; }));
}

TEST_F(CheckProgress, CloseBoxHidesItAndLeavesTheModalResult) {
  Show();
  EXPECT_TRUE(widget_test::PressCloseBox([this] { return !dialog->Visible(); }));
  EXPECT_EQ(dialog->GetModalResult(), mrNone);
}

TEST_F(CheckProgress, CanStillBeMovedOnceHidden) {
  Show();
  Window()->Close();
  dialog->SetBarPosition(10);
  EXPECT_FALSE(dialog->Visible());
}

TEST_F(CheckProgress, IsGoneWithItsObject) {
  Show();
  dialog.reset();
  EXPECT_TRUE(WaitFor([] { return Window() == nullptr; }));
}

}  // namespace
