// The parameters: from the data into the controls, and from what the user does into the data.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/choice.h>
#include <wx/gauge.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

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

class EditorParameters : public EditorTest {
 protected:
  // What the warning says, without its line breaks.
  std::string Warning() const {
    wxString text = form.LabelWarning->GetLabel();
    text.Replace("\n", " ");
    return text.utf8_string();
  }

  static constexpr const char* VoltageWarning = "Warnung: Spannung im Prüfling kann Messkanäle beschädigen";
  static constexpr const char* DischargeWarning =
      "Warnung: Die Entladungsfunktion funktioniert nur mit Abschlusswiderstand.";
};

// Each field to its own parameter, at every key and when it is left.
TEST_F(EditorParameters, TypingReachesTheDataAtOnce) {
  Show([this] {
    Replace(*form.Ed_Schwelle, "2,50");
    EXPECT_EQ(Data().Schwelle, 2.5);
    Replace(*form.Ed_Schwelle2, "1,50");
    EXPECT_EQ(TextOf(form.Ed_Schwelle), "2,5");
    EXPECT_EQ(Data().Schwelle2, 1500.0);
    Replace(*form.Ed_Timeout, "20000");
    EXPECT_EQ(TextOf(form.Ed_Schwelle2), "1,5");
    EXPECT_EQ(Data().Timeout, 2000);  // the last number typed that is within the limits
    Replace(*form.Ed_MaxError, "99");
    EXPECT_EQ(TextOf(form.Ed_Timeout), "2000");
    EXPECT_EQ(Data().MaxError, 99);
    Replace(*form.Ed_LastRelaisKarte, "05");
    Replace(*form.Ed_LastRelais, "06");
    EXPECT_EQ(Data().LastRelaisKarte, 5);
    EXPECT_EQ(Data().LastRelais, 6);
    Enter(*form.Ed_Timeout);
    EXPECT_EQ(TextOf(form.Ed_LastRelaisKarte) + TextOf(form.Ed_LastRelais), "56");
  });
}

TEST_F(EditorParameters, TextThatIsNoNumberIsAnErrorAndGivesWayToWhatCounts) {
  Show([this] {
    for (wxTextCtrl* const edit : {form.Ed_Schwelle, form.Ed_Timeout, form.Ed_MaxError, form.Ed_MaxChannel}) {
      const std::string before = TextOf(edit);
      SCOPED_TRACE(before);
      Replace(*edit, "");
      EXPECT_EQ(TakeErrors(), std::vector<std::string>{});
      Click(*form.Ed_Schwelle2);
      EXPECT_THAT(TakeErrors(), ElementsAre(HasSubstr("\"\"")));
      EXPECT_EQ(TextOf(edit), before);
    }
  });
}

TEST_F(EditorParameters, DataFileIsShown) {
  TShortTestData data(3, 20);
  data.Schwelle = 2.5;
  data.Schwelle2 = 15000.0;
  data.U_Control = 1;
  data.Timeout = 2000;
  data.MaxError = 7;
  data.LastRelaisKarte = 2;
  data.LastRelais = 17;
  UseExpectation(data);
  Show([this] {
    EXPECT_EQ(TextOf(form.Ed_Schwelle), "2,5");
    EXPECT_EQ(form.UpDownSchwelle->Position(), 2);
    EXPECT_EQ(TextOf(form.Ed_Schwelle2), "15");
    EXPECT_EQ(form.CB_U->GetSelection(), 1);
    EXPECT_EQ(TextOf(form.Ed_Timeout), "2000");
    EXPECT_EQ(TextOf(form.Ed_MaxError), "7");
    EXPECT_EQ(TextOf(form.Ed_LastRelaisKarte), "2");
    EXPECT_EQ(TextOf(form.Ed_LastRelais), "17");
    EXPECT_EQ(form.UpDownMin->Position(), 3);
    EXPECT_EQ(form.UpDownMax->Position(), 20);
    EXPECT_EQ(Data().Schwelle, 2.5);
    EXPECT_EQ(Data().Schwelle2, 15000.0);
  });
}

TEST_F(EditorParameters, ShowingKeepsARelayBeyondTheLimits) {
  TShortTestData data(1, 4);
  data.LastRelaisKarte = 12;
  data.LastRelais = 40;
  UseExpectation(data);
  Show([this] {
    EXPECT_EQ(TextOf(form.Ed_LastRelaisKarte), "12");
    EXPECT_EQ(TextOf(form.Ed_LastRelais), "40");
    EXPECT_EQ(Data().LastRelaisKarte, 12);
    EXPECT_EQ(Data().LastRelais, 40);
  });
}

TEST_F(EditorParameters, UnknownVoltageControlSelectsNothing) {
  TShortTestData data(1, 4);
  data.U_Control = 9;
  UseExpectation(data);
  Show([this] {
    EXPECT_EQ(form.CB_U->GetSelection(), wxNOT_FOUND);
    EXPECT_EQ(Data().U_Control, 9);
  });
}

