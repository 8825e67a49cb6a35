#include <stdexcept>
#include <string>
#include <utility>

#include "framework/MessageWindow.h"

namespace kx {

namespace {

constexpr wchar_t ClassName[] = L"kxframeworkMessageWindow";

LRESULT CALLBACK WindowProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* window = reinterpret_cast<MessageWindow*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
  // The system's own messages keep their default handling; extensions use those from WM_USER on.
  if (window == nullptr || message < WM_USER) return DefWindowProcW(handle, message, wParam, lParam);
  return window->Deliver(message, wParam, lParam);
}

void RegisterWindowClass(HINSTANCE instance) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = WindowProcedure;
  description.hInstance = instance;
  description.lpszClassName = ClassName;
  if (RegisterClassExW(&description) == 0 && GetLastError() != ERROR_CLASS_ALREADY_EXISTS) {
    throw std::runtime_error("cannot register the message window's class, error " +
                             std::to_string(GetLastError()));
  }
}

}  // namespace

MessageWindow::MessageWindow(Handler handler) : handler_(std::move(handler)) {
  const HINSTANCE instance = GetModuleHandleW(nullptr);
  RegisterWindowClass(instance);
  handle_ = CreateWindowExW(0, ClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, instance, nullptr);
  if (handle_ == nullptr) {
    throw std::runtime_error("cannot create the message window, error " + std::to_string(GetLastError()));
  }
  SetWindowLongPtrW(handle_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

MessageWindow::~MessageWindow() { DestroyWindow(handle_); }

}  // namespace kx
