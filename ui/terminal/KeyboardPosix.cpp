#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "ui/terminal/Interrupt.h"
#include "ui/terminal/KeyDecoder.h"
#include "ui/terminal/Keyboard.h"

namespace kxbench {

namespace {

/// How often a terminal that is resized, or an interrupt that came just before the wait, is looked for.
constexpr int LookAroundMs = 250;

/// What follows an Escape of a function key follows at once.
constexpr int EscapeMs = 40;

class PosixKeyboard : public Keyboard {
 public:
  PosixKeyboard() : size_(Size()) {
    if (tcgetattr(STDIN_FILENO, &before_) != 0) return;
    termios raw = before_;
    raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | IEXTEN);
    raw.c_iflag &= ~static_cast<tcflag_t>(ICRNL | INLCR | IXON);
    // A program that is stopped, or dumps its core, keeps its relays closed.
    raw.c_cc[VSUSP] = _POSIX_VDISABLE;
    raw.c_cc[VQUIT] = _POSIX_VDISABLE;
    raw.c_cc[VMIN] = 1;
    raw.c_cc[VTIME] = 0;
    changed_ = tcsetattr(STDIN_FILENO, TCSADRAIN, &raw) == 0;
  }
  ~PosixKeyboard() override {
    if (changed_) tcsetattr(STDIN_FILENO, TCSADRAIN, &before_);
  }
  PosixKeyboard(const PosixKeyboard&) = delete;
  PosixKeyboard& operator=(const PosixKeyboard&) = delete;

  std::optional<Key> Next() override {
    for (;;) {
      if (InterruptWatch::Interrupted()) return std::nullopt;
      if (auto key = Pending()) return key;
      const TerminalSize now = Size();
      if (now.columns != size_.columns || now.rows != size_.rows) {
        size_ = now;
        return Key{Key::Kind::Resized, ""};
      }
      Wait(LookAroundMs);
    }
  }

  std::optional<Key> Pending() override {
    for (;;) {
      if (auto key = decoder_.Next(ended_)) return key;
      if (ended_) return Key{Key::Kind::End, ""};
      if (!Wait(decoder_.Empty() ? 0 : EscapeMs)) return decoder_.Next(true);
      Read();
    }
  }

  TerminalSize Size() const override {
    winsize size = {};
    const bool known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 && size.ws_row > 0;
    return known ? TerminalSize{size.ws_col, size.ws_row} : TerminalSize{80, 24};
  }

 private:
  static bool Wait(int ms) {
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    return poll(&input, 1, ms) > 0;
  }

  void Read() {
    std::array<char, 4096> bytes{};
    const ssize_t count = read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count > 0) decoder_.Take({bytes.data(), static_cast<std::size_t>(count)});
    ended_ = count == 0 || (count < 0 && errno != EINTR && errno != EAGAIN);
  }

  termios before_ = {};
  bool changed_ = false;
  bool ended_ = false;
  TerminalSize size_;
  KeyDecoder decoder_;
};

}  // namespace

std::unique_ptr<Keyboard> OpenKeyboard() { return std::make_unique<PosixKeyboard>(); }

}  // namespace kxbench
