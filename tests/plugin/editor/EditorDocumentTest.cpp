// What keeps the user from writing, learning or closing with something else than what the dialog shows.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/dcmemory.h>
#include <wx/image.h>
#include <wx/notebook.h>
#include <wx/textctrl.h>

#include <filesystem>
#include <utility>
#include <vector>

#include "plugin/editor/EditorDialog.h"
#include "plugin/editor/GridView.h"
#include "tests/plugin/editor/EditorFixture.h"
#include "tests/plugin/editor/FileDialogUser.h"
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

class EditorDocument : public EditorTest {
 protected:
  EditorDocument() { driver.Cards(1); }

  // A learned harness on channels 1 to `last`.
  std::string UseHarness(int last, const std::vector<std::pair<int, int>>& wires) {
    TShortTestData data(1, last);
    for (const auto& [a, b] : wires) data.Put(a - 1, b - 1, CellState::Connected, 0.4);
    for (int i = 0; i < last; ++i) {
      for (int j = 0; j < i; ++j) data.Put(i, j, CellState::NotConnected, 1e9);
    }
    return UseExpectation(data);
  }

  std::string BrokenFile() const { return WriteFile("kaputt.dat", "[BEREICH]\r\nSTART=1\r\nENDE=99999\r\n"); }

  static std::string Selected(const wxTextCtrl* text) { return text->GetStringSelection().utf8_string(); }
};

TEST_F(EditorDocument, TypingTheLastChannelKeepsTheExpectation) {
  const std::string file = UseHarness(22, {{1, 2}, {3, 22}});
  Show([this] {
    Replace(*form.Ed_MaxChannel, "24");
    EXPECT_EQ(Pair(3, 22), CellState::Connected);
    Click(*form.BT_OK);
  });
  const TShortTestData saved(file);
  EXPECT_EQ(saved.bis, 24);
  EXPECT_EQ(saved.Get(2, 21), CellState::Connected);
  EXPECT_EQ(saved.Get(3, 21), CellState::NotConnected);
}

TEST_F(EditorDocument, HalfTypedLastChannelIsNotSaved) {
  const std::string file = UseHarness(22, {{1, 2}, {3, 22}});
  Show([this] {
    Replace(*form.Ed_MaxChannel, "2");
    Press(WXK_RETURN);
    EXPECT_TRUE(widget_test::WaitFor([this] { return !messages.errors.empty(); }));
    EXPECT_THAT(TakeErrors(), ElementsAre("3 is too large."));
    EXPECT_EQ(form.ModalResult(), mrNone);
    EXPECT_EQ(Selected(form.Mm_Soll), "3");
  });
  EXPECT_EQ(TShortTestData(file).bis, 22);
}

TEST_F(EditorDocument, ArrowsOfTheRangeGiveNothingUpUntilTheyAreLeft) {
  UseHarness(22, {{3, 22}});
  Show([this] {
    Enter(*form.Ed_MaxChannel);
    Press(WXK_DOWN);
    EXPECT_EQ(Data().bis, 21);
    Press(WXK_UP);
    EXPECT_EQ(Pair(3, 22), CellState::Connected);
  });
}

TEST_F(EditorDocument, RangeFieldsThatAreLeftShowTheChannelsThatCount) {
  UseHarness(22, {{1, 2}});
  Show([this] {
    Replace(*form.Ed_MaxChannel, "250");
    Enter(*form.Ed_MinChannel);
    EXPECT_EQ(Data().bis, 25);
    EXPECT_EQ(TextOf(form.Ed_MaxChannel), "25");
    Enter(*form.Ed_Timeout);
    Click(*form.BT_OK);  // who goes on has seen it
  });
  EXPECT_EQ(form.ModalResult(), mrOk);
}

TEST_F(EditorDocument, ChannelBeyondTheLimitsStaysWhileTheOtherIsTyped) {
  UseHarness(250, {{1, 250}});
  Show([this] {
    EXPECT_EQ(TextOf(form.Ed_MaxChannel), "250");
    Replace(*form.Ed_MinChannel, "2");
    Enter(*form.Ed_Timeout);
    EXPECT_EQ(Data().bis, 250);
    EXPECT_EQ(TextOf(form.Ed_MaxChannel), "250");
  });
}

