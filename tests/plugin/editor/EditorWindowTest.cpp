// The dialog as a window: its captions, limits and initial content, its keys, its life.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/choice.h>
#include <wx/gauge.h>
#include <wx/notebook.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <set>
#include <stdexcept>
#include <system_error>

#include "plugin/editor/EditorDialog.h"
#include "plugin/editor/GridView.h"
#include "tests/plugin/editor/EditorFixture.h"
#include "tests/support/WidgetTest.h"

namespace shorttest::testkit {
namespace {

using ::testing::ElementsAre;
using widget_test::Click;
using widget_test::Press;
using widget_test::Settle;
using widget_test::Type;
using widget_test::WaitFor;

using EditorWindow = EditorTest;

TEST_F(EditorWindow, ObjectNeedsNoWindow) {
  EXPECT_EQ(form.Window(), nullptr);
  EXPECT_EQ(form.Data(), nullptr);
  form.KXEdit_Datafile.SetText("\"a.dat\"");
  EXPECT_EQ(form.KXEdit_Datafile.GetText(), "\"a.dat\"");
}

TEST_F(EditorWindow, DataFileEditIsHandedToTheHost) {
  ASSERT_EQ(variables.attached.size(), 1U);
  EXPECT_EQ(variables.attached.front(), &form.KXEdit_Datafile);
}

TEST_F(EditorWindow, FindEditKnowsTheDataFileEditAlone) {
  EXPECT_EQ(form.FindEdit("KXEdit_Datafile"), &form.KXEdit_Datafile);
  EXPECT_EQ(form.FindEdit("KXEdit_Other"), nullptr);
}

TEST_F(EditorWindow, HasTheStatedSize) {
  Show([this] {
    EXPECT_EQ(form.Window()->GetClientSize(), wxSize(984, 662));
    EXPECT_EQ(form.Window()->GetMinSize(), wxSize(300, 480));
    EXPECT_EQ(form.Window()->GetTitle(), "Kurzschlusstest");
  });
}

TEST_F(EditorWindow, PagesAreEightHundredAndEightWide) {
  Show([this] { EXPECT_NEAR(form.PageControl1->GetSize().x, 808, 2); });
}

TEST_F(EditorWindow, CanBeMadeSmall) {
  Show([this] {
    form.Window()->SetSize(300, 480);
    Settle();
    EXPECT_LE(form.Window()->GetSize().x, 320);
    EXPECT_TRUE(form.BT_OK->IsShownOnScreen());
  });
}

// Whether a control lies within its parent, top to bottom and left to right.
bool IsInSight(const wxWindow& control) {
  return wxRect(control.GetParent()->GetClientSize()).Contains(control.GetRect());
}

TEST_F(EditorWindow, WholeColumnIsInSight) {
  Show([this] {
    EXPECT_TRUE(IsInSight(*form.Ed_MinChannel));
    EXPECT_TRUE(IsInSight(form.UpDownMax->Buttons()));
  });
}

TEST_F(EditorWindow, LowDialogMovesTheRowsOfTheColumnTogether) {
  Show([this] {
    const int before = form.Ed_MinChannel->GetPosition().y;
    const wxWindow& last = form.UpDownMax->Buttons();
    const int spare = last.GetParent()->GetClientSize().y - last.GetRect().GetBottom();
    form.Window()->SetClientSize(776, 662 - spare - 16);
    EXPECT_TRUE(WaitFor([&] {
      return form.Ed_MinChannel->GetPosition().y < before && IsInSight(*form.Ed_MinChannel) &&
             IsInSight(form.UpDownMax->Buttons());
    })) << form.Ed_MinChannel->GetPosition().y
        << " of " << before;
    Settle();
    form.Window()->SetClientSize(984, 662);
    EXPECT_TRUE(WaitFor([&] { return form.Ed_MinChannel->GetPosition().y == before; }))
        << form.Ed_MinChannel->GetPosition().y << " of " << before;
  });
}

TEST_F(EditorWindow, SmallestDialogScrollsTheColumnToTheControlThatHasTheKeyboard) {
  Show([this] {
    form.Window()->SetSize(300, 480);
    EXPECT_TRUE(WaitFor([&] { return !IsInSight(*form.Ed_MinChannel); }));
    Settle();
    Press('K', wxMOD_ALT);  // the voltage control
    Press('K', wxMOD_ALT);
    ASSERT_TRUE(form.Ed_MinChannel->HasFocus());
    EXPECT_TRUE(WaitFor([&] { return IsInSight(*form.Ed_MinChannel); }));
    EXPECT_TRUE(IsInSight(form.UpDownMax->Buttons()));
  });
}

TEST_F(EditorWindow, SmallestDialogHasRoomForItsButtons) {
  Show([this] {
    form.Window()->SetSize(300, 480);
    Settle();
    for (const wxWindow* const button :
         {form.BT_OK, form.ButtonCancel, form.BT_Learn, form.KXHelpButton1.Control()}) {
      EXPECT_TRUE(WaitFor([button] { return IsInSight(*button); })) << button->GetLabel();
    }
  });
}

TEST_F(EditorWindow, CaptionsAreAsGiven) {
  Show([this] {
    EXPECT_EQ(form.BT_OK->GetLabel(), "OK");
    EXPECT_EQ(form.ButtonCancel->GetLabel(), "Abbruch");
    EXPECT_EQ(form.BT_Learn->GetLabel(), "&Lernen");
    EXPECT_EQ(form.BT_Fileopen->GetLabel(), wxString::FromUTF8("Ö&ffnen"));
    EXPECT_EQ(form.BT_Filesave->GetLabel(), "&Speichern");
    EXPECT_EQ(form.PageControl1->GetPageText(0), "Text");
    EXPECT_EQ(form.PageControl1->GetPageText(1), "Grafik");
    ASSERT_EQ(form.CB_U->GetCount(), 3U);
    EXPECT_EQ(form.CB_U->GetString(0), "Ohne");
    EXPECT_EQ(form.CB_U->GetString(1), "Mit");
    EXPECT_EQ(form.CB_U->GetString(2), "Entladung");
    EXPECT_EQ(form.ProgressBar1->GetRange(), 100);
  });
}

// All texts of the labels and groups inside a window.
void CollectLabels(const wxWindow& window, std::multiset<std::string>& labels) {
  for (const wxWindow* const child : window.GetChildren()) {
    if (dynamic_cast<const wxStaticText*>(child) != nullptr ||
        dynamic_cast<const wxStaticBox*>(child) != nullptr) {
      labels.insert(child->GetLabel().utf8_string());
    }
    CollectLabels(*child, labels);
  }
}

TEST_F(EditorWindow, LabelsAreAsGiven) {
  Show([this] {
    std::multiset<std::string> labels;
    CollectLabels(*form.Window(), labels);
    const std::multiset<std::string> expected = {"&Dateiname",
                                                 "&Unterer Schwellenwert",
                                                 "Ohm",
                                                 "&Oberer Schwellenwert",
                                                 "KOhm",
                                                 "Spannungs&kontrolle",
                                                 "",  // the warning
                                                 "&Wartezeit für Entladung",
                                                 "ms",
                                                 "Maximale Anzahl &Fehler",
                                                 "Abschluss&widerstand",
                                                 "Karte",
                                                 "Relais",
                                                 "&Kanäle",
                                                 "-",
                                                 "&Gesperrte Messpunkte",
                                                 "Übersprungene Verbindungen",
                                                 "Soll-&Verbindungen"};
    EXPECT_EQ(labels, expected);
  });
}

TEST_F(EditorWindow, LimitsAndStepsAreAsGiven) {
  Show([this] {
    const auto limits = [](const UpDownEdit& number) {
      return std::vector<int>{number.Minimum(), number.Maximum(), number.StepWidth()};
    };
    using Limits = std::vector<int>;
    EXPECT_EQ(limits(*form.UpDownSchwelle), (Limits{0, 32767, 1}));
    EXPECT_EQ(limits(*form.UpDownSchwelle2), (Limits{0, 1900, 1}));
    EXPECT_EQ(limits(*form.UpDownTimeout), (Limits{0, 10000, 1000}));
    EXPECT_EQ(limits(*form.UpDownMaxError), (Limits{1, 10000, 1}));
    EXPECT_EQ(limits(*form.UpDownLastRelaisKarte), (Limits{0, 10, 1}));
    EXPECT_EQ(limits(*form.UpDownLastRelais), (Limits{0, 18, 1}));
    EXPECT_EQ(limits(*form.UpDownMin), (Limits{1, 239, 1}));
    EXPECT_EQ(limits(*form.UpDownMax), (Limits{2, 240, 1}));
  });
}

TEST_F(EditorWindow, KeyboardStartsInTheDataFileEdit) {
  Show([this] { EXPECT_TRUE(form.KXEdit_Datafile.Control()->HasFocus()); });
}

TEST_F(EditorWindow, TabVisitsTheControlsFromTopToBottom) {
  Show([this] {
    const std::vector<wxWindow*> order = {
        form.BT_Fileopen,   form.BT_Filesave,   form.Ed_Schwelle,  form.Ed_Schwelle2,
        form.CB_U,          form.Ed_Timeout,    form.Ed_MaxError,  form.Ed_LastRelaisKarte,
        form.Ed_LastRelais, form.Ed_MinChannel, form.Ed_MaxChannel};
    for (wxWindow* const control : order) {
      Press(WXK_TAB);
      if (control == form.CB_U) continue;  // does not tell that it has the keyboard
      EXPECT_EQ(wxWindow::FindFocus(), control);
    }
  });
}

struct AcceleratorCase {
  char letter;
  std::function<wxWindow*(TShortTestForm&)> target;
};

TEST_F(EditorWindow, AcceleratorsMoveTheKeyboard) {
  const std::vector<AcceleratorCase> cases = {
      {'U', [](TShortTestForm& f) { return f.Ed_Schwelle; }},
      {'O', [](TShortTestForm& f) { return f.Ed_Schwelle2; }},
      {'G', [](TShortTestForm& f) { return f.Ed_Skip; }},
      {'V', [](TShortTestForm& f) { return f.Mm_Soll; }},
      {'D', [](TShortTestForm& f) { return f.KXEdit_Datafile.Control(); }},
  };
  Show([&] {
    for (const AcceleratorCase& row : cases) {
      Press(row.letter, wxMOD_ALT);
      EXPECT_EQ(wxWindow::FindFocus(), row.target(form)) << row.letter;
    }
  });
}

TEST_F(EditorWindow, SharedAcceleratorsVisitTheirControlsInTurn) {
  Show([this] {
    Press('W', wxMOD_ALT);
    EXPECT_TRUE(form.Ed_Timeout->HasFocus());
    Press('W', wxMOD_ALT);
    EXPECT_TRUE(form.Ed_LastRelaisKarte->HasFocus());
    Press('W', wxMOD_ALT);
    EXPECT_TRUE(form.Ed_Timeout->HasFocus());
    Press('K', wxMOD_ALT);
    EXPECT_TRUE(form.CB_U->HasFocus());
    Press('K', wxMOD_ALT);
    EXPECT_TRUE(form.Ed_MinChannel->HasFocus());
  });
}

TEST_F(EditorWindow, AcceleratorOfAHiddenTextDoesNothing) {
  Show([this] {
    ChoosePage(1);
    form.KXEdit_Datafile.Control()->SetFocus();
    Press('V', wxMOD_ALT);
    EXPECT_TRUE(form.KXEdit_Datafile.Control()->HasFocus());
  });
}

TEST_F(EditorWindow, PagesAreTurnedWithKeys) {
  Show([this] {
    Press(WXK_PAGEDOWN, wxMOD_CONTROL);
    EXPECT_EQ(form.PageControl1->GetSelection(), 1);
    Press(WXK_PAGEUP, wxMOD_CONTROL);
    EXPECT_EQ(form.PageControl1->GetSelection(), 0);
    Press(WXK_TAB, wxMOD_CONTROL);
    EXPECT_EQ(form.PageControl1->GetSelection(), 1);
    Press(WXK_TAB, wxMOD_CONTROL | wxMOD_SHIFT);
    EXPECT_EQ(form.PageControl1->GetSelection(), 0);
  });
}

TEST_F(EditorWindow, TurningThePageWithAKeyLeavesTheText) {
  Show([this] {
    Enter(*form.Mm_Soll);
    Type("1 3");
    Press(WXK_PAGEDOWN, wxMOD_CONTROL);
    EXPECT_EQ(Pair(1, 3), CellState::Connected);
  });
}

TEST_F(EditorWindow, EscapeCancels) {
  EXPECT_EQ(Show([] { Press(WXK_ESCAPE); }), mrCancel);
}

TEST_F(EditorWindow, EnterIsOk) {
  EXPECT_EQ(Show([this] {
              Press(WXK_RETURN);
              WaitForClose();
            }),
            mrOk);
}

TEST_F(EditorWindow, CloseBoxCancels) {
  EXPECT_EQ(Show([this] {
              EXPECT_TRUE(widget_test::PressCloseBox([this] { return form.ModalResult() != mrNone; }));
            }),
            mrCancel);
}

TEST_F(EditorWindow, AbbruchCancels) {
  EXPECT_EQ(Show([this] { Click(*form.ButtonCancel); }), mrCancel);
}

TEST_F(EditorWindow, EnterInAMemoIsALineOfIt) {
  Show([this] {
    Enter(*form.Mm_Soll);
    Type("1");
    Press(WXK_RETURN);
    Type("2");
    EXPECT_EQ(TextOf(form.Mm_Soll), "1\n2");
    EXPECT_EQ(form.ModalResult(), mrNone);
  });
}

// The host's help, which keeps the topics that it was asked for.
class AskedTopics : public TKXHelpSystem {
 public:
  AskedTopics() { SetHelpSystem(this); }
  ~AskedTopics() override { SetHelpSystem(nullptr); }
  void ShowTopic(int helpContext) override {
    topics.push_back(helpContext);
    if (fails) throw std::runtime_error("the help file is missing");
  }

