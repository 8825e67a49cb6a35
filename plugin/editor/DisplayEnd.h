#pragma once

namespace shorttest {

/// While it lives, the end of the display (a killed X server) runs the last clean-ups before the toolkit ends
/// the process. For procedures that close relays, once the toolkit has started. On Windows, where the display
/// cannot go away alone, it does nothing; nor does it on a display that is not X's: there the toolkit ends
/// the process without telling anybody.
class DisplayEndWatch {
 public:
  DisplayEndWatch();
  ~DisplayEndWatch();
  DisplayEndWatch(const DisplayEndWatch&) = delete;
  DisplayEndWatch& operator=(const DisplayEndWatch&) = delete;
};

}  // namespace shorttest
