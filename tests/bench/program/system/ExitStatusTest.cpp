#include <gtest/gtest.h>

#include "bench/program/system/ExitStatus.h"

namespace kxbench {
namespace {

using enum ExitStatus;

TEST(ExitStatus, NumbersAreWhatScriptsRelyOn) {
  EXPECT_EQ(static_cast<int>(NoFindings), 0);
  EXPECT_EQ(static_cast<int>(Findings), 1);
  EXPECT_EQ(static_cast<int>(Failed), 2);
  EXPECT_EQ(static_cast<int>(Cancelled), 3);
}

TEST(ExitStatus, FailureGoesBeforeCancelBeforeFindings) {
  EXPECT_EQ(Graver(Findings, NoFindings), Findings);
  EXPECT_EQ(Graver(Findings, Cancelled), Cancelled);
  EXPECT_EQ(Graver(Cancelled, Findings), Cancelled);
  EXPECT_EQ(Graver(Cancelled, Failed), Failed);
  EXPECT_EQ(Graver(Failed, Cancelled), Failed);
  EXPECT_EQ(Graver(NoFindings, NoFindings), NoFindings);
}

}  // namespace
}  // namespace kxbench
