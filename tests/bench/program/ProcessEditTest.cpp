#include "tests/bench/program/ProcessFixture.h"

/// edit: the command's own dialog, through its own Edit operation.

namespace {

class KxbenchEdit : public KxbenchProcess {};

TEST_F(KxbenchEdit, ConfirmedPrintsTheCall) {
  environment_["FAKE_UI"] = "1";
  const ProcessResult result = Run({"edit", "a \"1\".dat"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "ShortTest(\"edited.dat\")\n");
  EXPECT_EQ(result.errors, "windows started\nwindow: \"a \"\"1\"\".dat\"\nwindows ended\n");
}

TEST_F(KxbenchEdit, Cancelled) {
  environment_["FAKE_UI"] = "2";
  const ProcessResult result = Run({"edit", "a.dat"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.output, "");
}

TEST_F(KxbenchEdit, WithoutAFileStartsEmpty) {
  environment_["FAKE_UI"] = "1";
  EXPECT_THAT(Run({"edit"}).errors, testing::HasSubstr("window: \n"));
}

TEST_F(KxbenchEdit, FailingDialog) {
  const ProcessResult result = Run({"edit", "broken.dat"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.errors, testing::EndsWith("kxbench: cannot read broken.dat\n"));
}

TEST_F(KxbenchEdit, NeedsADisplay) {
  environment_["FAKE_UI"] = "no-display";
  const ProcessResult result = Run({"edit", "a.dat"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "kxbench: cannot show windows: no display can be reached\n");
}

}  // namespace
