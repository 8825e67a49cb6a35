#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kxbench {

/// The terminal as far as the user interface needs it: standard error to write to, standard input to ask.
class Terminal {
 public:
  virtual ~Terminal() = default;

  /// Writes UTF-8 text to standard error, in the order of the calls. That the terminal is gone is no error:
  /// what runs must still reach its end.
  virtual void Write(std::string_view text) = 0;

  /// Writes what only shows progress: it may get lost.
  virtual void Draw(std::string_view text) = 0;

  /// True when the terminal has taken what was written so far. Until then progress is left out.
  virtual bool Ready() const = 0;

  /// Waits a little for the terminal to take what was written, so that what is written elsewhere comes after
  /// it.
  virtual void Settle() = 0;

  /// True when a line that was written can be overwritten: standard error is a terminal, and not a dumb one.
  virtual bool CanRedraw() const = 0;

  /// True when somebody can be asked: standard input and standard error are terminals.
  virtual bool CanAsk() const = 0;

  /// True when it shows more than ASCII.
  virtual bool ShowsUnicode() const = 0;

  /// Characters in a line.
  virtual int Columns() const = 0;

  /// The next line of standard input, without its end; no value at the end of the input or when the user
  /// interrupts (see InterruptWatch), also when that happened before.
  virtual std::optional<std::string> ReadLine() = 0;
};

/// The terminal that the program was started in. Writing to it never waits for it.
std::unique_ptr<Terminal> OpenTerminal();

}  // namespace kxbench
