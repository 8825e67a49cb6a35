#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace shorttest::testkit {

/// What was called, one line a call, across all fakes of a test. Time that passed on the fake clock stands
/// before the call that came after it: "wait 1000 us".
///
/// Compare the whole text with EXPECT_EQ: a difference is then shown line by line.
class CallLog {
 public:
  void Add(std::string line) {
    TakeWait();
    lines_.push_back(std::move(line));
  }

  /// All lines, each ended by a line feed.
  std::string Text() {
    TakeWait();
    std::string text;
    for (const std::string& line : lines_) text += line + "\n";
    return text;
  }

  /// The lines that `keep` selects, in the form of Text().
  std::string Select(const std::function<bool(std::string_view)>& keep) {
    TakeWait();
    std::string text;
    for (const std::string& line : lines_) {
      if (keep(line)) text += line + "\n";
    }
    return text;
  }

  /// Number of lines that begin with `start`.
  std::int64_t Count(std::string_view start) {
    TakeWait();
    std::int64_t count = 0;
    for (const std::string& line : lines_) count += line.starts_with(start) ? 1 : 0;
    return count;
  }

  void Clear() {
    TakeWait();
    lines_.clear();
  }

  /// Asks `takeMicroseconds` before each line for the time waited since the last one, in microseconds.
  void WatchClock(std::function<std::int64_t()> takeMicroseconds) { takeWait_ = std::move(takeMicroseconds); }

 private:
  void TakeWait() {
    if (!takeWait_) return;
    if (const std::int64_t waited = takeWait_(); waited > 0) {
      lines_.push_back("wait " + std::to_string(waited) + " us");
    }
  }

  std::vector<std::string> lines_;
  std::function<std::int64_t()> takeWait_;
};

}  // namespace shorttest::testkit
