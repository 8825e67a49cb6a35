// The dialog in use: made small and large, shown again, with Tab and with the mouse wheel.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/choice.h>
#include <wx/display.h>
#include <wx/notebook.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>
#include <wx/utils.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "plugin/editor/EditorDialog.h"
#include "plugin/editor/GridView.h"
#include "tests/plugin/editor/EditorFixture.h"
#include "tests/support/NativeWidgets.h"
#include "tests/support/WidgetTest.h"

namespace shorttest::testkit {
namespace {

using ::testing::ElementsAre;
using ::testing::PrintToString;
using widget_test::Press;
using widget_test::Settle;
using widget_test::TurnWheelOver;
using widget_test::WaitFor;

using EditorInUse = EditorTest;

std::vector<std::pair<int, int>> SizesOf(const std::vector<const wxWindow*>& panes) {
  std::vector<std::pair<int, int>> sizes;
  for (const wxWindow* const pane : panes) sizes.emplace_back(pane->GetSize().x, pane->GetSize().y);
  return sizes;
}

TEST_F(EditorInUse, PanesComeBackWhenItWasSmallForAWhile) {
  Show([this] {
    const auto panes = [this] { return SizesOf({form.Mm_Soll, form.Mm_SollNames, form.Mm_SkipCon}); };
    const wxSize size = form.Window()->GetSize();
    const std::vector<std::pair<int, int>> before = panes();
    form.Window()->SetSize(300, 480);
    ASSERT_TRUE(WaitFor([&] { return form.Mm_Soll->GetSize().x < before[0].first / 2; }));
    Settle();
    form.Window()->SetSize(size);
    // All in one: the toolkit lays out in steps, and one pane may have its size before the others.
    EXPECT_TRUE(WaitFor([&] { return panes() == before; }))
        << PrintToString(panes()) << " instead of " << PrintToString(before);
  });
}

// The user drags the sash at the right of a pane.
void Drag(const wxWindow& pane, int distance) {
  const wxWindow& splitter = *pane.GetParent();
  const wxPoint sash = splitter.ClientToScreen(wxPoint(pane.GetRect().GetRight() + 2, pane.GetSize().y / 2));
  wxUIActionSimulator mouse;
  widget_test::MoveMouseTo(sash);
  mouse.MouseDown();
  Settle();
  widget_test::MoveMouseTo(sash + wxPoint(distance, 0));
  mouse.MouseUp();
  Settle();
}

TEST_F(EditorInUse, PanesComeBackAsTheUserArrangedThem) {
  Show([this] {
    const wxSize size = form.Window()->GetSize();
    const int before = form.Mm_Soll->GetSize().x;
    Drag(*form.Mm_Soll, -150);
    ASSERT_TRUE(WaitFor([&] { return std::abs(form.Mm_Soll->GetSize().x - (before - 150)) < 20; }));
    Settle();
    const int dragged = form.Mm_Soll->GetSize().x;
    form.Window()->SetSize(300, 480);
    ASSERT_TRUE(WaitFor([&] { return form.Mm_Soll->GetSize().x < dragged / 2; }));
    Settle();
    form.Window()->SetSize(size);
    EXPECT_TRUE(WaitFor([&] { return form.Mm_Soll->GetSize().x == dragged; })) << form.Mm_Soll->GetSize().x;
  });
}

TEST_F(EditorInUse, OnlySkippedConnectionsHaveNoHorizontalBar) {
  Show([this] {
    EXPECT_FALSE(widget_test::HasHorizontalBar(*form.Mm_SkipCon));
    EXPECT_TRUE(widget_test::HasHorizontalBar(*form.Mm_Soll));
    EXPECT_TRUE(widget_test::HasHorizontalBar(*form.Mm_SollNames));
  });
}

// How far the middle of the dialog is from that of the screen, pixels.
int DistanceFromCentre(const wxWindow& dialog) {
  const wxRect screen = wxDisplay(&dialog).GetClientArea();
  const wxRect window = dialog.GetRect();
  return std::max(std::abs(window.x + window.width / 2 - screen.x - screen.width / 2),
                  std::abs(window.y + window.height / 2 - screen.y - screen.height / 2));
}

TEST_F(EditorInUse, IsCentredEachTimeItIsShown) {
  const auto isCentred = [this] { return DistanceFromCentre(*form.Window()) <= 30; };
  Show([&] {
    EXPECT_TRUE(WaitFor(isCentred));
    form.Window()->Move(0, 0);
    ASSERT_TRUE(WaitFor([&] { return !isCentred(); }));
  });
  Show([&] { EXPECT_TRUE(WaitFor(isCentred)) << DistanceFromCentre(*form.Window()); });
}

// The control that has the keyboard, by name.
std::string Focused(const TShortTestForm& form) {
  const std::vector<std::pair<const wxWindow*, std::string>> names = {{form.Ed_MaxChannel, "Ed_MaxChannel"},
                                                                      {form.PageControl1, "PageControl1"},
                                                                      {form.Ed_Skip, "Ed_Skip"},
                                                                      {form.Mm_SkipCon, "Mm_SkipCon"},
                                                                      {form.Mm_Soll, "Mm_Soll"},
                                                                      {form.Mm_SollNames, "Mm_SollNames"},
                                                                      {form.ConnectionGrid, "ConnectionGrid"},
                                                                      {form.BT_OK, "BT_OK"}};
  const wxWindow* const focused = wxWindow::FindFocus();
  for (const auto& [window, name] : names) {
    if (window == focused) return name;
  }
  return "another one";
}

std::vector<std::string> TabStops(const TShortTestForm& form, int count, int modifiers) {
  std::vector<std::string> stops;
  for (int i = 0; i < count; ++i) {
    Press(WXK_TAB, modifiers);
    stops.push_back(Focused(form));
  }
  return stops;
}

TEST_F(EditorInUse, TabGoesThroughThePageOfTextsBeforeItReachesOk) {
  Show([this] {
    Enter(*form.Ed_MaxChannel);
    EXPECT_THAT(TabStops(form, 6, wxMOD_NONE),
                ElementsAre("PageControl1", "Ed_Skip", "Mm_SkipCon", "Mm_Soll", "Mm_SollNames", "BT_OK"));
    EXPECT_THAT(TabStops(form, 6, wxMOD_SHIFT), ElementsAre("Mm_SollNames", "Mm_Soll", "Mm_SkipCon",
                                                            "Ed_Skip", "PageControl1", "Ed_MaxChannel"));
  });
}

TEST_F(EditorInUse, TabGoesThroughThePageOfTheGridBeforeItReachesOk) {
  Show([this] {
    ChoosePage(1);
    Enter(*form.Ed_MaxChannel);
    EXPECT_THAT(TabStops(form, 3, wxMOD_NONE), ElementsAre("PageControl1", "ConnectionGrid", "BT_OK"));
  });
}

TEST_F(EditorInUse, WheelChangesNothingThatDoesNotHaveTheKeyboard) {
  Show([this] {
    form.CB_U->SetSelection(1);
    for (wxWindow* const control :
         {static_cast<wxWindow*>(form.CB_U), static_cast<wxWindow*>(form.Ed_Timeout),
          &form.UpDownTimeout->Buttons(), &form.UpDownMaxError->Buttons(),
          static_cast<wxWindow*>(form.Ed_MaxError), static_cast<wxWindow*>(form.Ed_MaxChannel),
          static_cast<wxWindow*>(form.Ed_Skip)}) {
      TurnWheelOver(*control);
    }
    EXPECT_EQ(form.CB_U->GetSelection(), 1);
    EXPECT_EQ(Data().U_Control, 2);
    EXPECT_EQ(TextOf(form.Ed_Timeout), "5000");
    EXPECT_EQ(TextOf(form.Ed_MaxError), "10");
    EXPECT_EQ(TextOf(form.Ed_MaxChannel), "48");
    EXPECT_EQ(TextOf(form.Ed_Skip), "");
  });
}

TEST_F(EditorInUse, WheelScrollsAColumnThatIsTooLow) {
  Show([this] {
    const wxWindow& column = *form.CB_U->GetParent();
    const int high = column.GetSize().y;
    form.Window()->SetSize(300, 480);
    ASSERT_TRUE(WaitFor([&] { return column.GetSize().y < high; }));
    Settle();
    const int before = form.CB_U->GetPosition().y;
    TurnWheelOver(*form.CB_U);
    EXPECT_TRUE(WaitFor([&] { return form.CB_U->GetPosition().y < before; }));
    EXPECT_EQ(form.CB_U->GetSelection(), 2);
  });
}

}  // namespace
}  // namespace shorttest::testkit
