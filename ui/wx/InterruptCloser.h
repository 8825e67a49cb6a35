#pragma once

#include <wx/event.h>

#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>

namespace kxbench {

/// Closes dialogs when the program is to end: a modal dialog waits only for its user.
class InterruptCloser : public wxEvtHandler {
 public:
  /// From now on, once `interrupted` holds, the modal dialog in front is closed as by its close box, and so
  /// on until there is none. A message box stays until it is answered. `interrupted` is asked on another
  /// thread, so that the windows are not woken as long as there is nothing to do.
  void Watch(bool (*interrupted)());

 private:
  void Ask(const std::stop_token& stop, bool (*interrupted)());
  static void CloseFrontDialog();

  std::mutex waiting_;
  std::condition_variable_any stopped_;
  std::jthread asking_;  // the last member: it ends before the others go
};

}  // namespace kxbench
