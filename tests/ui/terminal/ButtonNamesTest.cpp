#include <gtest/gtest.h>

#include "contracts/UserInterface.h"
#include "ui/terminal/ButtonNames.h"

namespace kxbench {
namespace {

TEST(ButtonPrompt, ListsTheButtonsInOrder) {
  EXPECT_EQ(ButtonPrompt({mrCancel, mrIgnore}), "[c] Cancel, [i] Ignore: ");
}

TEST(ButtonOfAnswer, TakesLetterAndName) {
  const std::vector<int> buttons = {mrCancel, mrIgnore};
  EXPECT_EQ(ButtonOfAnswer(buttons, "i"), mrIgnore);
  EXPECT_EQ(ButtonOfAnswer(buttons, " CANCEL \r"), mrCancel);
}

TEST(ButtonOfAnswer, TakesNothingElse) {
  const std::vector<int> buttons = {mrCancel, mrIgnore};
  EXPECT_EQ(ButtonOfAnswer(buttons, ""), std::nullopt);
  EXPECT_EQ(ButtonOfAnswer(buttons, "ig"), std::nullopt);
  EXPECT_EQ(ButtonOfAnswer(buttons, "o"), std::nullopt) << "OK is not offered";
}

TEST(ClosingButton, IsCancelElseTheLast) {
  EXPECT_EQ(ClosingButton({mrIgnore, mrCancel, mrAbort}), mrCancel);
  EXPECT_EQ(ClosingButton({mrOk, mrIgnore}), mrIgnore);
  EXPECT_EQ(ClosingButton({mrOk}), mrOk);
  EXPECT_EQ(ClosingButton({}), mrCancel);
}

}  // namespace
}  // namespace kxbench
