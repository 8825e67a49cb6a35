#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/terminal/SupervisedUserInterface.h"

namespace kxbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Windows in memory: counts what it was asked for.
class RecordingUserInterface : public UserInterface {
 public:
  struct Dialog : ProgressDialog {
    explicit Dialog(RecordingUserInterface& userInterface) : owner(userInterface) {}
    void Show() override { shown = true; }
    bool Visible() const override { return shown; }
    int GetModalResult() const override { return owner.modalResult; }
    int BarMaximum() const override { return 100; }
    void SetBarPosition(int position) override { owner.positions.push_back(position); }
    WindowHandle Handle() const override { return 77; }
    RecordingUserInterface& owner;
    bool shown = false;
  };

  void ProcessMessages() override { ++processed; }
  int ShowMessage(const MessageBoxRequest& request) override {
    asked.push_back(request.text);
    return mrAbort;
  }
  std::unique_ptr<ProgressDialog> CreateProgressDialog(const ProgressDialogLayout&) override {
    return std::make_unique<Dialog>(*this);
  }
  TaskWindowList DisableTaskWindows(WindowHandle except) override { return {except, 1, 2}; }
  void EnableTaskWindows(const TaskWindowList& windows) override { enabled = windows; }

  int processed = 0;
  int modalResult = mrNone;
  std::vector<int> positions;
  std::vector<std::string> asked;
  TaskWindowList enabled;
};

class Supervised : public testing::Test {
 protected:
  std::unique_ptr<ProgressDialog> ShowDialog(int buttonResult = mrCancel) {
    ProgressDialogLayout layout{};
    layout.buttonResult = buttonResult;
    auto dialog = userInterface_.CreateProgressDialog(layout);
    dialog->Show();
    return dialog;
  }

  Supervision Decisions(std::optional<int> answer = std::nullopt) {
    return {[this] { return interrupted_; }, answer,
            [this](const std::string& text) { warnings_.push_back(text); }};
  }

  bool interrupted_ = false;
  std::vector<std::string> warnings_;
  RecordingUserInterface inner_;
  SupervisedUserInterface userInterface_{inner_, Decisions()};
};

TEST_F(Supervised, InterruptPressesTheButtonAtTheNextProcessMessages) {
  const auto dialog = ShowDialog();
  userInterface_.ProcessMessages();
  EXPECT_EQ(dialog->GetModalResult(), mrNone);
  interrupted_ = true;
  EXPECT_EQ(dialog->GetModalResult(), mrNone) << "not before messages are processed";
  userInterface_.ProcessMessages();
  EXPECT_EQ(dialog->GetModalResult(), mrCancel);
  EXPECT_TRUE(dialog->Visible()) << "the button leaves the dialog open";
}

TEST_F(Supervised, ButtonGivesItsOwnResult) {
  const auto dialog = ShowDialog(mrAbort);
  interrupted_ = true;
  userInterface_.ProcessMessages();
  EXPECT_EQ(dialog->GetModalResult(), mrAbort);
}

TEST_F(Supervised, InterruptBeforeTheDialogStopsItToo) {
  interrupted_ = true;
  const auto dialog = ShowDialog();
  EXPECT_EQ(dialog->GetModalResult(), mrNone);
  userInterface_.ProcessMessages();
  EXPECT_EQ(dialog->GetModalResult(), mrCancel);
}

TEST_F(Supervised, ThePressedButtonOfTheDialogItselfWins) {
  const auto dialog = ShowDialog(mrAbort);
  inner_.modalResult = mrCancel;
  interrupted_ = true;
  userInterface_.ProcessMessages();
  EXPECT_EQ(dialog->GetModalResult(), mrCancel);
}

TEST_F(Supervised, EverythingElseGoesThrough) {
  const auto dialog = ShowDialog();
  dialog->SetBarPosition(12);
  userInterface_.ProcessMessages();
  EXPECT_THAT(inner_.positions, ElementsAre(12));
  EXPECT_EQ(inner_.processed, 1);
  EXPECT_EQ(dialog->BarMaximum(), 100);
  EXPECT_EQ(dialog->Handle(), 77U);
  const TaskWindowList disabled = userInterface_.DisableTaskWindows(9);
  EXPECT_THAT(disabled, ElementsAre(9, 1, 2));
  userInterface_.EnableTaskWindows(disabled);
  EXPECT_EQ(inner_.enabled, disabled);
}

TEST_F(Supervised, QuestionsAreAskedWithoutAnAnswer) {
  EXPECT_EQ(userInterface_.ShowMessage({"Frage", MessageKind::Information, {mrCancel, mrIgnore}}), mrAbort);
  EXPECT_THAT(inner_.asked, ElementsAre("Frage"));
  EXPECT_THAT(warnings_, IsEmpty());
}

TEST_F(Supervised, AnswerInAdvanceIsGivenWithAWarning) {
  SupervisedUserInterface answering(inner_, Decisions(mrIgnore));
  EXPECT_EQ(answering.ShowMessage({"Frage", MessageKind::Information, {mrCancel, mrIgnore}}), mrIgnore);
  EXPECT_THAT(inner_.asked, IsEmpty());
  EXPECT_THAT(warnings_, ElementsAre("Frage (answered: Ignore)"));
}

TEST_F(Supervised, AnswerThatIsNotOfferedIsNotGiven) {
  SupervisedUserInterface answering(inner_, Decisions(mrIgnore));
  EXPECT_EQ(answering.ShowMessage({"Fertig", MessageKind::Information, {mrOk}}), mrAbort);
  EXPECT_THAT(inner_.asked, ElementsAre("Fertig"));
}

}  // namespace
}  // namespace kxbench
