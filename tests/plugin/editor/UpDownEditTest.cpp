#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/sizer.h>

#include <memory>

#include "plugin/editor/UpDownEdit.h"
#include "tests/support/WidgetTest.h"

namespace shorttest {
namespace {

using widget_test::Press;
using widget_test::Settle;
using widget_test::Type;
using widget_test::WaitFor;

class UpDown : public ::testing::Test {
 protected:
  UpDown() : frame_(new wxFrame(nullptr, wxID_ANY, "UpDown", wxDefaultPosition, wxSize(300, 200))) {
    auto* const panel = new wxPanel(frame_);
    edit_ = new wxTextCtrl(panel, wxID_ANY);
    pair = std::make_unique<UpDownEdit>(*edit_, NumberLimits{0, 100, 10}, 50);
    pair->OnChange([this] { ++changes; });
    auto* const row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(edit_);
    row->Add(&pair->Buttons(), wxSizerFlags().Expand());
    panel->SetSizer(row);
    frame_->Show();
    edit_->SetFocus();
    if (!WaitFor([this] { return frame_->IsActive() && edit_->HasFocus(); })) ADD_FAILURE() << "no focus";
    Settle();
  }
  ~UpDown() override {
    frame_->Destroy();
    Settle();
  }

  void ReplaceTyping(const std::string& text) {
    widget_test::SelectAll();
    Type(text);
  }
  void ClickArrow(bool up) const {
    const wxSize size = pair->Buttons().GetSize();
    widget_test::ClickAt(
        pair->Buttons().ClientToScreen(wxPoint(size.x / 2, up ? size.y / 4 : size.y * 3 / 4)));
  }

  int changes = 0;
  std::unique_ptr<UpDownEdit> pair;

 private:
  wxFrame* frame_;
  wxTextCtrl* edit_;
};

TEST_F(UpDown, BeginsWithItsPositionInTheEdit) {
  EXPECT_EQ(pair->Position(), 50);
  EXPECT_EQ(pair->Text(), "50");
  EXPECT_EQ(changes, 0);
}

TEST_F(UpDown, SettingThePositionWritesTheEditAndFiresTheChange) {
  pair->SetPosition(30);
  EXPECT_EQ(pair->Text(), "30");
  EXPECT_EQ(changes, 1);
}

TEST_F(UpDown, SettingTheSamePositionFiresNothing) {
  pair->SetPosition(50);
  EXPECT_EQ(changes, 0);
}

TEST_F(UpDown, SettingTheSamePositionWritesAnEditThatDiffers) {
  pair->SetText("");
  pair->SetPosition(50);
  EXPECT_EQ(pair->Text(), "50");
}

TEST_F(UpDown, ShowingTellsNobody) {
  pair->Show(1000, "2,5");
  EXPECT_EQ(pair->Position(), 1000);
  EXPECT_EQ(pair->Text(), "2,5");
  pair->ShowText("30");
  EXPECT_EQ(pair->Position(), 30);
  EXPECT_EQ(changes, 0);
}

TEST_F(UpDown, HandlerSeesThePositionThatWasSet) {
  std::int32_t seen = 0;
  pair->OnChange([&] { seen = pair->Position(); });
  pair->SetPosition(70);
  EXPECT_EQ(seen, 70);
}

TEST_F(UpDown, PositionFollowsWhatIsTyped) {
  ReplaceTyping("42");
  EXPECT_EQ(pair->Position(), 42);
  EXPECT_EQ(pair->Text(), "42");
  EXPECT_GE(changes, 2);
}

TEST_F(UpDown, ArrowKeysMoveByTheStep) {
  Press(WXK_UP);
  EXPECT_EQ(pair->Position(), 60);
  EXPECT_EQ(pair->Text(), "60");
  Press(WXK_DOWN);
  Press(WXK_DOWN);
  EXPECT_EQ(pair->Position(), 40);
}

TEST_F(UpDown, ArrowButtonsMoveByTheStep) {
  ClickArrow(true);
  EXPECT_EQ(pair->Position(), 60);
  ClickArrow(false);
  ClickArrow(false);
  EXPECT_EQ(pair->Position(), 40);
  EXPECT_EQ(changes, 3);
}

TEST_F(UpDown, ArrowButtonsLeaveTheKeyboardWithTheEdit) {
  ClickArrow(true);
  EXPECT_TRUE(pair->Edit().HasFocus());
}

TEST_F(UpDown, MoveFromAnEmptyEditStartsAtThePosition) {
  pair->SetText("");
  Press(WXK_UP);
  EXPECT_EQ(pair->Text(), "60");
}

}  // namespace
}  // namespace shorttest
