// Learning in the dialog.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/dcmemory.h>
#include <wx/eventfilter.h>
#include <wx/gauge.h>
#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/textctrl.h>

#include "plugin/editor/EditorDialog.h"
#include "plugin/editor/GridView.h"
#include "plugin/hardware/Bus.h"
#include "tests/plugin/editor/EditorFixture.h"
#include "tests/support/WidgetTest.h"

namespace shorttest::testkit {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;
using widget_test::Click;
using widget_test::Press;
using widget_test::Settle;
using widget_test::Type;

class EditorLearning : public EditorTest {
 protected:
  EditorLearning() { driver.Cards(1); }

  // A device on channels 1 to 8.
  void UseSmallDevice() {
    UseExpectation(TShortTestData(1, 8));
    driver.Wire(1, 5);
    driver.Wire(2, 3);
    driver.Wire(3, 7);
  }

  // Does something once, when the bar has come to `percent`.
  void AtPercent(int percent, std::function<void()> action) {
    driver.BeforeReading([this, percent, action = std::move(action)] {
      if (happened_ || form.ProgressBar1->GetValue() < percent) return;
      happened_ = true;
      action();
    });
  }
  bool Happened() const { return happened_; }

 private:
  bool happened_ = false;
};

TEST_F(EditorLearning, ShowsWhatWasLearned) {
  UseSmallDevice();
  Show([this] {
    Click(*form.BT_Learn);
    EXPECT_EQ(TextOf(form.Mm_Soll), "1 5\n2 3 7");
    EXPECT_EQ(Pair(2, 7), CellState::Connected);
    EXPECT_EQ(Pair(1, 2), CellState::NotConnected);
    EXPECT_EQ(form.ProgressBar1->GetValue(), 100);
  });
  EXPECT_TRUE(driver.AllRelaysOpen());
}

TEST_F(EditorLearning, LearnedDeviceIsSavedWithOk) {
  UseSmallDevice();
  Show([this] {
    Click(*form.BT_Learn);
    Click(*form.BT_OK);
  });
  const TShortTestData saved(ProjectFile("kabel.dat"));
  EXPECT_EQ(saved.Get(0, 4), CellState::Connected);
  EXPECT_EQ(saved.Get(0, 1), CellState::NotConnected);
}

TEST_F(EditorLearning, WithoutRelayCardsSaysSoAndChangesNothing) {
  UseSmallDevice();
  driver.Cards(0);
  Show([this] {
    Click(*form.BT_Learn);
    EXPECT_THAT(TakeErrors(), ElementsAre("Konnte Anzahl Kanäle nicht ermitteln."));
    EXPECT_EQ(Pair(1, 5), CellState::Unknown);
    EXPECT_EQ(form.UpDownMax->Maximum(), 240);
    EXPECT_TRUE(form.BT_Learn->IsEnabled());
  });
}

TEST_F(EditorLearning, RangeIsLimitedToTheChannelsPresent) {
  driver.Cards(2);
  Show([this] {
    Click(*form.BT_Learn);
    EXPECT_EQ(HWChannelCount, 96);
    EXPECT_EQ(form.UpDownMin->Maximum(), 95);
    EXPECT_EQ(form.UpDownMax->Maximum(), 96);
    EXPECT_EQ(form.UpDownMax->Position(), 48);
  });
}

TEST_F(EditorLearning, OnlyAbbruchWorksMeanwhile) {
  UseSmallDevice();
  AtPercent(30, [this] {
    EXPECT_FALSE(form.BT_Learn->IsEnabled());
    EXPECT_FALSE(form.BT_OK->IsEnabled());
    EXPECT_FALSE(form.DatenPanel->IsEnabled());
    EXPECT_TRUE(form.ButtonCancel->IsEnabled());
    EXPECT_FALSE(form.Mm_Soll->IsEnabled());
  });
  Show([this] {
    Click(*form.BT_Learn);
    EXPECT_TRUE(Happened());
    EXPECT_TRUE(form.BT_Learn->IsEnabled());
    EXPECT_TRUE(form.BT_OK->IsEnabled());
    EXPECT_TRUE(form.DatenPanel->IsEnabled());
  });
}

TEST_F(EditorLearning, TextsFollowWhileItLearns) {
  UseSmallDevice();
  std::string seen;
  AtPercent(60, [&] { seen = TextOf(form.Mm_Soll); });
  Show([this] { Click(*form.BT_Learn); });
  EXPECT_EQ(seen, "1 5");
}

TEST_F(EditorLearning, GridFollowsWhileItLearns) {
  UseSmallDevice();
  wxRect cell;
  int painted = 0;
  AtPercent(60, [&] {
    // The pair 1-5 was found at the last report but one: it has been painted since.
    EXPECT_EQ(Pair(1, 5), CellState::Connected);
    EXPECT_GT(painted, 0);
  });
  Show([&] {
    ChoosePage(1);
    cell = form.ConnectionGrid->CellRect(0, 4);
    form.ConnectionGrid->Bind(wxEVT_PAINT, [&](wxPaintEvent& event) {
      if (form.ConnectionGrid->GetUpdateRegion().Contains(cell) != wxOutRegion) ++painted;
      event.Skip();
    });
    painted = 0;
    Click(*form.BT_Learn);
  });
  EXPECT_TRUE(Happened());
}

TEST_F(EditorLearning, AbbruchHalfWayStopsAndClosesWithoutSaving) {
  UseSmallDevice();
  AtPercent(30, [this] { Click(*form.ButtonCancel); });
  const int result = Show([this] {
    Click(*form.BT_Learn);
    EXPECT_EQ(form.ModalResult(), mrCancel);
  });
  EXPECT_EQ(result, mrCancel);
  EXPECT_TRUE(Happened());
  EXPECT_TRUE(driver.AllRelaysOpen());
  EXPECT_EQ(Pair(1, 5), CellState::Unknown);
  EXPECT_EQ(TShortTestData(ProjectFile("kabel.dat")).Get(0, 1), CellState::Unknown);
}

TEST_F(EditorLearning, EscapeHalfWayStopsToo) {
  UseSmallDevice();
  AtPercent(30, [] { Press(WXK_ESCAPE); });
  EXPECT_EQ(Show([this] { Click(*form.BT_Learn); }), mrCancel);
  EXPECT_TRUE(driver.AllRelaysOpen());
}

// Sees whether a key gets as far as a window, past what the dialog itself does with it.
class KeyWatcher : public wxEventFilter {
 public:
  explicit KeyWatcher(const wxWindow& window) : window_(window) { wxEvtHandler::AddFilter(this); }
  ~KeyWatcher() override { wxEvtHandler::RemoveFilter(this); }
  KeyWatcher(const KeyWatcher&) = delete;
  KeyWatcher& operator=(const KeyWatcher&) = delete;

