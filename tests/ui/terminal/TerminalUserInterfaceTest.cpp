#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/ui/terminal/FakeTerminal.h"
#include "ui/terminal/TerminalUserInterface.h"

namespace kxbench {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

ProgressDialogLayout Layout() {
  ProgressDialogLayout layout{};
  layout.caption = "Kurzschlusstest";
  layout.barMinimum = 0;
  layout.barMaximum = 100;
  layout.buttonCaption = "Abbrechen";
  layout.buttonResult = mrCancel;
  return layout;
}

class TerminalUi : public testing::Test {
 protected:
  std::unique_ptr<ProgressDialog> ShowDialog(const ProgressDialogLayout& layout = Layout()) {
    auto dialog = userInterface_.CreateProgressDialog(layout);
    dialog->Show();
    return dialog;
  }

  void Wait(double seconds) { now_ += seconds; }

  FakeTerminal terminal_;
  double now_ = 1000;
  TerminalUserInterface userInterface_{terminal_, ProgressStyle::Shown, [this] { return now_; }};
};

TEST_F(TerminalUi, DialogIsInvisibleUntilShown) {
  const auto dialog = userInterface_.CreateProgressDialog(Layout());
  EXPECT_FALSE(dialog->Visible());
  EXPECT_THAT(terminal_.written, IsEmpty());
  dialog->Show();
  EXPECT_TRUE(dialog->Visible());
  EXPECT_THAT(terminal_.written, HasSubstr("Kurzschlusstest [...."));
  EXPECT_THAT(terminal_.written, HasSubstr("Ctrl-C: cancel"));
}

TEST_F(TerminalUi, BarFollowsThePositionInPlace) {
  const auto dialog = ShowDialog();
  terminal_.TakeWritten();
  Wait(1);
  dialog->SetBarPosition(42);
  const std::string drawn = terminal_.TakeWritten();
  EXPECT_THAT(drawn, HasSubstr(" 42 %  0:01"));
  EXPECT_EQ(drawn.front(), '\r');
  EXPECT_THAT(drawn, Not(HasSubstr("\n")));
}

TEST_F(TerminalUi, PositionsOutsideTheRangeAreClipped) {
  const auto dialog = ShowDialog();
  Wait(1);
  dialog->SetBarPosition(1000);
  EXPECT_THAT(terminal_.TakeWritten(), HasSubstr("100 %"));
  Wait(1);
  dialog->SetBarPosition(-5);
  EXPECT_THAT(terminal_.TakeWritten(), HasSubstr(" 0 %"));
}

TEST_F(TerminalUi, RangeNeedNotStartAtZero) {
  ProgressDialogLayout layout = Layout();
  layout.barMinimum = 50;
  layout.barMaximum = 150;
  const auto dialog = ShowDialog(layout);
  EXPECT_EQ(dialog->BarMaximum(), 150);
  Wait(1);
  dialog->SetBarPosition(75);
  EXPECT_THAT(terminal_.written, HasSubstr(" 25 %"));
}

TEST_F(TerminalUi, EmptyRangeStaysAtTheStart) {
  ProgressDialogLayout layout = Layout();
  layout.barMaximum = 0;
  const auto dialog = ShowDialog(layout);
  Wait(1);
  dialog->SetBarPosition(7);
  EXPECT_THAT(terminal_.written, HasSubstr(" 0 %"));
}

TEST_F(TerminalUi, IsNotRedrawnFasterThanItCanBeSeen) {
  const auto dialog = ShowDialog();
  terminal_.TakeWritten();
  for (int position = 1; position <= 100; ++position) {
    Wait(0.0001);
    dialog->SetBarPosition(position);
  }
  EXPECT_THAT(terminal_.TakeWritten(), IsEmpty());
  Wait(0.05);
  userInterface_.ProcessMessages();
  EXPECT_THAT(terminal_.TakeWritten(), HasSubstr("100 %"));
}

TEST_F(TerminalUi, IsNotRedrawnWhileTheTerminalTakesNothing) {
  const auto dialog = ShowDialog();
  terminal_.TakeWritten();
  terminal_.ready = false;
  Wait(1);
  dialog->SetBarPosition(42);
  EXPECT_THAT(terminal_.TakeWritten(), IsEmpty());
  terminal_.ready = true;
  dialog->SetBarPosition(43);
  EXPECT_THAT(terminal_.TakeWritten(), HasSubstr(" 43 % "));
}

TEST_F(TerminalUi, TimeGoesOnWhileThePositionStands) {
  const auto dialog = ShowDialog();
  terminal_.TakeWritten();
  Wait(0.5);
  userInterface_.ProcessMessages();
  EXPECT_THAT(terminal_.TakeWritten(), IsEmpty()) << "nothing changed";
  Wait(0.6);
  userInterface_.ProcessMessages();
  EXPECT_THAT(terminal_.TakeWritten(), HasSubstr("0:01"));
}

TEST_F(TerminalUi, BarIsGoneAtTheEnd) {
  auto dialog = ShowDialog();
  terminal_.TakeWritten();
  dialog.reset();
  EXPECT_EQ(terminal_.TakeWritten(), "\r\x1b[K");
}

TEST_F(TerminalUi, BarIsGoneAfterAnException) {
  try {
    const auto dialog = ShowDialog();
    throw std::runtime_error("driver");
  } catch (const std::runtime_error&) {
    EXPECT_THAT(terminal_.written, EndsWith("\r\x1b[K"));
  }
}

TEST_F(TerminalUi, HiddenBarComesBackByItself) {
  const auto dialog = ShowDialog();
  terminal_.TakeWritten();
  userInterface_.HideProgress();
  EXPECT_EQ(terminal_.TakeWritten(), "\r\x1b[K");
  userInterface_.HideProgress();
  EXPECT_EQ(terminal_.TakeWritten(), "");
  userInterface_.ProcessMessages();
  EXPECT_THAT(terminal_.TakeWritten(), HasSubstr("Kurzschlusstest"));
}

TEST_F(TerminalUi, DialogThatWasNeverShownWritesNothing) {
  userInterface_.CreateProgressDialog(Layout())->SetBarPosition(50);
  EXPECT_THAT(terminal_.written, IsEmpty());
}

TEST_F(TerminalUi, ALogGetsALineEveryTenthOfTheWay) {
  terminal_.redraws = false;
  ProgressDialogLayout layout = Layout();
  layout.barMaximum = 64;
  {
    const auto dialog = ShowDialog(layout);
    for (int position = 0; position <= 64; ++position) {
      Wait(0.25);
      dialog->SetBarPosition(position);
    }
  }
  EXPECT_EQ(terminal_.written,
            "Kurzschlusstest: 10 %, 0:02\n"
            "Kurzschlusstest: 21 %, 0:03\n"
            "Kurzschlusstest: 32 %, 0:05\n"
            "Kurzschlusstest: 43 %, 0:07\n"
            "Kurzschlusstest: 54 %, 0:09\n"
            "Kurzschlusstest: 65 %, 0:10\n"
            "Kurzschlusstest: 76 %, 0:12\n"
            "Kurzschlusstest: 87 %, 0:14\n"
            "Kurzschlusstest: 98 %, 0:16\n"
            "Kurzschlusstest: 100 %, 0:16, ended\n");
}

TEST_F(TerminalUi, ALogGetsNotMoreThanALineASecond) {
  terminal_.redraws = false;
  const auto dialog = ShowDialog();
  for (int position = 0; position <= 100; position += 10) {
    Wait(0.25);
    dialog->SetBarPosition(position);
  }
  EXPECT_EQ(terminal_.written,
            "Kurzschlusstest: 30 %, 0:01\n"
            "Kurzschlusstest: 70 %, 0:02\n");
}

TEST_F(TerminalUi, ALogOfAShortRunGetsNothing) {
  terminal_.redraws = false;
  {
    const auto dialog = ShowDialog();
    dialog->SetBarPosition(100);
  }
  EXPECT_THAT(terminal_.written, IsEmpty());
}

TEST_F(TerminalUi, SilentShowsNoBar) {
  TerminalUserInterface silent(terminal_, ProgressStyle::Silent, [this] { return now_; });
  {
    const auto dialog = silent.CreateProgressDialog(Layout());
    dialog->Show();
    EXPECT_TRUE(dialog->Visible());
    Wait(100);
    dialog->SetBarPosition(50);
    silent.ProcessMessages();
  }
  EXPECT_THAT(terminal_.written, IsEmpty());
}

TEST_F(TerminalUi, HasNoWindows) {
  const auto dialog = ShowDialog();
  EXPECT_EQ(dialog->Handle(), 0U);
  EXPECT_THAT(userInterface_.DisableTaskWindows(0), IsEmpty());
  EXPECT_EQ(dialog->GetModalResult(), mrNone);
}

class TerminalQuestion : public TerminalUi {
 protected:
  int Ask() {
    return userInterface_.ShowMessage({"Nahe am Schwellwert.", MessageKind::Warning, {mrCancel, mrIgnore}});
  }
};

TEST_F(TerminalQuestion, IsAskedUntilItIsAnswered) {
  terminal_.answers = {"", "vielleicht", "i"};
  EXPECT_EQ(Ask(), mrIgnore);
  EXPECT_EQ(terminal_.written,
            "Nahe am Schwellwert.\n"
            "[c] Cancel, [i] Ignore: [c] Cancel, [i] Ignore: [c] Cancel, [i] Ignore: ");
}

TEST_F(TerminalQuestion, WithoutAnAnswerIsClosed) {
  EXPECT_EQ(Ask(), mrCancel);
  EXPECT_THAT(terminal_.written, EndsWith("[c] Cancel, [i] Ignore: \n"));
}

TEST_F(TerminalQuestion, WithNobodyToAskIsClosedAndSaysSo) {
  terminal_.asks = false;
  terminal_.answers = {"i"};
  EXPECT_EQ(Ask(), mrCancel);
  EXPECT_EQ(terminal_.written, "Nahe am Schwellwert.\n(nobody to ask, answered: Cancel)\n");
}

TEST_F(TerminalQuestion, StartsOnACleanLine) {
  const auto dialog = ShowDialog();
  terminal_.TakeWritten();
  terminal_.answers = {"cancel"};
  EXPECT_EQ(Ask(), mrCancel);
  EXPECT_THAT(terminal_.written, testing::StartsWith("\r\x1b[KNahe am Schwellwert.\n"));
}

TEST_F(TerminalQuestion, ShowsNoControlCharacters) {
  EXPECT_EQ(userInterface_.ShowMessage({"Karte\x1b[2J 2", MessageKind::Information, {mrOk}}), mrOk);
  EXPECT_EQ(terminal_.written, "Karte?[2J 2\n");
}

TEST_F(TerminalQuestion, WithOneButtonIsNone) {
  EXPECT_EQ(userInterface_.ShowMessage({"Fertig.", MessageKind::Information, {mrOk}}), mrOk);
  EXPECT_EQ(terminal_.written, "Fertig.\n");
}

}  // namespace
}  // namespace kxbench
