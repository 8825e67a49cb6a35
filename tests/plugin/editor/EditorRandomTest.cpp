// Every handler in every order, with and without data: whatever the user does, nothing may crash, and what is
// written is an expectation that the dialog showed.

#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/choice.h>
#include <wx/dcmemory.h>
#include <wx/textctrl.h>

#include <cstddef>
#include <exception>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "plugin/editor/GridView.h"
#include "tests/plugin/editor/EditorFixture.h"
#include "tests/plugin/editor/FileDialogUser.h"
#include "tests/support/WidgetTest.h"

namespace shorttest::testkit {
namespace {

// Cancels the file dialogs before they are shown, but for those that are wanted.
class FileDialogsCancelled : public wxModalDialogHook {
 public:
  FileDialogsCancelled() { Register(); }

  bool wanted = false;

 protected:
  int Enter(wxDialog* dialog) override {
    return wanted || dynamic_cast<wxFileDialog*>(dialog) == nullptr ? wxID_NONE : wxID_CANCEL;
  }
};

class EditorRandom : public EditorTest {
 protected:
  EditorRandom() {
    driver.Cards(1);
    driver.Wire(1, 5);
    driver.Wire(2, 3, 9.5);
    TShortTestData(1, 6).SaveExpectationFile(ProjectFile("gut.dat"));
    WriteFile("kaputt.dat", "[BEREICH]\r\nSTART=1\r\nENDE=99999\r\n");
  }

  int Below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }

  template <typename T>
  const T& OneOf(const std::vector<T>& choices) {
    return choices[static_cast<std::size_t>(Below(static_cast<int>(choices.size())))];
  }

  void Fill(wxTextCtrl* text) {
    text->SetValue(wxString::FromUTF8(
        OneOf<std::string>({"", "1", "2", "6", "24", "250", "x", "1 2", "1 2\n3 5", "1,,2", " 4", "2,5"})));
  }

  void Paint() {
    wxBitmap bitmap(4, 4);
    wxMemoryDC dc(bitmap);
    for (int i = 0; i < form.ConnectionGrid->Count(); ++i) {
      form.ConnectionGridDrawCell(dc, static_cast<CellState>(i % 10), wxRect(0, 0, 4, 4), i == 0);
    }
  }

  std::vector<std::function<void()>> Actions() {
    TShortTestForm& f = form;
    std::vector<std::function<void()>> actions = {
        [&f] { f.BT_FileopenClick(); },
        [&f] { f.BT_FilesaveClick(); },
        [&f] { f.BT_LearnClick(); },
        [&f] { f.CB_UChange(); },
        [&f] { f.Ed_TimeoutChange(); },
        [&f] { f.Ed_MaxErrorChange(); },
        [&f] { f.Ed_SchwelleChange(); },
        [&f] { f.Ed_SchwelleExit(); },
        [&f] { f.Ed_Schwelle2Change(); },
        [&f] { f.Ed_Schwelle2Exit(); },
        [&f] { f.Ed_LastRelaisKarteChange(); },
        [&f] { f.Ed_LastRelaisKarteExit(); },
        [&f] { f.Ed_LastRelaisChange(); },
        [&f] { f.Ed_LastRelaisExit(); },
        [&f] { f.Ed_NChannelChange(); },
        [&f] { f.Ed_Exit(); },
        [&f] { f.Mm_SollChange(); },
        [&f] { f.FormResize(); },
        [&f] { f.ShowData(); },
        [&f] { f.ShowConnections(); },
        [&f] { f.UpdateWarning(); },
        [] { LearnProgress(0.5); },
        [this] { Paint(); },
        [this] { form.CB_U->SetSelection(Below(3)); },
    };
    for (wxTextCtrl* const text :
         {f.Ed_Schwelle, f.Ed_Schwelle2, f.Ed_Timeout, f.Ed_MaxError, f.Ed_LastRelaisKarte, f.Ed_LastRelais,
          f.Ed_MinChannel, f.Ed_MaxChannel, f.Ed_Skip, f.Mm_SkipCon, f.Mm_Soll}) {
      actions.emplace_back([this, text] { Fill(text); });
      actions.emplace_back([text] { text->SetFocus(); });
    }
    return actions;
  }

  void DoAnything(int count) {
    const std::vector<std::function<void()>> actions = Actions();
    for (int i = 0; i < count; ++i) {
      messages.answer = OneOf<int>({mrIgnore, mrCancel});
      if (Below(20) == 0) driver.FailAt(1 + Below(60), "Relaiskarte antwortet nicht");
      try {
        OneOf(actions)();
      } catch (const std::exception&) {
        // What the user would be told.
      }
      widget_test::Windows().ProcessMessages();
    }
    TakeErrors();
  }

 private:
  std::mt19937 random_{20261121};
};

TEST_F(EditorRandom, NothingCrashesWithDataOrWithout) {
  constexpr int Showings = 2;
  constexpr int Actions = 100;
  FileDialogUser user({});
  FileDialogsCancelled cancelled;
  const auto open = [&](const std::string& name) {
    user.Next(ProjectFile(name));
    cancelled.wanted = true;
    widget_test::Click(*form.BT_Fileopen);
    cancelled.wanted = false;
    TakeErrors();
  };
  for (int i = 0; i < Showings; ++i) {
    UseDataFile(ProjectFile("gut.dat"));
    Show([&] {
      DoAnything(Actions);
      EXPECT_NE(form.Data(), nullptr);
      open("kaputt.dat");
      EXPECT_EQ(form.Data(), nullptr);
      DoAnything(Actions);
      EXPECT_EQ(form.Data(), nullptr);
      if (i == 0) {
        widget_test::Click(*form.BT_OK);
        EXPECT_EQ(form.ModalResult(), mrOk);
        return;
      }
      open("gut.dat");
      EXPECT_NE(form.Data(), nullptr);
      DoAnything(Actions);
      EXPECT_TRUE(driver.AllRelaysOpen());
    });
    TakeErrors();
  }
  EXPECT_EQ(std::filesystem::file_size(ProjectFile("kaputt.dat")), 32U);
}

}  // namespace
}  // namespace shorttest::testkit
