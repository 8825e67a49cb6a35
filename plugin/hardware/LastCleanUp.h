#pragma once

#include <functional>

namespace shorttest {

/// What opens the relays of a running procedure when the process ends under it, so that the procedure's own
/// clean-up does not run: its display goes away, for instance, and the toolkit ends the process. In force
/// while it lives; those of procedures within procedures end in the opposite order. One thread at a time.
class LastCleanUp {
 public:
  /// `cleanUp` makes driver calls alone and touches no user interface. What it throws is dropped.
  explicit LastCleanUp(std::function<void()> cleanUp);
  ~LastCleanUp();
  LastCleanUp(const LastCleanUp&) = delete;
  LastCleanUp& operator=(const LastCleanUp&) = delete;

 private:
  friend void RunLastCleanUps() noexcept;

  static LastCleanUp* innermost;

  std::function<void()> cleanUp_;
  LastCleanUp* outer_;
};

/// Runs what is in force, the innermost first, each once. For whoever finds out that the process is about to
/// end.
void RunLastCleanUps() noexcept;

}  // namespace shorttest
