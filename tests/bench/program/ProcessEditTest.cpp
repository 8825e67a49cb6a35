#include "tests/bench/program/ProcessFixture.h"

/// edit: the command's own dialog, through its own Edit operation.

namespace {

class KxbenchEdit : public KxbenchProcess {};

TEST_F(KxbenchEdit, ConfirmedPrintsTheCall) {
  environment_["FAKE_UI"] = "1";
#ifdef _WIN32
  const std::string name = "a '1'.dat";
  const std::string shown = "\"a '1'.dat\"";
#else
  const std::string name = "a \"1\".dat";
  const std::string shown = "\"a \"\"1\"\".dat\"";
#endif
  Does(name, "");
  const ProcessResult result = Run({"edit", name});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "ShortTest(\"edited.dat\")\n");
  EXPECT_EQ(result.errors, "windows started\nwindow: " + shown + "\nwindows ended\n");
}

TEST_F(KxbenchEdit, OffersAFileThatDoesNotExistAsANewOne) {
  environment_["FAKE_UI"] = "1";
  const ProcessResult result = Run({"edit", "new.dat"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors,
            "windows started\nkxbench: new.dat does not exist: OK makes it\n"
            "opened empty\nwindow: \"new.dat\"\nwindows ended\n");
}

TEST_F(KxbenchEdit, NewFileNeedsAFolder) {
  const ProcessResult result = Run({"edit", "none/new.dat"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors,
            "kxbench: none/new.dat: there is no folder " + (folder_.Path() / "none").string() + "\n");
}

TEST_F(KxbenchEdit, Cancelled) {
  Does("a.dat", "");
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
  Does("broken.dat", "");
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
