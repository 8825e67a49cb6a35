#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace kxbench {

/// Writes on a thread of its own, so that a reader who does not read holds up nothing else: neither a stopped
/// terminal nor a full pipe. What is written keeps its order. Used by one thread at a time.
class BackgroundWriter {
 public:
  /// Writes all of a text, however long that takes; gives 0 or the system's error number. Called on the
  /// thread, which may outlive the object.
  using WriteAll = std::function<int(std::string_view text)>;

  /// What becomes of a text when the program ends before it was written.
  enum class Kind {
    Awaited,  ///< Wait waits for it
    Passing,  ///< it may get lost
  };

  explicit BackgroundWriter(WriteAll write);

  /// Does not wait: a thread that hangs is left to itself.
  ~BackgroundWriter();
  BackgroundWriter(const BackgroundWriter&) = delete;
  BackgroundWriter& operator=(const BackgroundWriter&) = delete;

  /// Has `text` written; returns at once.
  void Post(std::string text, Kind kind);

  /// True when everything posted has been written.
  bool Idle() const;

  /// Waits until every awaited text is written. Once `enough` holds it waits 0.2 s more, which is time for a
  /// reader who reads at all. False when something is left.
  bool Wait(const std::function<bool()>& enough) const;

  /// Waits until everything is written, a tenth of a second at most, and not again before a text was taken.
  void Settle() const;

  /// The first error that writing ended with; 0 when there was none.
  int Error() const;

 private:
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace kxbench