  int FilterEvent(wxEvent& event) override {
    if (event.GetEventType() == wxEVT_CHAR_HOOK) {
      lastKey_ = static_cast<const wxKeyEvent&>(event).GetKeyCode();
    }
    arrived_ = arrived_ || (event.GetEventType() == wxEVT_KEY_DOWN && event.GetEventObject() == &window_);
    return Event_Skip;
  }

  int LastKey() const { return lastKey_; }
  bool HasArrived() const { return arrived_; }

 private:
  const wxWindow& window_;
  int lastKey_ = 0;
  bool arrived_ = false;
};

TEST_F(EditorLearning, EnterAndBlanksNeverCancel) {
  UseSmallDevice();
  AtPercent(30, [this] {
    form.ButtonCancel->SetFocus();
    Settle();
    const KeyWatcher keys(*form.ButtonCancel);
    for (const int key : {WXK_RETURN, WXK_SPACE, WXK_NUMPAD_ENTER}) {
      Press(key);
      EXPECT_TRUE(widget_test::WaitFor([&] { return keys.LastKey() == key; })) << key;
    }
    EXPECT_FALSE(keys.HasArrived());
    Press(WXK_F3);  // other keys do arrive; Windows keeps the arrows for going from button to button
    EXPECT_TRUE(widget_test::WaitFor([&] { return keys.HasArrived(); }));
  });
  Show([this] {
    form.BT_Learn->SetFocus();
    Settle();
    Press(WXK_RETURN);
    EXPECT_TRUE(widget_test::WaitFor([this] { return TextOf(form.Mm_Soll) == "1 5\n2 3 7"; }));
    EXPECT_TRUE(Happened());
    EXPECT_TRUE(widget_test::WaitFor([this] { return form.BT_OK->IsEnabled(); }));
    EXPECT_EQ(form.ModalResult(), mrNone);
  });
}

TEST_F(EditorLearning, EnterAndBlanksWorkAgainAfterwards) {
  UseSmallDevice();
  EXPECT_EQ(Show([this] {
              Click(*form.BT_Learn);
              form.ButtonCancel->SetFocus();
              Settle();
              Press(WXK_SPACE);
              WaitForClose();
            }),
            mrCancel);
}

TEST_F(EditorLearning, CloseBoxHalfWayStopsToo) {
  UseSmallDevice();
  AtPercent(30, [this] {
    EXPECT_TRUE(widget_test::PressCloseBox([this] { return form.ModalResult() != mrNone; }));
  });
  EXPECT_EQ(Show([this] { Click(*form.BT_Learn); }), mrCancel);
  EXPECT_TRUE(driver.AllRelaysOpen());
}

TEST_F(EditorLearning, DialogCanBeShownAgainAfterAbbruch) {
  UseSmallDevice();
  AtPercent(30, [this] { Click(*form.ButtonCancel); });
  Show([this] { Click(*form.BT_Learn); });
  driver.BeforeReading(nullptr);
  Show([this] {
    EXPECT_TRUE(form.BT_OK->IsEnabled());
    Click(*form.BT_Learn);
    EXPECT_EQ(TextOf(form.Mm_Soll), "1 5\n2 3 7");
  });
}

TEST_F(EditorLearning, HardwareErrorIsReportedAndTheControlsWorkAgain) {
  UseSmallDevice();
  AtPercent(30, [this] { driver.FailAt(1, "Relaiskarte antwortet nicht"); });
  Show([this] {
    Click(*form.BT_Learn);
    EXPECT_THAT(TakeErrors(), ElementsAre("Relaiskarte antwortet nicht"));
    EXPECT_TRUE(form.DatenPanel->IsEnabled());
    EXPECT_TRUE(form.BT_OK->IsEnabled());
    EXPECT_EQ(form.ModalResult(), mrNone);
  });
  EXPECT_TRUE(driver.AllRelaysOpen());
}

TEST_F(EditorLearning, ErrorOfTheFirstProbeIsReported) {
  driver.Cards(0);
  driver.MissingCardError("kein Tester");
  Show([this] {
    Click(*form.BT_Learn);
    EXPECT_THAT(TakeErrors(), ElementsAre("kein Tester"));
    EXPECT_TRUE(form.BT_Learn->IsEnabled());
  });
}

TEST_F(EditorLearning, TextIsTakenOverBeforeItLearns) {
  UseSmallDevice();
  Show([this] {
    Enter(*form.Mm_SkipCon);
    Type("2 3");
    Press('L', wxMOD_ALT);
    EXPECT_TRUE(widget_test::WaitFor([this] { return TextOf(form.Mm_Soll).starts_with("1 5"); }));
    EXPECT_EQ(Pair(2, 3), CellState::ExcludedPair);
  });
}

TEST_F(EditorLearning, WrongTextKeepsItFromLearning) {
  UseSmallDevice();
  messages.errorsInBoxes = true;
  Show([this] {
    Enter(*form.Mm_Soll);
    Type("1 9");
    Click(*form.BT_Learn);
    EXPECT_THAT(TakeErrors(), ElementsAre("9 is too large."));
    EXPECT_EQ(log.Count("read"), 0);
  });
}

TEST_F(EditorLearning, ReadingNearTheThresholdIsAsked) {
  UseExpectation(TShortTestData(1, 4));
  driver.Wire(1, 2, 9.5);
  messages.answer = mrIgnore;
  Show([this] {
    Click(*form.BT_Learn);
    ASSERT_THAT(messages.others, SizeIs(1));
    EXPECT_THAT(messages.others[0].text, HasSubstr("Kanälen 2 und 1"));
    EXPECT_EQ(messages.others[0].helpContext, 140);
    EXPECT_EQ(TextOf(form.Mm_Soll), "1 2");
  });
}

TEST_F(EditorLearning, ChannelWithAVoltageIsBlocked) {
  UseSmallDevice();
  driver.Live(4, 12.0);
  clock.ticksStep = 1000;  // it never discharges
  Show([this] {
    Click(*form.BT_Learn);
    EXPECT_EQ(TextOf(form.Ed_Skip), " 4");
    EXPECT_EQ(Channel(4), CellState::Suspended);
  });
}

TEST_F(EditorLearning, ProgressIsRoundedWithTiesToEven) {
  Show([this] {
    EXPECT_FALSE(LearnProgress(0.125));
    EXPECT_EQ(form.ProgressBar1->GetValue(), 12);
    EXPECT_FALSE(LearnProgress(0.375));
    EXPECT_EQ(form.ProgressBar1->GetValue(), 38);
    EXPECT_FALSE(LearnProgress(1.0));
    EXPECT_EQ(form.ProgressBar1->GetValue(), 100);
  });
}

TEST_F(EditorLearning, ProgressAfterAbbruchAsksToStop) {
  Show([this] {
    Click(*form.ButtonCancel);
    EXPECT_TRUE(LearnProgress(0.5));
  });
}

TEST_F(EditorLearning, ProgressWithoutADialogAsksToStop) {
  ActiveShortTestForm = nullptr;
  EXPECT_TRUE(LearnProgress(0.5));
}

}  // namespace
}  // namespace shorttest::testkit
