#include <wx/msw/wrapwin.h>

#include "ui/wx/TaskWindows.h"

namespace kxbench {
namespace {

struct Disabling {
  HWND except;
  TaskWindowList disabled;
};

WindowHandle ToHandle(HWND window) { return reinterpret_cast<WindowHandle>(window); }

BOOL CALLBACK DisableWindow(HWND window, LPARAM parameter) {
  auto& disabling = *reinterpret_cast<Disabling*>(parameter);
  if (window != disabling.except && IsWindowVisible(window) && IsWindowEnabled(window)) {
    EnableWindow(window, FALSE);
    disabling.disabled.push_back(ToHandle(window));
  }
  return TRUE;
}

}  // namespace

WindowHandle TaskWindows::HandleOf(wxTopLevelWindow& window) { return ToHandle(window.GetHWND()); }

TaskWindowList TaskWindows::Disable(WindowHandle except) {
  Disabling disabling{reinterpret_cast<HWND>(except), {}};
  EnumThreadWindows(GetCurrentThreadId(), DisableWindow, reinterpret_cast<LPARAM>(&disabling));
  return disabling.disabled;
}

void TaskWindows::Enable(const TaskWindowList& windows) {
  for (const WindowHandle handle : windows) {
    const auto window = reinterpret_cast<HWND>(handle);
    if (IsWindow(window)) EnableWindow(window, TRUE);
  }
}

}  // namespace kxbench
