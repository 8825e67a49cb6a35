// The station's window: somebody scans and types, in real keys.

#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/gauge.h>
#include <wx/textctrl.h>
#include <wx/toplevel.h>

#include "contracts/StationWindow.h"
#include "tests/support/WidgetTest.h"

namespace {

using widget_test::Click;
using widget_test::Press;
using widget_test::Settle;
using widget_test::Type;
using widget_test::WaitFor;

bool Never() { return false; }
bool AtOnce() { return true; }

template <typename Control>
Control* Find(wxWindow* parent) {
  for (wxWindow* child : parent->GetChildren()) {
    if (auto* control = dynamic_cast<Control*>(child)) return control;
    if (auto* control = Find<Control>(child)) return control;
  }
  return nullptr;
}

class StationInAWindow : public ::testing::Test {
 protected:
  StationInAWindow() : window_(kxCreateStationWindow(&widget_test::Windows(), "station of the test")) {
    window_->SetPrompt("Serial number");
    EXPECT_TRUE(WaitFor([] { return Frame()->IsActive() && Field().HasFocus(); }));
    Settle();
  }
  ~StationInAWindow() override {
    kxDestroyStationWindow(window_);
    Settle();
  }

  static wxTopLevelWindow* Frame() {
    return static_cast<wxTopLevelWindow*>(widget_test::FindTopLevel("station of the test"));
  }
  static wxTextCtrl& Field() { return *Find<wxTextCtrl>(Frame()); }
  static wxButton& CancelButton() { return *Find<wxButton>(Frame()); }

  /// "text" for what was entered, "text (ahead)", or "end".
  std::string Next(bool (*interrupted)() = Never) {
    const auto scan = window_->Next(interrupted);
    if (!scan) return "end";
    return scan->text + (scan->ahead ? " (ahead)" : "");
  }

  /// The progress dialog of a check.
  std::unique_ptr<ProgressDialog> Progress() {
    ProgressDialogLayout layout{};
    layout.barMaximum = 100;
    layout.buttonResult = mrCancel;
    auto dialog = window_->Embedded().CreateProgressDialog(layout);
    dialog->Show();
    return dialog;
  }

  StationWindow* window_;
};

TEST_F(StationInAWindow, TakesWhatIsTypedWithEnter) {
  Type("SN-1\n");
  EXPECT_EQ(Next(), "SN-1");
  EXPECT_EQ(Field().GetValue(), "");
  Type("SN-2\n");
  EXPECT_EQ(Next(), "SN-2");
}

TEST_F(StationInAWindow, FieldKeepsTheKeyboard) {
  window_->SetChecking(true);
  Settle();
  Click(CancelButton());
  EXPECT_TRUE(WaitFor([] { return Field().HasFocus(); }));
  window_->SetChecking(false);
  Press(WXK_TAB);
  Click(*Frame()->GetChildren().front());
  EXPECT_TRUE(WaitFor([] { return Field().HasFocus(); }));
  Type("SN-3\n");
  EXPECT_EQ(Next(), "SN-3");
}

TEST_F(StationInAWindow, EscapeEnds) {
  Type("half");
  Press(WXK_ESCAPE);
  EXPECT_EQ(Next(), "end");
}

TEST_F(StationInAWindow, CtrlDEnds) {
  Press('D', wxMOD_CONTROL);
  EXPECT_EQ(Next(), "end");
}

TEST_F(StationInAWindow, InterruptEnds) { EXPECT_EQ(Next(AtOnce), "end"); }

TEST_F(StationInAWindow, WhatIsTypedDuringACheckWaitsAndCancelsNothing) {
  window_->SetChecking(true);
  const auto dialog = Progress();
  Type("SN-1\n");
  Type("SN-2\n");
  EXPECT_EQ(dialog->GetModalResult(), mrNone);
  EXPECT_TRUE(dialog->Visible());
  window_->SetChecking(false);
  EXPECT_EQ(Next(), "SN-1 (ahead)");
  EXPECT_EQ(Next(), "SN-2 (ahead)");
}

TEST_F(StationInAWindow, OfferedTextIsConfirmedOrReplaced) {
  window_->SetChecking(true);
  Type("SN-1\nSN-2\n");
  window_->SetChecking(false);
  EXPECT_EQ(Next(), "SN-1 (ahead)");
  window_->Offer("SN-1");
  Type("\n");
  EXPECT_EQ(Next(), "SN-1");
  EXPECT_EQ(Next(), "SN-2 (ahead)");
  window_->Offer("SN-2");
  Type("SN-3\n");
  EXPECT_EQ(Next(), "SN-3");
}

TEST_F(StationInAWindow, CtrlCAndTheButtonCancelTheCheck) {
  window_->SetChecking(true);
  auto dialog = Progress();
  Press('C', wxMOD_CONTROL);
  EXPECT_EQ(dialog->GetModalResult(), mrCancel);
  dialog.reset();
  window_->SetChecking(false);

  window_->SetChecking(true);
  dialog = Progress();
  EXPECT_EQ(dialog->GetModalResult(), mrNone) << "the next check is another one";
  Settle();
  Press('C', wxMOD_ALT);
  EXPECT_TRUE(WaitFor([&dialog] { return dialog->GetModalResult() == mrCancel; }));
  dialog.reset();
  window_->SetChecking(false);
  Type("SN-4\n");
  EXPECT_EQ(Next(), "SN-4") << "the day goes on";
}

TEST_F(StationInAWindow, CloseBoxCancelsTheCheckAndEnds) {
  window_->SetChecking(true);
  auto dialog = Progress();
  Frame()->Close();
  EXPECT_EQ(dialog->GetModalResult(), mrCancel);
  dialog.reset();
  window_->SetChecking(false);
  EXPECT_EQ(Next(), "end");
}

TEST_F(StationInAWindow, ShowsTheProgressOfTheCheck) {
  const auto dialog = Progress();
  dialog->SetBarPosition(50);
  const auto* const gauge = Find<wxGauge>(Frame());
  EXPECT_EQ(gauge->GetValue() * 2, gauge->GetRange());
  EXPECT_TRUE(window_->Embedded().DisableTaskWindows(0).empty());
  EXPECT_TRUE(Frame()->IsEnabled());
}

TEST_F(StationInAWindow, ShowsVerdictsOfEverySizeOfTheWindow) {
  StationSheet sheet;
  sheet.word = "CANCELLED";
  sheet.colour = StationSheet::Colour::Doubtful;
  sheet.head = std::string(300, 'S');
  sheet.lines.assign(50, "open: the wire from 4 (A4-R) to 17 (B4-R)");
  sheet.drawing =
      "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"100\" height=\"80\"><rect width=\"100\" "
      "height=\"80\" fill=\"#ffffff\"/><text x=\"5\" y=\"20\">A &amp; B</text></svg>";
  window_->ShowSheet(sheet);
  for (const wxSize& size : {wxSize(1, 1), wxSize(320, 240), wxSize(1000, 300), wxSize(300, 900)}) {
    Frame()->SetSize(size);
    Settle();
  }
  sheet.drawing = "no svg";
  window_->ShowSheet(sheet);
  Settle();
}

}  // namespace
