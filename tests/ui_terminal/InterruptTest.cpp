#include <gtest/gtest.h>

#include <csignal>

#include "ui_terminal/Interrupt.h"

namespace kxbench {
namespace {

TEST(InterruptWatch, NotesCtrlC) {
  const InterruptWatch watch;
  EXPECT_FALSE(InterruptWatch::Interrupted());
  std::raise(SIGINT);
  EXPECT_TRUE(InterruptWatch::Interrupted());
}

#ifndef _WIN32

class InterruptWatchSignal : public testing::TestWithParam<int> {};

TEST_P(InterruptWatchSignal, IsNoted) {
  const InterruptWatch watch;
  std::raise(GetParam());
  EXPECT_TRUE(InterruptWatch::Interrupted());
  std::raise(GetParam());  // the second does not end the program either
}

INSTANTIATE_TEST_SUITE_P(Signals, InterruptWatchSignal, testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST(InterruptWatch, LeavesHangUpIgnoredForNohup) {
  std::signal(SIGHUP, SIG_IGN);
  {
    const InterruptWatch watch;
    std::raise(SIGHUP);
    EXPECT_FALSE(InterruptWatch::Interrupted());
  }
  EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), SIG_IGN);
}

TEST(InterruptWatch, WritingIntoAClosedPipeDoesNotEndTheProgram) {
  const InterruptWatch watch;
  std::raise(SIGPIPE);
  EXPECT_FALSE(InterruptWatch::Interrupted());
}

TEST(InterruptWatch, GivesTheEarlierTreatmentBack) {
  { const InterruptWatch watch; }
  EXPECT_EQ(std::signal(SIGTERM, SIG_DFL), SIG_DFL);
}

#endif

TEST(InterruptWatch, StartsAfresh) {
  {
    const InterruptWatch watch;
    std::raise(SIGINT);
  }
  const InterruptWatch watch;
  EXPECT_FALSE(InterruptWatch::Interrupted());
}

}  // namespace
}  // namespace kxbench