TEST_F(EditorDocument, ChannelThatIsNotPossibleIsNotSavedUnseen) {
  const std::string file = UseHarness(22, {{1, 2}});
  Show([this] {
    Replace(*form.Ed_MaxChannel, "250");
    Press(WXK_RETURN);
    EXPECT_TRUE(widget_test::WaitFor([this] { return !messages.errors.empty(); }));
    EXPECT_THAT(TakeErrors(), ElementsAre("Kanal 250 ist nicht möglich, es gilt 25."));
    Replace(*form.Ed_MaxChannel, "250");
    Click(*form.BT_OK);
    EXPECT_THAT(TakeErrors(), ElementsAre("Kanal 250 ist nicht möglich, es gilt 25."));
    EXPECT_EQ(form.ModalResult(), mrNone);
    Click(*form.BT_OK);
  });
  EXPECT_EQ(TShortTestData(file).bis, 25);
}

TEST_F(EditorDocument, FirstChannelAboveTheLastIsAnErrorWhenLeftAndOnOkAndSpeichern) {
  const std::string file = UseHarness(22, {{1, 2}});
  static constexpr const char* Message = "Der erste Kanal (60) liegt über dem letzten (22).";
  FileDialogUser user({ProjectFile("neu.dat")});
  Show([this] {
    Replace(*form.Ed_MinChannel, "60");
    EXPECT_EQ(TakeErrors(), std::vector<std::string>{});
    Click(*form.Ed_Timeout);
    EXPECT_THAT(TakeErrors(), ElementsAre(Message));
    for (wxButton* const button : {form.BT_OK, form.BT_Filesave}) {
      Click(*button);
      EXPECT_THAT(TakeErrors(), ElementsAre(Message));
    }
    EXPECT_EQ(form.ModalResult(), mrNone);
    Replace(*form.Ed_MinChannel, "1");
    Enter(*form.Ed_Timeout);
    EXPECT_EQ(Pair(1, 2), CellState::Connected);
  });
  EXPECT_EQ(user.dialogs, 0);
  EXPECT_EQ(TShortTestData(file).von, 1);
}

TEST_F(EditorDocument, RangeThatIsNoneIsNotLearned) {
  UseHarness(22, {{1, 2}});
  Show([this] {
    Replace(*form.Ed_MinChannel, "60");
    Press('L', wxMOD_ALT);
    EXPECT_TRUE(widget_test::WaitFor([this] { return !messages.errors.empty(); }));
    EXPECT_THAT(TakeErrors(), ElementsAre(HasSubstr("Der erste Kanal")));
  });
  EXPECT_EQ(log.Count("read"), 0);
}

TEST_F(EditorDocument, ChannelsBeyondTheTesterAreNotLearned) {
  UseHarness(60, {{1, 60}});
  Show([this] {
    Click(*form.BT_Learn);
    EXPECT_THAT(TakeErrors(), ElementsAre("Der Tester hat die Kanäle 1 bis 48, nicht 1 bis 60."));
    EXPECT_EQ(TextOf(form.Mm_Soll), "1 60");
  });
  EXPECT_EQ(log.Count("read"), 0);
}

TEST_F(EditorDocument, WrongItemIsSelectedInItsTextAndTheRestCanBeReached) {
  UseHarness(8, {});
  Show([this] {
    Enter(*form.Mm_Soll);
    Type("1 2\n3 49 5");
    Click(*form.Ed_Timeout);
    EXPECT_THAT(TakeErrors(), ElementsAre("49 is too large."));
    EXPECT_TRUE(form.Mm_Soll->HasFocus());
    EXPECT_EQ(Selected(form.Mm_Soll), "49");
    // What mends it may be elsewhere.
    Click(*form.Ed_MaxChannel);
    EXPECT_THAT(TakeErrors(), ElementsAre("49 is too large."));
    EXPECT_TRUE(form.Ed_MaxChannel->HasFocus());
    Enter(*form.Mm_Soll);
    form.Mm_Soll->SetSelection(form.Mm_Soll->XYToPosition(2, 1), form.Mm_Soll->XYToPosition(4, 1));
    Type("4");
    Enter(*form.Ed_Timeout);
    EXPECT_EQ(Pair(3, 5), CellState::Connected);
  });
}

