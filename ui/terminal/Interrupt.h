#pragma once

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
};

}  // namespace kxbench
