#pragma once

#include <optional>
#include <string>

/// The keyboard as the system's own windows have it, which the toolkit knows nothing of.
namespace widget_test {

/// Text (UTF-8) of the one-line edit that has the keyboard, also in the system's own dialogs. No value when
/// something else has the keyboard.
std::optional<std::string> TextOfFocusedEntry();

/// Whether a window of this program has the keyboard.
bool HasKeyboard();

/// Presses a key that the toolkit's simulator takes for another one on this system. False for all others:
/// those are left to the simulator.
bool PressUnknownToSimulator(int key);

/// Waits until the screen has done all that it was told; what comes of it is then among the program's events.
void SynchroniseScreen();

/// Sees the keys that arrive at the program's windows, from when it is made. On Windows it takes every key
/// for arrived.
class KeyWatcher {
 public:
  KeyWatcher();

  /// A key has gone down here, and every key that went down has come up again: here or, once no window of
  /// this program has the keyboard any more, elsewhere.
  bool SawKey() const;

 private:
  long pressesBefore_ = 0;
  long releasesBefore_ = 0;
};

}  // namespace widget_test
