// The expected connections: typed, shown by name, drawn.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/choice.h>
#include <wx/dcmemory.h>
#include <wx/image.h>
#include <wx/notebook.h>
#include <wx/textctrl.h>

#include <utility>
#include <vector>

#include "plugin/editor/EditorDialog.h"
#include "plugin/editor/GridView.h"
#include "tests/plugin/editor/EditorFixture.h"
#include "tests/support/WidgetTest.h"

namespace shorttest::testkit {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using widget_test::Click;
using widget_test::Press;
using widget_test::Settle;
using widget_test::Type;

constexpr int TextPage = 0;
constexpr int GridPage = 1;

class EditorConnections : public EditorTest {
 protected:
  // A data file over channels 1 to `last`, with everything open.
  void UseChannels(int last) { UseExpectation(AllOpen(last)); }

  // Connects pairs of channels, as measured.
  static void Wire(TShortTestData& data, const std::vector<std::pair<int, int>>& wires) {
    TShortTestData wired(data.von, data.bis);
    for (const auto& [a, b] : wires) wired.Put(a - data.von, b - data.von, CellState::Connected, 0.4);
    for (int i = 0; i <= wired.Highconnections(); ++i) {
      for (int j = 0; j < i; ++j) {
        data.SetC(i, j,
                  wired.Get(i, j) == CellState::Connected ? CellState::Connected : CellState::NotConnected,
                  NoResistance);
      }
    }
  }

  void LeaveTheTexts() { Enter(*form.Ed_Timeout); }

