#include <gtest/gtest.h>

#include <csignal>

#ifdef _WIN32
#include <windows.h>

#include <chrono>
#include <thread>
#endif

#include "ui/terminal/Interrupt.h"

namespace kxbench {
namespace {

#ifdef _WIN32

// Ctrl-C reaches every program of a console, so this one gets a console of its own first. The system tells
// the program on another thread.
void PressCtrlC() {
  FreeConsole();
  ASSERT_TRUE(AllocConsole()) << GetLastError();
  SetConsoleCtrlHandler(nullptr, FALSE);  // whoever started this program may have had Ctrl-C ignored
  ASSERT_TRUE(GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0)) << GetLastError();
  const auto patience = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!InterruptWatch::Interrupted() && std::chrono::steady_clock::now() < patience) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

#else

void PressCtrlC() { std::raise(SIGINT); }

#endif

TEST(InterruptWatch, NotesCtrlC) {
  const InterruptWatch watch;
  EXPECT_FALSE(InterruptWatch::Interrupted());
  PressCtrlC();
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

TEST(InterruptWatch, TheSecondInsists) {
  const InterruptWatch watch;
  InterruptWatch::Interrupt();
  EXPECT_TRUE(InterruptWatch::Interrupted());
  EXPECT_FALSE(InterruptWatch::Insisted());
  InterruptWatch::Interrupt();
  EXPECT_TRUE(InterruptWatch::Insisted());
}

TEST(InterruptWatch, StartsAfresh) {
  {
    const InterruptWatch watch;
    PressCtrlC();
    ASSERT_TRUE(InterruptWatch::Interrupted());
  }
  const InterruptWatch watch;
  EXPECT_FALSE(InterruptWatch::Interrupted());
}

}  // namespace
}  // namespace kxbench
