#include <gmock/gmock.h>

#include "bench/program/host/HostHelp.h"
#include "bench/program/host/HostSetup.h"
#include "tests/support/CallLog.h"
#include "tests/support/FakeUserInterface.h"

namespace kxbench {
namespace {

using shorttest::testkit::CallLog;
using shorttest::testkit::FakeUserInterface;
using ::testing::HasSubstr;

class HelpOfTheHost : public testing::Test {
 protected:
  HelpOfTheHost() { SetApplication(&ui); }
  ~HelpOfTheHost() override { SetApplication(nullptr); }

  // What the button shows for a topic.
  MessageBoxRequest Shown(int topic) {
    TKXHelpButton button;
    button.SetHelpContext(topic);
    button.Click();
    return ui.Boxes().back();
  }

  CallLog log;
  FakeUserInterface ui{log};
  HostSetup host{CommonOptions{}, ""};
};

TEST_F(HelpOfTheHost, TellsAboutTheTextsOfTheEditor) {
  const MessageBoxRequest box = Shown(140);
  EXPECT_THAT(box.text, HasSubstr("Soll-Verbindungen: je Zeile eine Gruppe verbundener Kanäle"));
  EXPECT_EQ(box.kind, MessageKind::Information);
  EXPECT_EQ(box.helpContext, 140);
}

TEST_F(HelpOfTheHost, SaysWhenThereIsNone) { EXPECT_EQ(Shown(7).text, "Zum Thema 7 gibt es keine Hilfe."); }

}  // namespace
}  // namespace kxbench
