#include "tests/bench/program/ProcessFixture.h"

/// learn, as far as the program goes: the request, the question, the summary. The module is a fake.

namespace {

using testing::EndsWith;
using testing::HasSubstr;

class KxbenchLearn : public KxbenchProcess {};

TEST_F(KxbenchLearn, HandsTheOptionsOverAndPrintsTheSummary) {
  const ProcessResult result = Run({"learn", "new.dat", "--channels", "3-96", "--threshold", "4,5",
                                    "--voltage-control", "1", "--near-threshold", "ignore"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, HasSubstr("Learned 94 channels into new.dat\n"));
  EXPECT_THAT(result.output, HasSubstr("3 to 96\n"));
  EXPECT_THAT(result.output, HasSubstr("1 (4.5 V)\n"));
}

TEST_F(KxbenchLearn, WithNobodyToAskIgnoresWithAWarning) {
  const ProcessResult result = Run({"learn", "new.dat"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "kxbench: warning: Nahe am Schwellwert. (answered: Ignore)\n");
}

TEST_F(KxbenchLearn, CancelsAtAResistanceNearTheThresholdWhenTold) {
  const ProcessResult result = Run({"learn", "new.dat", "--near-threshold", "cancel"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.errors, EndsWith("kxbench: learn new.dat: cancelled, nothing was saved\n"));
}

TEST_F(KxbenchLearn, CannotAskWithoutATerminal) {
  const ProcessResult result = Run({"learn", "new.dat", "--near-threshold", "ask"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "kxbench: --near-threshold ask: there is no terminal to ask on\n");
}

TEST_F(KxbenchLearn, AsksInAWindow) {
  environment_["FAKE_UI"] = "5";
  const ProcessResult result = Run({"learn", "new.dat", "--progress", "window", "--near-threshold", "ask"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.errors, HasSubstr("window: Nahe am Schwellwert.\n"));
}

TEST_F(KxbenchLearn, Cancelled) {
  environment_["FAKE_LEARN"] = "cancelled";
  EXPECT_EQ(Run({"learn", "new.dat"}).status, 3);
}

TEST_F(KxbenchLearn, TellsOfChangesBeforeTheSummary) {
  environment_["FAKE_LEARN"] = "changed";
  folder_.Write("new.ini", "[Scanner]\nRelais2=B1\n");
  const ProcessResult result = Run({"learn", "new.dat", "--near-threshold", "ignore"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.errors, testing::StartsWith("kxbench: new.dat: 1 of 1 pair of the channels 1 to 2 "
                                                 "differs from the expectation that is replaced\n"
                                                 "kxbench:   1 - 2 (B1): open, was connected\n"));
}

TEST_F(KxbenchLearn, DamagedFileNeedsChannels) {
  environment_["FAKE_LEARN"] = "damaged";
  const ProcessResult result = Run({"learn", "old.dat", "--overwrite"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors,
            "kxbench: old.dat is damaged (there is no START); a new one in its place needs --channels "
            "FIRST-LAST\n");
}

TEST_F(KxbenchLearn, DamagedFileIsNotReplacedWithoutAWord) {
  environment_["FAKE_LEARN"] = "damaged";
  const ProcessResult result = Run({"learn", "old.dat", "--channels", "1-2"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors,
            "kxbench: old.dat is damaged (there is no START); a new one in its place needs --overwrite\n");
}

TEST_F(KxbenchLearn, DamagedFileIsReplacedWithOverwrite) {
  environment_["FAKE_LEARN"] = "damaged";
  EXPECT_EQ(Run({"learn", "old.dat", "--channels", "1-2", "--overwrite"}).status, 0);
}

TEST_F(KxbenchLearn, DamagedFileIsReplacedAfterAQuestion) {
  environment_["FAKE_LEARN"] = "damaged";
  environment_["FAKE_UI"] = "1";
  const ProcessResult result = Run({"learn", "old.dat", "--channels", "1-2", "--progress", "window"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.errors, HasSubstr("Replace it by a new expectation, of which nothing old is kept?"));
}

TEST_F(KxbenchLearn, DamagedFileStaysWhenTheQuestionIsRefused) {
  environment_["FAKE_LEARN"] = "damaged";
  environment_["FAKE_UI"] = "3";
  const ProcessResult result = Run({"learn", "old.dat", "--channels", "1-2", "--progress", "window"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.errors, HasSubstr("learn old.dat: cancelled, nothing was saved"));
}

TEST_F(KxbenchLearn, WithoutADeviceTheLineNamesTheOption) {
  environment_["FAKE_LEARN"] = "no device";
  EXPECT_EQ(Run({"learn", "new.dat"}).errors,
            "kxbench: learn new.dat: BRENMOR_DEVICE is not set; --device FILE gives it\n");
}

TEST_F(KxbenchLearn, FindsOutFirstThatItCannotSave) {
  environment_["FAKE_LEARN"] = "failed";
  const ProcessResult folder = Run({"learn", "none/new.dat"});
  EXPECT_EQ(folder.status, 2);
  EXPECT_EQ(folder.errors, "kxbench: none/new.dat cannot be saved: there is no folder " +
                               (folder_.Path() / "none").string() + "\n");
  EXPECT_EQ(Run({"learn", "."}).errors, "kxbench: . cannot be saved: this is a folder\n");
}

TEST_F(KxbenchLearn, LeavesNothingBehindWhereItCouldSave) {
  environment_["FAKE_LEARN"] = "failed";
  Run({"learn", "new.dat"});
  EXPECT_TRUE(std::filesystem::is_empty(folder_.Path()));
}

TEST_F(KxbenchLearn, Failed) {
  environment_["FAKE_LEARN"] = "failed";
  const ProcessResult result = Run({"learn", "new.dat"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "kxbench: learn new.dat: Konnte Anzahl Kanäle nicht ermitteln.\n");
}

}  // namespace
