#pragma once

#include <functional>

namespace kxbench {

/// Takes note of the user's and the system's wish to end the program instead of ending it on the spot, which
/// would leave relays closed: Ctrl-C, SIGTERM and SIGHUP, on Windows also the closing of the console. (SIGHUP
/// stays ignored where it was, as nohup asks.) Writing to a pipe that nobody reads does not end the program
/// either. One object at a time; the earlier treatment comes back with its destruction.
class InterruptWatch {
 public:
  InterruptWatch();
  ~InterruptWatch();
  InterruptWatch(const InterruptWatch&) = delete;
  InterruptWatch& operator=(const InterruptWatch&) = delete;

  /// True from the first interrupt on, for as long as the watch lives.
  static bool Interrupted();

  /// True from the second on: the user will not wait for anything but the relays.
  static bool Insisted();

  /// True from the first interrupt on that was not Ctrl-C: whoever survives a cancelled check ends on this.
  static bool EndAsked();

  /// Takes back what Ctrl-C has interrupted so far, for a program that goes on; does nothing when EndAsked.
  static void Forget();

  /// Counts as an interrupt, for one that reaches the program another way. From any thread.
  static void Interrupt();
};

/// Starts a thread to which no signal is delivered: signals are for the main thread, whose waiting they end.
/// The thread is left to itself.
void StartUnsignalled(std::function<void()> work);

}  // namespace kxbench
