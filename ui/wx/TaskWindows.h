#pragma once

#include <wx/toplevel.h>
#include <wx/weakref.h>

#include <map>

#include "contracts/UserInterface.h"

namespace kxbench {

/// Disables the thread's windows around a procedure and enables them again. On Windows these are all windows
/// of the thread, the toolkit's or not; elsewhere those of the toolkit.
class TaskWindows {
 public:
  /// The handle by which the window is known here and in the lists.
  WindowHandle HandleOf(wxTopLevelWindow& window);

  /// See UserInterface::DisableTaskWindows.
  TaskWindowList Disable(WindowHandle except);

  /// See UserInterface::EnableTaskWindows.
  void Enable(const TaskWindowList& windows);

 private:
#ifndef _WIN32
  // Handles are numbers given out once: an address may come back as that of another window.
  std::map<WindowHandle, wxWeakRef<wxTopLevelWindow>> windows_;
  WindowHandle lastHandle_ = 0;
#endif
};

}  // namespace kxbench
