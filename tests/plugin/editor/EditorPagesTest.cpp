// What the two pages do for the reader: texts that scroll together, and the tip of the grid.

#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/display.h>
#include <wx/notebook.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

#include <functional>
#include <string>

#include "plugin/editor/EditorDialog.h"
#include "plugin/editor/GridView.h"
#include "tests/plugin/editor/EditorFixture.h"
#include "tests/support/NativeWidgets.h"
#include "tests/support/WidgetTest.h"

namespace shorttest::testkit {
namespace {

class ScrolledTexts : public EditorTest {
 protected:
  // A hundred lines of two channels.
  void UseManyLines() {
    TShortTestData data = AllOpen(200);
    for (int channel = 1; channel < 200; channel += 2) {
      data.SetC(channel - 1, channel, CellState::Connected, NoResistance);
    }
    UseExpectation(data);
  }

  int Top() const { return widget_test::FirstVisibleLine(*form.Mm_Soll); }
  int TopOfNames() const { return widget_test::FirstVisibleLine(*form.Mm_SollNames); }
  bool AreTogether() const { return Top() == TopOfNames(); }
};

TEST_F(ScrolledTexts, ShowWithoutAWordOnTheTerminal) {
  UseManyLines();
  const widget_test::ComplaintWatcher widgets;
  Show([] {});
  EXPECT_EQ(widgets.Complaints(), std::vector<std::string>{});
}

TEST_F(ScrolledTexts, NamesFollowTheCaretOfTheText) {
  UseManyLines();
  Show([this] {
    Enter(*form.Mm_Soll);
    widget_test::Press(WXK_END, wxMOD_CONTROL);
    EXPECT_TRUE(widget_test::WaitFor([this] { return Top() > 20 && AreTogether(); })) << Top();
    widget_test::Press(WXK_HOME, wxMOD_CONTROL);
    EXPECT_TRUE(widget_test::WaitFor([this] { return Top() == 0 && AreTogether(); })) << Top();
  });
}

TEST_F(ScrolledTexts, TextFollowsTheNames) {
  UseManyLines();
  Show([this] {
    Enter(*form.Mm_SollNames);
    widget_test::Press(WXK_PAGEDOWN);
    EXPECT_TRUE(widget_test::WaitFor([this] { return TopOfNames() > 5 && AreTogether(); })) << Top();
  });
}

TEST_F(ScrolledTexts, WheelMovesBoth) {
  UseManyLines();
  Show([this] {
    for (wxTextCtrl* const memo : {form.Mm_Soll, form.Mm_SollNames}) {
      const int before = Top();
      widget_test::TurnWheelOver(*memo);
      EXPECT_TRUE(widget_test::WaitFor([&] { return Top() > before && AreTogether(); })) << Top();
    }
  });
}

TEST_F(ScrolledTexts, TypingLeavesTheTextWhereItIs) {
  UseManyLines();
  Show([this] {
    Enter(*form.Mm_Soll);
    widget_test::Press(WXK_END, wxMOD_CONTROL);
    ASSERT_TRUE(widget_test::WaitFor([this] { return Top() > 20 && AreTogether(); }));
    const int before = Top();
    widget_test::Type(" 1");
    EXPECT_TRUE(TextOf(form.Mm_SollNames).ends_with(" 1"));
    EXPECT_TRUE(widget_test::WaitFor([this] { return AreTogether(); }));
    EXPECT_GE(Top(), before);
  });
}

class GridTip : public EditorTest {
 protected:
  // What the tip says; empty while there is none.
  std::string TipText() const {
    const CellTip* const tip = form.ConnectionGrid->Tip();
    return tip == nullptr ? "" : tip->Text().utf8_string();
  }
  bool Tells(const std::string& text) const {
    return widget_test::WaitFor([&] { return TipText() == text; });
  }

  void PointAt(int column, int row) const {
    const wxRect cell = form.ConnectionGrid->CellRect(column, row);
    widget_test::MoveMouseTo(form.ConnectionGrid->ClientToScreen(cell.GetPosition() + cell.GetSize() / 2));
  }

  // Channels 1 to `last` with a connection 3-5, measured, and the page with the grid.
  void ShowGridOf(int last, const std::function<void()>& script) {
    WriteFile("Projekt.ini", "[Scanner]\nRelais3=Kl. 15\n");
    TShortTestData data = AllOpen(last);
    data.SetC(2, 4, CellState::Connected, NoResistance);
    UseExpectation(data);
    Show([&] {
      ChoosePage(1);
      script();
    });
  }

