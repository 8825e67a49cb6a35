#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <system_error>

#include "bench/program/system/ExitStatus.h"
#include "bench/program/system/Failure.h"
#include "bench/program/system/Guard.h"
#include "bench/program/system/GuardWords.h"
#include "bench/program/system/System.h"
#include "ui/terminal/Interrupt.h"
#include "ui/terminal/Terminal.h"

namespace kxbench {

namespace {

/// Far more than opening all relays takes. A driver that hangs must not hang the guard.
constexpr std::time_t LongestOpeningSeconds = 10;

/// The working process's end of the pipe to the guard.
int toGuard = -1;

struct GuardPipe {
  GuardPipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
      throw Failure("cannot set up the guard: " + std::generic_category().message(errno));
    reading = ends[0];
    writing = ends[1];
  }
  int reading;
  int writing;
};

void WriteAll(int descriptor, const std::string& text) {
  for (std::size_t done = 0; done < text.size();) {
    const ssize_t count = write(descriptor, text.data() + done, text.size() - done);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;  // nobody is there to be told
    done += static_cast<std::size_t>(count);
  }
}

/// What lies in the pipe. Does not wait for its end: a process that the toolkit left behind may hold it open.
std::string ReadWaiting(int descriptor) {
  std::string text;
  std::array<char, 4096> buffer{};
  fcntl(descriptor, F_SETFL, O_NONBLOCK);
  for (ssize_t count = 0; (count = read(descriptor, buffer.data(), buffer.size())) > 0;)
    text.append(buffer.data(), static_cast<std::size_t>(count));
  return text;
}

/// The signals that the guard waits for, held back from before the split on, so that none gets lost. What the
/// program was started with ignored stays so.
class GuardSignals {
 public:
  GuardSignals() {
    signal(SIGCHLD, SIG_DFL);  // ignored, the system would keep no exit status
    sigemptyset(&set_);
    sigaddset(&set_, SIGCHLD);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
      struct sigaction treatment = {};
      sigaction(number, nullptr, &treatment);
      if (treatment.sa_handler != SIG_IGN) sigaddset(&set_, number);
    }
    sigprocmask(SIG_BLOCK, &set_, &before_);
  }
  void Release() const { sigprocmask(SIG_SETMASK, &before_, nullptr); }
  const sigset_t& Set() const { return set_; }

 private:
  sigset_t set_;
  sigset_t before_;
};

/// Waits for the end of `child` and hands on to it what was sent to the guard alone. What the terminal sends,
/// it sends to both.
int EndOfWork(pid_t child, const GuardSignals& signals) {
  for (;;) {
    siginfo_t info = {};
    const int number = sigwaitinfo(&signals.Set(), &info);
    int status = 0;
    if (number == SIGCHLD && waitpid(child, &status, WNOHANG) == child) return status;
    const bool sentByAProcess = info.si_code <= 0;
    if (number > 0 && number != SIGCHLD && sentByAProcess) kill(child, number);
  }
}

/// Waits for the end of `child`, and ends it when that takes too long. False then.
bool EndOfOpening(pid_t child, const GuardSignals& signals) {
  timespec deadline = {};
  clock_gettime(CLOCK_MONOTONIC, &deadline);
  deadline.tv_sec += LongestOpeningSeconds;
  for (;;) {
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    const timespec left = {std::max<std::time_t>(0, deadline.tv_sec - now.tv_sec), 1000000};
    sigtimedwait(&signals.Set(), nullptr, &left);
    if (waitpid(child, nullptr, WNOHANG) == child) return true;
    if (now.tv_sec < deadline.tv_sec) continue;
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    return false;
  }
}

/// Opens all relays in a process of its own: a driver that has failed once may fail again. Empty when it went
/// well, else what went wrong.
std::string OpenInAProcess(const GuardNews& news, const GuardSignals& signals) {
  const GuardPipe result;
  const pid_t child = fork();
  if (child < 0) return "cannot start a process: " + std::generic_category().message(errno);
  if (child == 0) {
    // The signals stay held back: nothing shall keep it from its end.
    WriteAll(result.writing, OpenEveryRelay(news) + "\n");
    std::exit(0);  // the driver's own clean-up runs
  }
  if (!EndOfOpening(child, signals)) return "the driver does not answer";
  const std::string answer = ReadWaiting(result.reading);
  return answer.empty() ? "the driver ended the process that was to open them" : OneLine(answer);
}

std::string HowItEnded(int status) {
  if (WIFEXITED(status))
    return "the program ended in the middle of its work (exit status " + std::to_string(WEXITSTATUS(status)) +
           ")";
  const int number = WTERMSIG(status);
  return "the program was ended by signal " + std::to_string(number) + " (" + strsignal(number) + ")";
}

/// The guard's whole life; the program's exit status.
int Guard(pid_t child, int news, const GuardSignals& signals) {
  const int status = EndOfWork(child, signals);
  const GuardNews said = ReadNews(ReadWaiting(news));
  if (said.done && WIFEXITED(status)) return WEXITSTATUS(status);
  const std::string failure = said.done || said.driver.empty() ? "" : OpenInAProcess(said, signals);
  signals.Release();
  const std::string line = said.done ? HowItEnded(status) + ": every relay was open"
                                     : GuardLine(HowItEnded(status), said.driver, failure);
  const auto terminal = OpenTerminal();
  terminal->Write((terminal->CanRedraw() ? "\r\x1b[K" : "") + ("kxbench: " + line) + "\n");
  return static_cast<int>(ExitStatus::Failed);
}

/// Lets the working process end as on SIGTERM when the pipe that the guard holds open closes.
void WatchGuard(int fromGuard) {
  StartUnsignalled([fromGuard] {
    pollfd end = {fromGuard, POLLIN, 0};
    if (poll(&end, 1, -1) > 0) kill(getpid(), SIGTERM);
  });
}

}  // namespace

void EnterGuard() {
  if (toGuard >= 0) return;
  const GuardPipe news;
  const GuardPipe life;
  const GuardSignals signals;
  const pid_t child = fork();
  if (child < 0) {
    signals.Release();
    throw Failure("cannot set up the guard: " + std::generic_category().message(errno));
  }
  if (child > 0) {
    close(news.writing);
    close(life.reading);
    std::exit(Guard(child, news.reading, signals));
  }
  signals.Release();
  close(news.reading);
  close(life.writing);
  toGuard = news.writing;
  WatchGuard(life.reading);
}

void TellGuardOfDriver() {
  if (toGuard < 0) return;
  if (const auto driver = LoadedLibrary(DriverLibraryName())) {
    WriteAll(toGuard, DriverMessage(Utf8FromPath(*driver)));
  }
}

void SendToGuard(const std::string& message) {
  if (toGuard >= 0) WriteAll(toGuard, message);
}

}  // namespace kxbench
