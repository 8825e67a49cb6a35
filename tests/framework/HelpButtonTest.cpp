#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "framework/kxcomponents.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ReadBoxes : public UserInterface {
 public:
  void ProcessMessages() override {}
  int ShowMessage(const MessageBoxRequest& request) override {
    texts.push_back(request.text);
    return mrOk;
  }
  std::unique_ptr<ProgressDialog> CreateProgressDialog(const ProgressDialogLayout&) override {
    return nullptr;
  }
  TaskWindowList DisableTaskWindows(WindowHandle) override { return {}; }
  void EnableTaskWindows(const TaskWindowList&) override {}

  std::vector<std::string> texts;
};

class AskedHelp : public TKXHelpSystem {
 public:
  void ShowTopic(int helpContext) override { topics.push_back(helpContext); }

  std::vector<int> topics;
};

class HelpButton : public testing::Test {
 protected:
  HelpButton() {
    SetApplication(&boxes);
    button.SetHelpContext(140);
  }
  ~HelpButton() override {
    SetHelpSystem(nullptr);
    SetApplication(nullptr);
  }

  ReadBoxes boxes;
  AskedHelp help;
  TKXHelpButton button;
};

TEST_F(HelpButton, HasNoTopicAtFirst) { EXPECT_EQ(TKXHelpButton().HelpContext(), 0); }

TEST_F(HelpButton, AsksTheHostsHelpForItsTopic) {
  SetHelpSystem(&help);
  button.Click();
  EXPECT_THAT(help.topics, ElementsAre(140));
  EXPECT_THAT(boxes.texts, IsEmpty());
}

TEST_F(HelpButton, SaysWhenTheHostHasNoHelp) {
  SetHelpSystem(&help);
  SetHelpSystem(nullptr);
  button.Click();
  EXPECT_THAT(help.topics, IsEmpty());
  EXPECT_THAT(boxes.texts, ElementsAre("Zum Thema 140 gibt es keine Hilfe."));
}

}  // namespace
