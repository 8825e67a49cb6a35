#include "ui/wx/TaskWindows.h"

namespace kxbench {

WindowHandle TaskWindows::HandleOf(wxTopLevelWindow& window) {
  for (auto entry = windows_.begin(); entry != windows_.end();) {
    if (entry->second.get() == &window) return entry->first;
    entry = entry->second ? std::next(entry) : windows_.erase(entry);
  }
  ++lastHandle_;
  windows_.emplace(lastHandle_, &window);
  return lastHandle_;
}

TaskWindowList TaskWindows::Disable(WindowHandle except) {
  TaskWindowList disabled;
  for (wxWindow* const window : wxTopLevelWindows) {
    auto* const topLevel = dynamic_cast<wxTopLevelWindow*>(window);
    if (topLevel == nullptr || topLevel->IsBeingDeleted() || !topLevel->IsEnabled()) continue;
    const WindowHandle handle = HandleOf(*topLevel);
    if (handle == except) continue;
    topLevel->Disable();
    disabled.push_back(handle);
  }
  return disabled;
}

void TaskWindows::Enable(const TaskWindowList& windows) {
  for (const WindowHandle handle : windows) {
    const auto entry = windows_.find(handle);
    if (entry != windows_.end() && entry->second) entry->second->Enable();
  }
}

}  // namespace kxbench
