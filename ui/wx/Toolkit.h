#pragma once

#include <wx/evtloop.h>

#include <memory>

namespace kxbench {

/// The toolkit inside a program that was not written for it: an application object and an event loop that is
/// active, though nobody runs it, so that modeless windows paint and react whenever events are dispatched.
/// One at a time.
class Toolkit {
 public:
  /// Throws std::runtime_error when no display can be reached.
  Toolkit();

  /// Ends the toolkit and closes all windows that are left.
  ~Toolkit();
  Toolkit(const Toolkit&) = delete;
  Toolkit& operator=(const Toolkit&) = delete;

  /// Handles all events that are there, and returns. May be called from a handler of such an event.
  void DispatchPendingEvents();

 private:
  std::unique_ptr<wxEventLoop> loop_;
  std::unique_ptr<wxEventLoopActivator> activator_;
};

}  // namespace kxbench
