#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/modalhook.h>
#include <wx/msgdlg.h>
#include <wx/timer.h>
#include <wx/uiaction.h>

#include <functional>
#include <stdexcept>

#include "tests/support/WidgetTest.h"

namespace {

using widget_test::Windows;

// Stands between the program and the screen: looks at the box and presses a button by its native role.
class Reader : public wxModalDialogHook {
 public:
  explicit Reader(int pressedRole) : pressedRole_(pressedRole) { Register(); }

  wxString text;
  wxString caption;
  wxString okLabel;
  wxString cancelLabel;
  long style = 0;

 protected:
  int Enter(wxDialog* dialog) override {
    const auto* const box = dynamic_cast<wxMessageDialog*>(dialog);
    text = box->GetMessage();
    caption = box->GetCaption();
    okLabel = box->GetOKLabel();
    cancelLabel = box->GetCancelLabel();
    style = box->GetMessageDialogStyle();
    return pressedRole_;
  }

 private:
  int pressedRole_;
};

// Presses the key again and again until the box that is about to be shown is closed.
class KeyPresser {
 public:
  explicit KeyPresser(int key) {
    timer_.Bind(wxEVT_TIMER, [key](wxTimerEvent&) { wxUIActionSimulator().Char(key); });
    timer_.Start(100);
  }

 private:
  wxTimer timer_;
};

TEST(MessageBox, ShowsTextKindAndOneButton) {
  Reader reader(wxID_OK);
  EXPECT_EQ(Windows().ShowMessage({.text = "Größe", .kind = MessageKind::Error, .buttons = {mrOk}}), mrOk);
  EXPECT_EQ(reader.text, wxString::FromUTF8("Größe"));
  EXPECT_EQ(reader.caption, "Fehler");
  EXPECT_EQ(reader.okLabel, "OK");
  EXPECT_EQ(reader.style & (wxICON_MASK | wxCANCEL), wxICON_ERROR);
}

TEST(MessageBox, OffersCancelAndIgnore) {
  Reader reader(wxID_OK);
  EXPECT_EQ(Windows().ShowMessage({.text = "?", .buttons = {mrCancel, mrIgnore}}), mrIgnore);
  EXPECT_EQ(reader.okLabel, "Ignorieren");
  EXPECT_EQ(reader.cancelLabel, "Abbrechen");
}

TEST(MessageBox, AnswersCancelWhereItIsOffered) {
  Reader reader(wxID_CANCEL);
  EXPECT_EQ(Windows().ShowMessage({.text = "?", .buttons = {mrCancel, mrIgnore}}), mrCancel);
}

TEST(MessageBox, WithoutCancelTheLastButtonIsTheAnswerToClosing) {
  Reader reader(wxID_CANCEL);
  EXPECT_EQ(Windows().ShowMessage({.text = "?", .buttons = {mrOk, mrIgnore}}), mrIgnore);
}

TEST(MessageBox, OffersThreeButtons) {
  Reader reader(wxID_NO);
  EXPECT_EQ(Windows().ShowMessage({.text = "?", .buttons = {mrAbort, mrCancel, mrIgnore}}), mrIgnore);
}

TEST(MessageBox, NeedsButtonsItKnows) {
  EXPECT_THROW(Windows().ShowMessage({.text = "?", .buttons = {}}), std::invalid_argument);
  EXPECT_THROW(Windows().ShowMessage({.text = "?", .buttons = {77}}), std::invalid_argument);
}

TEST(MessageBox, EscapeAnswersCancel) {
  const KeyPresser keys(WXK_ESCAPE);
  EXPECT_EQ(Windows().ShowMessage({.text = "?", .buttons = {mrIgnore, mrCancel}}), mrCancel);
}

TEST(MessageBox, EscapeAnswersTheOnlyButton) {
  const KeyPresser keys(WXK_ESCAPE);
  EXPECT_EQ(Windows().ShowMessage({.text = "!", .buttons = {mrOk}}), mrOk);
}

struct Buttons {
  const char* name;
  std::vector<int> results;
};

class DefaultButton : public ::testing::TestWithParam<Buttons> {};

TEST_P(DefaultButton, IsTheFirst) {
  const KeyPresser keys(WXK_RETURN);
  EXPECT_EQ(Windows().ShowMessage({.text = "?", .buttons = GetParam().results}), GetParam().results.front());
}

INSTANTIATE_TEST_SUITE_P(Boxes, DefaultButton,
                         ::testing::Values(Buttons{"OfOne", {mrOk}}, Buttons{"Cancel", {mrCancel, mrIgnore}},
                                           Buttons{"Ignore", {mrIgnore, mrCancel}},
                                           Buttons{"OfThree", {mrAbort, mrIgnore, mrCancel}}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