  const std::string connected = "Kanal 3 (Kl. 15) und Kanal 5\nverbunden, Widerstand nicht gemessen";
};

TEST_F(GridTip, TellsTheCellUnderTheMouse) {
  ShowGridOf(48, [this] {
    PointAt(2, 4);
    EXPECT_TRUE(Tells(connected)) << TipText();
    PointAt(47, 46);
    EXPECT_TRUE(Tells("Kanal 47 und Kanal 48\nnicht verbunden, Widerstand nicht gemessen")) << TipText();
    EXPECT_FALSE(form.ConnectionGrid->Tip()->Area().Contains(wxGetMousePosition()));
    widget_test::MoveMouseTo(form.BT_OK->GetScreenPosition());
    EXPECT_TRUE(Tells("")) << TipText();
  });
}

TEST_F(GridTip, TellsTheCellReachedWithTheKeyboard) {
  ShowGridOf(48, [this] {
    form.PageControl1->SetFocus();
    widget_test::Press(WXK_TAB);
    EXPECT_TRUE(Tells("Kanal 1\nmit sich selbst")) << TipText();
    for (const int key : {WXK_RIGHT, WXK_RIGHT, WXK_DOWN, WXK_DOWN, WXK_DOWN, WXK_DOWN})
      widget_test::Press(key);
    EXPECT_TRUE(Tells(connected)) << TipText();
    EXPECT_EQ(form.ConnectionGrid->FocusedCell(), wxPoint(2, 4));
    widget_test::Press(WXK_TAB);
    EXPECT_TRUE(Tells("")) << TipText();
  });
}

TEST_F(GridTip, OfTheKeyboardStaysAfterThatOfTheMouse) {
  ShowGridOf(48, [this] {
    PointAt(2, 4);
    EXPECT_TRUE(Tells(connected)) << TipText();
    widget_test::MoveMouseTo(form.BT_OK->GetScreenPosition());
    EXPECT_TRUE(Tells("")) << TipText();
    form.PageControl1->SetFocus();
    widget_test::Press(WXK_TAB);
    EXPECT_TRUE(Tells("Kanal 1\nmit sich selbst")) << TipText();
    EXPECT_FALSE(widget_test::WaitFor([this] { return TipText().empty(); }, 500));
  });
}

TEST_F(GridTip, OfTheKeyboardIsNotThatOfAMouseThatLeaves) {
  ShowGridOf(48, [this] {
    PointAt(40, 40);
    EXPECT_TRUE(Tells("Kanal 41\nmit sich selbst")) << TipText();
    form.PageControl1->SetFocus();
    widget_test::Press(WXK_TAB);
    EXPECT_TRUE(Tells("Kanal 1\nmit sich selbst")) << TipText();
    wxMouseEvent leave(wxEVT_LEAVE_WINDOW);
    form.ConnectionGrid->ProcessWindowEvent(leave);
    EXPECT_EQ(TipText(), "Kanal 1\nmit sich selbst");
  });
}

TEST_F(GridTip, TellsEachOfAGreatManyCells) {
  ShowGridOf(240, [this] {
    PointAt(2, 4);
    EXPECT_TRUE(Tells(connected)) << TipText();
    PointAt(3, 4);
    EXPECT_TRUE(Tells("Kanal 4 und Kanal 5\nnicht verbunden, Widerstand nicht gemessen")) << TipText();
    PointAt(239, 239);
    EXPECT_TRUE(Tells("Kanal 240\nmit sich selbst")) << TipText();
  });
}

TEST_F(GridTip, StaysOnTheScreen) {
  ShowGridOf(48, [this] {
    const int screenWidth = wxDisplay(form.Window()).GetGeometry().GetSize().x;
    form.Window()->Move(screenWidth - form.Window()->GetSize().x, 200);
    widget_test::Settle();
    form.ConnectionGrid->SetFocus();
    widget_test::Press(WXK_END);
    ASSERT_TRUE(Tells("Kanal 48\nmit sich selbst")) << TipText();
    EXPECT_TRUE(widget_test::WaitFor([this] {
      return wxDisplay(form.Window()).GetGeometry().Contains(form.ConnectionGrid->Tip()->Area());
    }));
  });
}

TEST_F(GridTip, GoesWithThePageAndWithTheDialog) {
  ShowGridOf(48, [this] {
    PointAt(2, 4);
    ASSERT_TRUE(Tells(connected)) << TipText();
    widget_test::Press(WXK_PAGEUP, wxMOD_CONTROL);
    EXPECT_TRUE(Tells("")) << TipText();
    widget_test::Press(WXK_PAGEDOWN, wxMOD_CONTROL);
    PointAt(3, 4);
    ASSERT_TRUE(widget_test::WaitFor([this] { return TipText() != ""; }));
    widget_test::Press(WXK_ESCAPE);
    EXPECT_TRUE(Tells("")) << TipText();
  });
}

}  // namespace
}  // namespace shorttest::testkit