TEST_F(EditorDocument, WrongItemIsSelectedOnceTheBoxIsClosed) {
  UseHarness(8, {});
  messages.errorsInBoxes = true;
  Show([this] {
    Enter(*form.Mm_Soll);
    Type("1 2\n3 49 5");
    Click(*form.BT_OK);
    EXPECT_TRUE(widget_test::WaitFor([this] { return form.Mm_Soll->HasFocus(); }));
    EXPECT_EQ(Selected(form.Mm_Soll), "49");
    Type("4");
    EXPECT_EQ(TextOf(form.Mm_Soll), "1 2\n3 4 5");
    EXPECT_THAT(TakeErrors(), ElementsAre("49 is too large."));
    EXPECT_EQ(form.ModalResult(), mrNone);
  });
}

TEST_F(EditorDocument, WrongItemOnTheHiddenPageIsSelectedOnOk) {
  UseHarness(8, {});
  Show([this] {
    Enter(*form.Mm_SkipCon);
    Type("1 2\n3 x");
    Press(WXK_PAGEDOWN, wxMOD_CONTROL);
    EXPECT_THAT(TakeErrors(), ElementsAre(HasSubstr("\"x\"")));
    EXPECT_EQ(form.PageControl1->GetSelection(), 0);
    EXPECT_EQ(Selected(form.Mm_SkipCon), "x");
    EXPECT_TRUE(form.Mm_SkipCon->HasFocus());
    Press(WXK_PAGEDOWN, wxMOD_CONTROL);
    TakeErrors();
    EXPECT_EQ(form.PageControl1->GetSelection(), 1);
    Click(*form.BT_OK);
    EXPECT_THAT(TakeErrors(), ElementsAre(HasSubstr("\"x\"")));
    EXPECT_EQ(form.PageControl1->GetSelection(), 0);
    EXPECT_EQ(Selected(form.Mm_SkipCon), "x");
    EXPECT_EQ(form.ModalResult(), mrNone);
  });
}

TEST_F(EditorDocument, SpeichernInsistsOnTheCorrectionOfAText) {
  UseHarness(8, {{1, 2}});
  FileDialogUser user({ProjectFile("neu.dat")});
  // A box takes the mouse from the button: what comes of leaving the text for it is told once.
  messages.errorsInBoxes = true;
  Show([this] {
    Enter(*form.Ed_Skip);
    Type("9");
    Click(*form.Ed_Timeout);
    EXPECT_THAT(TakeErrors(), ElementsAre("9 is too large."));
    Click(*form.BT_Filesave);
    EXPECT_THAT(TakeErrors(), ElementsAre("9 is too large."));
    EXPECT_FALSE(std::filesystem::exists(ProjectFile("neu.dat")));
    Click(*form.BT_Filesave);
    EXPECT_THAT(TakeErrors(), ElementsAre("9 is too large."));
    EXPECT_EQ(Selected(form.Ed_Skip), "9");
    Replace(*form.Ed_Skip, "8");
    Click(*form.BT_Filesave);
  });
  EXPECT_EQ(user.dialogs, 1);
  EXPECT_EQ(TShortTestData(ProjectFile("neu.dat")).Get(7, 7), CellState::Suspended);
}

// The button is pressed, and the keyboard stays in the text.
TEST_F(EditorDocument, SpeichernByItsKeyTakesTheTextAlong) {
  UseHarness(8, {});
  FileDialogUser user({ProjectFile("neu.dat"), ProjectFile("neu.dat")});
  Show([this] {
    Enter(*form.Mm_Soll);
    Type("1 2");
    Press('S', wxMOD_ALT);
    EXPECT_TRUE(widget_test::WaitFor([this] { return std::filesystem::exists(ProjectFile("neu.dat")); }));
    EXPECT_EQ(TShortTestData(ProjectFile("neu.dat")).Get(0, 1), CellState::Connected);
    EXPECT_TRUE(form.Mm_Soll->HasFocus());
    Type(" 3");
    Enter(*form.Ed_Timeout);
    EXPECT_EQ(Pair(1, 3), CellState::Connected);
  });
}

TEST_F(EditorDocument, EmptyUpperThresholdIsSavedAsTheLowerOneChangedLast) {
  const std::string file = UseHarness(8, {});
  Show([this] {
    Replace(*form.Ed_Schwelle, "25");
    Press(WXK_RETURN);
    WaitForClose();
  });
  EXPECT_EQ(TShortTestData(file).Schwelle2, 25.0);
}

