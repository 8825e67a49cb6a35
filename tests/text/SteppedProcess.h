#pragma once

// Linux alone.

#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace text_test {

/// A process that does something and stops before and after each of its system calls.
class SteppedProcess {
 public:
  /// The process ends with what `action` returns as its status, 0 if that is nothing.
  template <typename Action>
  explicit SteppedProcess(Action action) : process_(fork()) {
    if (process_ == 0) {
      ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
      std::raise(SIGSTOP);
      if constexpr (std::is_void_v<decltype(action())>) {
        action();
        _exit(0);
      } else {
        _exit(action());
      }
    }
    waitpid(process_, &status_, 0);
    EXPECT_TRUE(WIFSTOPPED(status_)) << "cannot watch a process";
  }
  ~SteppedProcess() { Kill(); }
  SteppedProcess(const SteppedProcess&) = delete;
  SteppedProcess& operator=(const SteppedProcess&) = delete;

  bool Ended() const { return !WIFSTOPPED(status_); }

  /// What it ended with; -1 when it was killed. REQUIRES: Ended().
  int ExitStatus() const { return WIFEXITED(status_) ? WEXITSTATUS(status_) : -1; }

  /// Lets it run to its next stop.
  void Step() {
    EXPECT_EQ(ptrace(PTRACE_SYSCALL, process_, nullptr, nullptr), 0);
    EXPECT_EQ(waitpid(process_, &status_, 0), process_);
  }

  void Kill() {
    if (Ended()) return;
    kill(process_, SIGKILL);
    waitpid(process_, &status_, 0);
  }

 private:
  pid_t process_;
  int status_ = 0;
};

}  // namespace text_test