TEST_F(EditorParameters, LowerThreshold2500OhmSetsTheUpperMinimumTo2KiloOhm) {
  Show([this] {
    Replace(*form.Ed_Schwelle, "2500");
    EXPECT_EQ(Data().Schwelle, 2500.0);
    EXPECT_EQ(form.UpDownSchwelle2->Minimum(), 2);
  });
}

TEST_F(EditorParameters, ClearingARelayEditAndLeavingItStoresMinusOne) {
  TShortTestData data(1, 4);
  data.LastRelaisKarte = 3;
  data.LastRelais = 4;
  UseExpectation(data);
  Show([this] {
    Replace(*form.Ed_LastRelaisKarte, "");
    EXPECT_EQ(Data().LastRelaisKarte, 3);
    Replace(*form.Ed_LastRelais, "");
    EXPECT_EQ(Data().LastRelaisKarte, -1);
    EXPECT_EQ(Data().LastRelais, 4);
    Enter(*form.Ed_Timeout);
    EXPECT_EQ(Data().LastRelais, -1);
  });
}

TEST_F(EditorParameters, ArrowKeysReachTheData) {
  Show([this] {
    Enter(*form.Ed_Timeout);
    Press(WXK_UP);
    EXPECT_EQ(Data().Timeout, 6000);
    Enter(*form.Ed_Schwelle);
    Press(WXK_DOWN);
    EXPECT_EQ(Data().Schwelle, 9.0);
  });
}

TEST_F(EditorParameters, VoltageControlIsChosen) {
  Show([this] {
    form.CB_U->SetFocus();
    Press(WXK_UP);
    EXPECT_EQ(form.CB_U->GetSelection(), 1);
    EXPECT_EQ(Data().U_Control, 1);
    Press(WXK_UP);
    EXPECT_EQ(Data().U_Control, 0);
    EXPECT_EQ(Warning(), VoltageWarning);
  });
}

TEST_F(EditorParameters, DischargeWarningShowsForGeneration1WithoutResistor) {
  driver.Generation(1);
  Show([this] { EXPECT_EQ(Warning(), DischargeWarning); });
}

TEST_F(EditorParameters, WarningIsRedAndFitsItsRoom) {
  driver.Generation(1);
  Show([this] {
    EXPECT_EQ(form.LabelWarning->GetForegroundColour(), *wxRED);
    EXPECT_GE(form.LabelWarning->GetSize().x, 156);
    EXPECT_GE(form.LabelWarning->GetSize().y, 58);
    const wxSize text = form.LabelWarning->GetTextExtent("Entladungsfunktion");
    EXPECT_LE(text.x, form.LabelWarning->GetSize().x);
    EXPECT_LE(4 * text.y, form.LabelWarning->GetSize().y);
  });
}

TEST_F(EditorParameters, ChangingOnlyTheCardNeverRefreshesTheWarning) {
  driver.Generation(1);
  Show([this] {
    ASSERT_EQ(Warning(), DischargeWarning);
    Replace(*form.Ed_LastRelaisKarte, "2");
    EXPECT_EQ(Warning(), DischargeWarning);
  });
}

TEST_F(EditorParameters, ChangingTheRelayRefreshesTheWarning) {
  driver.Generation(1);
  Show([this] {
    ASSERT_EQ(Warning(), DischargeWarning);
    Replace(*form.Ed_LastRelais, "2");
    EXPECT_EQ(Warning(), "");
  });
}

TEST_F(EditorParameters, WrongNumberIsReportedAndItsCorrectionTaken) {
  Show([this] {
    Replace(*form.Ed_Schwelle, "x");
    EXPECT_THAT(TakeErrors(), ElementsAre(HasSubstr("\"x\"")));
    EXPECT_EQ(Data().Schwelle, 10.0);
    Replace(*form.Ed_Schwelle, "3");
    EXPECT_EQ(Data().Schwelle, 3.0);
    Enter(*form.Ed_Timeout);
    EXPECT_EQ(TakeErrors(), std::vector<std::string>{});
  });
}

// The box that tells of the error takes the mouse from the button that is being pressed.
TEST_F(EditorParameters, AnErrorOnLeavingSwallowsTheClickThatLeft) {
  messages.errorsInBoxes = true;
  Show([this] {
    Replace(*form.Ed_Schwelle, "");
    Click(*form.BT_OK);
    EXPECT_THAT(TakeErrors(), ElementsAre(HasSubstr("\"\"")));
    EXPECT_EQ(form.ModalResult(), mrNone);
  });
}

TEST_F(EditorParameters, EnterTakesOverTheEditItIsPressedIn) {
  const std::string file = UseExpectation(TShortTestData(1, 4));
  Show([this] {
    Replace(*form.Ed_LastRelais, "");
    Press(WXK_RETURN);
    WaitForClose();
  });
  EXPECT_EQ(TShortTestData(file).LastRelais, -1);
}

}  // namespace
}  // namespace shorttest::testkit