TEST_F(EditorDocument, OkWithoutAFileNameDiscardsARejectedTextWithoutAMessage) {
  const int result = Show([this] {
    Enter(*form.Ed_Skip);
    Type("490");
    Click(*form.Ed_Timeout);
    EXPECT_THAT(TakeErrors(), ElementsAre("490 is too large."));
    Click(*form.Ed_MaxError);
    TakeErrors();
    Click(*form.BT_OK);
  });
  EXPECT_EQ(result, mrOk);
  EXPECT_EQ(form.Data(), nullptr);
}

TEST_F(EditorDocument, HardwareErrorLeavesTheExpectationAsItWas) {
  UseHarness(8, {{1, 2}, {7, 8}});
  driver.Wire(1, 5);
  driver.FailAt(40, "Relaiskarte antwortet nicht");
  Show([this] {
    Click(*form.BT_Learn);
    EXPECT_THAT(TakeErrors(), ElementsAre("Relaiskarte antwortet nicht"));
    EXPECT_EQ(TextOf(form.Mm_Soll), "1 2\n7 8");
    EXPECT_EQ(Pair(1, 2), CellState::Connected);
    EXPECT_EQ(Pair(1, 5), CellState::NotConnected);
  });
}

TEST_F(EditorDocument, AbbrechenNearTheThresholdLeavesTheExpectationAsItWas) {
  const std::string file = UseHarness(8, {{1, 2}, {7, 8}});
  driver.Wire(1, 5, 9.5);
  messages.answer = mrCancel;
  Show([this] {
    Click(*form.BT_Learn);
    EXPECT_THAT(messages.others, SizeIs(1));
    EXPECT_EQ(TextOf(form.Mm_Soll), "1 2\n7 8");
    Click(*form.BT_OK);
  });
  EXPECT_EQ(TShortTestData(file).Get(6, 7), CellState::Connected);
  EXPECT_EQ(TShortTestData(file).Get(0, 4), CellState::NotConnected);
}

TEST_F(EditorDocument, FileThatCannotBeReadLeavesNoExpectation) {
  UseHarness(8, {{1, 2}});
  const std::string broken = BrokenFile();
  FileDialogUser user({broken});
  Show([&] {
    Click(*form.BT_Fileopen);
    EXPECT_THAT(TakeErrors(), ElementsAre(HasSubstr("kaputt.dat")));
    EXPECT_EQ(form.Data(), nullptr);
    EXPECT_EQ(TextOf(form.Mm_Soll) + TextOf(form.Mm_SollNames), "");

    wxBitmap bitmap(8, 8);
    wxMemoryDC dc(bitmap);
    form.ConnectionGridDrawCell(dc, CellState::Connected, wxRect(0, 0, 8, 8), false);
    dc.SelectObject(wxNullBitmap);
    EXPECT_EQ(bitmap.ConvertToImage().GetBlue(4, 4), 255);

    for (wxButton* const button : {form.BT_Learn, form.BT_Filesave}) {
      Click(*button);
      EXPECT_THAT(TakeErrors(), ElementsAre("Es sind keine Daten da. Öffnen Sie eine Datei."));
    }
    Click(*form.BT_OK);
  });
  EXPECT_EQ(form.ModalResult(), mrOk);
  EXPECT_EQ(std::filesystem::file_size(broken), 32U);
  EXPECT_EQ(log.Count("read"), 0);
}

TEST_F(EditorDocument, AnotherFileMakesTheDialogWholeAgain) {
  const std::string good = UseHarness(8, {{1, 2}});
  FileDialogUser user({BrokenFile(), good});
  Show([this] {
    Click(*form.BT_Fileopen);
    EXPECT_THAT(TakeErrors(), SizeIs(1));
    Replace(*form.Ed_MaxChannel, "5");
    Replace(*form.Mm_Soll, "1 x");
    Click(*form.BT_Fileopen);
    EXPECT_EQ(TextOf(form.Mm_Soll), "1 2");
    EXPECT_EQ(TextOf(form.Ed_MaxChannel), "8");
    Click(*form.BT_OK);
  });
  EXPECT_EQ(form.ModalResult(), mrOk);
  EXPECT_EQ(TShortTestData(good).Get(0, 1), CellState::Connected);
}

}  // namespace
}  // namespace shorttest::testkit