  std::vector<int> topics;
  bool fails = false;
};

TEST_F(EditorWindow, HelpIsTheHosts) {
  AskedTopics help;
  Show([&] {
    Click(*form.KXHelpButton1.Control());
    EXPECT_THAT(help.topics, ElementsAre(140));
    Press(WXK_F1);
    EXPECT_TRUE(WaitFor([&] { return help.topics.size() == 2; }));
    EXPECT_EQ(help.topics.back(), 140);
  });
}

TEST_F(EditorWindow, HelpThatFailsIsReported) {
  AskedTopics help;
  help.fails = true;
  Show([&] {
    Click(*form.KXHelpButton1.Control());
    EXPECT_THAT(TakeErrors(), ElementsAre("the help file is missing"));
  });
}

TEST_F(EditorWindow, HostWithoutHelpSaysSo) {
  Show([this] {
    Click(*form.KXHelpButton1.Control());
    ASSERT_EQ(messages.others.size(), 1U);
    EXPECT_EQ(messages.others[0].text, "Zum Thema 140 gibt es keine Hilfe.");
  });
}

TEST_F(EditorWindow, HardwareIsMadeReadyEachTimeItIsShown) {
  Show([] {});
  Show([] {});
  EXPECT_EQ(breInits, 2);
}

TEST_F(EditorWindow, IsTheActiveOneFromShowingToOk) {
  Show([this] {
    EXPECT_EQ(ActiveShortTestForm, &form);
    Click(*form.BT_OK);
  });
  EXPECT_EQ(ActiveShortTestForm, nullptr);
}

TEST_F(EditorWindow, StaysTheActiveOneWhenCancelled) {
  Show([] { Press(WXK_ESCAPE); });
  EXPECT_EQ(ActiveShortTestForm, &form);
  EXPECT_NE(form.Data(), nullptr);
}

TEST_F(EditorWindow, IsNotTheActiveOneOnceItIsGone) {
  {
    TShortTestForm other(nullptr);
    ActiveShortTestForm = &other;
  }
  EXPECT_EQ(ActiveShortTestForm, nullptr);
}

TEST_F(EditorWindow, MissingDataFileFailsToShow) {
  UseDataFile(ProjectFile("nicht_da.dat"));
  EXPECT_THROW(form.ShowModal(), std::system_error);
  EXPECT_EQ(breInits, 0);
}

TEST_F(EditorWindow, HardwareThatIsNotReadyFailsToShow) {
  TShortTestForm other([] { throw std::runtime_error("no tester"); });
  EXPECT_THROW(other.ShowModal(), std::runtime_error);
}

TEST_F(EditorWindow, CanBeShownAgainAfterAFailure) {
  UseDataFile(ProjectFile("nicht_da.dat"));
  EXPECT_THROW(form.ShowModal(), std::system_error);
  form.KXEdit_Datafile.SetText("");
  EXPECT_EQ(Show([] { Press(WXK_ESCAPE); }), mrCancel);
}

TEST_F(EditorWindow, TypedFileNameSurvivesTheWindow) {
  Show([this] { Replace(*form.KXEdit_Datafile.Control(), "abc"); });
  EXPECT_EQ(form.KXEdit_Datafile.GetText(), "abc");
}

}  // namespace
}  // namespace shorttest::testkit
