#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>

#include "ui/terminal/Interrupt.h"
#include "ui/terminal/PatientTerminal.h"
#include "ui/terminal/Terminal.h"

namespace kxbench {

namespace {

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

/// Whether the user's character set is UTF-8, from the variables that say so, in their order of precedence.
bool LocaleIsUtf8() {
  for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    const std::string value = Environment(name);
    if (value.empty()) continue;
    return value.find("UTF-8") != std::string::npos || value.find("utf8") != std::string::npos;
  }
  return false;
}

/// Holds the interrupting signals back, so that none slips in between looking at the flag and waiting.
class SignalsHeld {
 public:
  SignalsHeld() {
    sigset_t held;
    sigemptyset(&held);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&held, signal);
    pthread_sigmask(SIG_BLOCK, &held, &before_);
  }
  ~SignalsHeld() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  SignalsHeld(const SignalsHeld&) = delete;
  SignalsHeld& operator=(const SignalsHeld&) = delete;

  const sigset_t& Before() const { return before_; }

 private:
  sigset_t before_;
};

/// Waits until standard input has something to read or has ended; false after an interrupt.
bool WaitForInput() {
  const SignalsHeld held;
  for (;;) {
    if (InterruptWatch::Interrupted()) return false;
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    const int ready = ppoll(&input, 1, nullptr, &held.Before());
    if (ready > 0) return true;
    if (ready < 0 && errno != EINTR) return false;
  }
}

class PosixTerminal : public Terminal {
 public:
  void Write(std::string_view text) override {
    while (!text.empty()) {
      const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) return;
      text.remove_prefix(static_cast<std::size_t>(written));
    }
  }

  void Draw(std::string_view text) override { Write(text); }
  bool Ready() const override { return true; }
  void Settle() override {}

  bool CanRedraw() const override { return isatty(STDERR_FILENO) == 1 && Environment("TERM") != "dumb"; }
  bool CanAsk() const override { return isatty(STDIN_FILENO) == 1 && isatty(STDERR_FILENO) == 1; }
  bool ShowsUnicode() const override { return LocaleIsUtf8(); }

  int Columns() const override {
    winsize size = {};
    const bool known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : 80;
  }

  std::optional<std::string> ReadLine() override {
    // Byte by byte: what follows the line is left for whoever reads next.
    std::string line;
    for (;;) {
      if (!WaitForInput()) return std::nullopt;
      char c = 0;
      const ssize_t count = ::read(STDIN_FILENO, &c, 1);
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) return std::nullopt;
      if (c == '\n') return line;
      line += c;
    }
  }
};

}  // namespace

std::unique_ptr<Terminal> OpenTerminal() {
  return std::make_unique<PatientTerminal>(std::make_unique<PosixTerminal>());
}

}  // namespace kxbench
