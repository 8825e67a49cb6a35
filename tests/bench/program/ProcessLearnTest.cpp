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

TEST_F(KxbenchLearn, Failed) {
  environment_["FAKE_LEARN"] = "failed";
  const ProcessResult result = Run({"learn", "new.dat"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "kxbench: learn new.dat: Konnte Anzahl Kanäle nicht ermitteln.\n");
}

}  // namespace
