#pragma once

#include <memory>
#include <optional>
#include <string>

namespace kxbench {

/// A key of a terminal's keyboard, or what a barcode reader types.
struct Key {
  enum class Kind {
    Text,  ///< UTF-8, possibly part of a character
    Enter,
    Erase,     ///< Backspace
    EraseAll,  ///< Ctrl-U
    End,       ///< Escape, Ctrl-D, or the end of the input
    Resized,   ///< the terminal has another size now
  };
  Kind kind;
  std::string text;  ///< of Text
};

struct TerminalSize {
  int columns;
  int rows;
};

/// The keys of the terminal at standard input, one by one, without the terminal showing them. Ctrl-C is an
/// interrupt still (see InterruptWatch). The terminal is as it was before once the object is gone.
class Keyboard {
 public:
  virtual ~Keyboard() = default;

  /// Waits for the next key; none once the user interrupts.
  virtual std::optional<Key> Next() = 0;

  /// The next of the keys pressed so far; none when there is none.
  virtual std::optional<Key> Pending() = 0;

  virtual TerminalSize Size() const = 0;
};

/// REQUIRES: standard input and standard error are terminals (Terminal::CanAsk).
std::unique_ptr<Keyboard> OpenKeyboard();

}  // namespace kxbench
