#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "ui/terminal/Interrupt.h"
#include "ui/terminal/Terminal.h"

/// The system's terminal, on a terminal: each test runs its part in a child process that has one.

namespace kxbench {
namespace {

/// What a program on a terminal writes, and the status it ends with.
struct Session {
  std::string output;
  int status;
};

/// Runs `program` in a child process on a terminal of 100 columns and types `input` into it.
template <typename Program>
Session OnATerminal(const std::string& input, Program program) {
  int master = -1;
  winsize size = {};
  size.ws_row = 25;
  size.ws_col = 100;
  const pid_t child = forkpty(&master, nullptr, nullptr, &size);
  if (child == 0) {
    setenv("TERM", "xterm", 1);
    _exit(program());
  }
  EXPECT_EQ(write(master, input.data(), input.size()), static_cast<ssize_t>(input.size()));
  Session session{};
  char buffer[256];
  for (ssize_t count = 0; (count = read(master, buffer, sizeof buffer)) > 0;) {
    session.output.append(buffer, static_cast<std::size_t>(count));
  }
  waitpid(child, &session.status, 0);
  close(master);
  return session;
}

int ExitStatus(const Session& session) {
  return WIFEXITED(session.status) ? WEXITSTATUS(session.status) : -1;
}

TEST(SystemTerminal, ReadsOneLineAtATime) {
  const Session session = OnATerminal("first\nsecond\n", [] {
    const auto terminal = OpenTerminal();
    const bool both = terminal->ReadLine() == "first" && terminal->ReadLine() == "second";
    return both ? 0 : 1;
  });
  EXPECT_EQ(ExitStatus(session), 0);
}

TEST(SystemTerminal, KnowsWhatItCanDo) {
  const Session session = OnATerminal("", [] {
    const auto terminal = OpenTerminal();
    return terminal->CanRedraw() && terminal->CanAsk() && terminal->Columns() == 100 ? 0 : 1;
  });
  EXPECT_EQ(ExitStatus(session), 0);
}

TEST(SystemTerminal, ADumbOneCannotRedraw) {
  const Session session = OnATerminal("", [] {
    setenv("TERM", "dumb", 1);
    return OpenTerminal()->CanRedraw() ? 1 : 0;
  });
  EXPECT_EQ(ExitStatus(session), 0);
}

TEST(SystemTerminal, ShowsUnicodeWhereTheLocaleSaysSo) {
  const Session session = OnATerminal("", [] {
    unsetenv("LC_ALL");
    unsetenv("LC_CTYPE");
    setenv("LANG", "de_DE.UTF-8", 1);
    if (!OpenTerminal()->ShowsUnicode()) return 1;
    setenv("LC_ALL", "C", 1);
    return OpenTerminal()->ShowsUnicode() ? 2 : 0;
  });
  EXPECT_EQ(ExitStatus(session), 0);
}

TEST(SystemTerminal, CtrlCEndsTheWaitForAnAnswer) {
  // The terminal turns the character into the signal, once the watch stands.
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  int master = -1;
  const pid_t child = forkpty(&master, nullptr, nullptr, nullptr);
  if (child == 0) {
    const InterruptWatch watch;
    const bool told = write(ready[1], "r", 1) == 1;
    const bool answered = OpenTerminal()->ReadLine().has_value();
    _exit(told && !answered && InterruptWatch::Interrupted() ? 0 : 1);
  }
  char c = 0;
  ASSERT_EQ(read(ready[0], &c, 1), 1);
  ASSERT_EQ(write(master, "\x03", 1), 1);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
  close(master);
  close(ready[0]);
  close(ready[1]);
}

TEST(SystemTerminal, AnEarlierInterruptIsNotOverslept) {
  const Session session = OnATerminal("", [] {
    const InterruptWatch watch;
    std::raise(SIGINT);
    return OpenTerminal()->ReadLine().has_value() ? 1 : 0;
  });
  EXPECT_EQ(ExitStatus(session), 0);
}

TEST(SystemTerminal, WritesToStandardError) {
  const Session session = OnATerminal("", [] {
    OpenTerminal()->Write("Kanäle\n");
    return 0;
  });
  EXPECT_EQ(session.output, "Kanäle\r\n");
}

TEST(SystemTerminal, OneThatIsGoneIsPassedOver) {
  const pid_t child = fork();
  if (child == 0) {
    close(STDERR_FILENO);
    OpenTerminal()->Write("lost\n");
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

}  // namespace
}  // namespace kxbench