  // What the grid shows at a cell: the colour that its handler paints.
  GridColour Painted(int column, int row) {
    const CellState state = form.Data() == nullptr ? CellState::Unknown : Data().Get(column, row);
    wxBitmap bitmap(8, 8);
    wxMemoryDC dc(bitmap);
    form.ConnectionGridDrawCell(dc, state, wxRect(0, 0, 8, 8), false);
    dc.SelectObject(wxNullBitmap);
    const wxImage image = bitmap.ConvertToImage();
    return {image.GetRed(4, 4), image.GetGreen(4, 4), image.GetBlue(4, 4)};
  }
};

TEST_F(EditorConnections, NamesFollowEveryKey) {
  WriteFile("Projekt.ini", "[Scanner]\r\nRelais1=eins\r\nRelais12=zwölf\r\n");
  Show([this] {
    Enter(*form.Mm_Soll);
    Type("1");
    EXPECT_EQ(TextOf(form.Mm_SollNames), "eins");
    Type("2");
    EXPECT_EQ(TextOf(form.Mm_SollNames), "zwölf");
    Type("\n\n1");
    EXPECT_EQ(TextOf(form.Mm_SollNames), "zwölf\n\neins");
    Type("x");
    EXPECT_EQ(TextOf(form.Mm_SollNames), "zwölf\n\n1x");
  });
}

TEST_F(EditorConnections, NamesAreReadAnewEachTimeTheDialogIsShown) {
  TShortTestData data = AllOpen(4);
  Wire(data, {{1, 2}});
  UseExpectation(data);
  Show([this] { EXPECT_EQ(TextOf(form.Mm_SollNames), "1 2"); });
  WriteFile("Projekt.ini", "[Scanner]\r\nRelais1=A\r\n");
  Show([this] { EXPECT_EQ(TextOf(form.Mm_SollNames), "A 2"); });
}

TEST_F(EditorConnections, NamesCannotBeTypedInto) {
  Show([this] {
    Enter(*form.Mm_SollNames);
    Type("x");
    EXPECT_EQ(TextOf(form.Mm_SollNames), "");
  });
}

TEST_F(EditorConnections, EveryTextRebuildsTheMatrixWhenLeft) {
  Show([this] {
    Enter(*form.Mm_Soll);
    Type("1 2");
    Enter(*form.Mm_SkipCon);
    EXPECT_EQ(Pair(1, 2), CellState::Connected);
    Type("3 4");
    Enter(*form.Ed_Skip);
    EXPECT_EQ(Pair(3, 4), CellState::ExcludedPair);
    Type("5");
    Enter(*form.Mm_Soll);
    EXPECT_EQ(Channel(5), CellState::Suspended);
  });
}

TEST_F(EditorConnections, LeavingForADropDownListCountsToo) {
  Show([this] {
    Enter(*form.Mm_Soll);
    Type("1 2");
    form.CB_U->SetFocus();
    EXPECT_TRUE(widget_test::WaitFor([this] { return Pair(1, 2) == CellState::Connected; }));
  });
}

TEST_F(EditorConnections, AnotherWindowInFrontIsNoLeaving) {
  Show([this] {
    Enter(*form.Mm_Soll);
    Type("1 49");
    wxDialog other(form.Window(), wxID_ANY, "other");
    other.Show();
    EXPECT_TRUE(widget_test::WaitFor([&other] { return other.IsActive(); }));
    Settle();
    other.Hide();
    EXPECT_TRUE(widget_test::WaitFor([this] { return form.Window()->IsActive(); }));
    Settle();
    EXPECT_EQ(TakeErrors(), std::vector<std::string>{});
    Replace(*form.Mm_Soll, "");
  });
}

TEST_F(EditorConnections, TypedGroupsAreSeenInTheGrid) {
  Show([this] {
    Enter(*form.Mm_Soll);
    Type("1 2 3");
    ChoosePage(GridPage);
    EXPECT_EQ(Painted(0, 2), (GridColour{0, 128, 0}));
    EXPECT_EQ(Painted(2, 0), (GridColour{0, 128, 0}));
    EXPECT_EQ(Painted(0, 3), (GridColour{255, 255, 255}));
    EXPECT_EQ(Painted(4, 4), (GridColour{192, 192, 192}));
  });
}

TEST_F(EditorConnections, LookingAtThePagesChangesNothing) {
  TShortTestData data = AllOpen(4);
  data.SuspendChannel(2, 1.0);
  UseExpectation(data);
  Show([this] {
    ChoosePage(GridPage);
    ChoosePage(TextPage);
    ChoosePage(GridPage);
    EXPECT_EQ(Pair(1, 3), CellState::NotTestable);
  });
}

TEST_F(EditorConnections, GridOf48ChannelsFillsThePage) {
  Show([this] {
    ChoosePage(GridPage);
    EXPECT_EQ(form.ConnectionGrid->Count(), 48);
    const wxSize size = form.ConnectionGrid->GetClientSize();
    EXPECT_EQ(form.ConnectionGrid->CellSize(), wxSize(size.x / 48 - 1, size.y / 48 - 1));
  });
}

TEST_F(EditorConnections, ResizingTheDialogScalesTheCells) {
  Show([this] {
    ChoosePage(GridPage);
    const wxSize before = form.ConnectionGrid->CellSize();
    form.Window()->SetSize(700, 500);
    const auto fillsThePage = [this] {
      const wxSize size = form.ConnectionGrid->GetClientSize();
      return form.ConnectionGrid->CellSize() == wxSize(size.x / 48 - 1, size.y / 48 - 1);
    };
    EXPECT_TRUE(
        widget_test::WaitFor([&] { return form.ConnectionGrid->CellSize().x < before.x && fillsThePage(); }));
  });
}

TEST_F(EditorConnections, GridHasAFocusThatTheArrowKeysMove) {
  Show([this] {
    ChoosePage(GridPage);
    const wxRect cell = form.ConnectionGrid->CellRect(5, 7);
    widget_test::ClickAt(form.ConnectionGrid->ClientToScreen(cell.GetPosition() + cell.GetSize() / 2));
    EXPECT_EQ(form.ConnectionGrid->FocusedCell(), wxPoint(5, 7));
    Press(WXK_RIGHT);
    Press(WXK_DOWN);
    EXPECT_EQ(form.ConnectionGrid->FocusedCell(), wxPoint(6, 8));
    Press(WXK_END);
    Press(WXK_RIGHT);
    EXPECT_EQ(form.ConnectionGrid->FocusedCell(), wxPoint(47, 47));
    Press(WXK_HOME);
    EXPECT_EQ(form.ConnectionGrid->FocusedCell(), wxPoint(0, 0));
    Press(WXK_TAB);
    EXPECT_FALSE(form.ConnectionGrid->HasFocus());
  });
}

TEST_F(EditorConnections, ChangingTheRangeResizesMatrixAndGridAndLeavesTheTexts) {
  Show([this] {
    Enter(*form.Mm_Soll);
    Type("1 2");
    Enter(*form.Ed_MaxChannel);
    Press(WXK_DOWN);
    EXPECT_EQ(Data().bis, 47);
    EXPECT_EQ(form.ConnectionGrid->Count(), 47);
    EXPECT_EQ(Pair(1, 2), CellState::Connected);
    EXPECT_EQ(TextOf(form.Mm_Soll), "1 2");
    Replace(*form.Ed_MinChannel, "2");
    EXPECT_EQ(Data().von, 2);
    EXPECT_EQ(form.ConnectionGrid->Count(), 46);
  });
}

TEST_F(EditorConnections, RangeThatEndsBeforeItBeginsIsEmpty) {
  Show([this] {
    ChoosePage(GridPage);
    Replace(*form.Ed_MinChannel, "60");
    EXPECT_EQ(form.ConnectionGrid->Count(), 0);
    Click(*form.ConnectionGrid);
    EXPECT_THAT(TakeErrors(), ElementsAre(HasSubstr("Der erste Kanal (60)")));
    Press(WXK_RIGHT);
    Replace(*form.Ed_MinChannel, "40");
    EXPECT_EQ(form.ConnectionGrid->Count(), 9);
  });
}

TEST_F(EditorConnections, ShowingAFileKeepsItsRangeWhateverWasShownBefore) {
  TShortTestData data(100, 110);
  Wire(data, {{100, 110}, {105, 106}});
  UseExpectation(data);
  Show([this] {
    EXPECT_EQ(Data().von, 100);
    EXPECT_EQ(Data().bis, 110);
    EXPECT_EQ(TextOf(form.Mm_Soll), "100 110\n105 106");
    EXPECT_EQ(TextOf(form.Ed_MinChannel), "100");
    EXPECT_EQ(TextOf(form.Ed_MaxChannel), "110");
  });
}

TEST_F(EditorConnections, UnchangedTextsKeepTheirCaret) {
  UseChannels(8);
  Show([this] {
    Enter(*form.Mm_Soll);
    Type("1 2\n3 4\n5 6");
    LeaveTheTexts();
    form.Mm_Soll->SetInsertionPoint(5);
    form.ShowConnections();
    EXPECT_EQ(form.Mm_Soll->GetInsertionPoint(), 5);
  });
}

}  // namespace
}  // namespace shorttest::testkit
