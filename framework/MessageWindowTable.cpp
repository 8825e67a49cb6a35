#include <map>
#include <mutex>
#include <utility>

#include "framework/MessageWindow.h"

/// Message windows where the system has none: a table of handles.

namespace kx {

namespace {

class WindowTable {
 public:
  static WindowTable& Instance() {
    static WindowTable table;
    return table;
  }

  HWND Add(MessageWindow* window) {
    const std::lock_guard lock(mutex_);
    // Handles are not given out twice: a message to a window that is gone must go nowhere.
    const std::uint32_t handle = next_++;
    windows_.emplace(handle, window);
    return reinterpret_cast<HWND>(static_cast<std::uintptr_t>(handle));
  }

  void Remove(HWND handle) {
    const std::lock_guard lock(mutex_);
    windows_.erase(reinterpret_cast<std::uintptr_t>(handle));
  }

  MessageWindow* Find(HWND handle) {
    const std::lock_guard lock(mutex_);
    const auto found = windows_.find(reinterpret_cast<std::uintptr_t>(handle));
    return found == windows_.end() ? nullptr : found->second;
  }

 private:
  std::mutex mutex_;
  std::map<std::uintptr_t, MessageWindow*> windows_;
  std::uint32_t next_ = 0x00010000;
};

}  // namespace

MessageWindow::MessageWindow(Handler handler)
    : handler_(std::move(handler)), handle_(WindowTable::Instance().Add(this)) {}

MessageWindow::~MessageWindow() { WindowTable::Instance().Remove(handle_); }

}  // namespace kx

LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  kx::MessageWindow* target = kx::WindowTable::Instance().Find(window);
  return target == nullptr ? 0 : target->Deliver(message, wParam, lParam);
}
