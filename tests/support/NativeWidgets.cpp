#include "tests/support/NativeWidgets.h"

#ifdef _WIN32

#include <wx/msw/wrapwin.h>

#include <array>

namespace widget_test {

std::optional<std::string> TextOfFocusedEntry() {
  const HWND focused = GetFocus();
  std::array<wchar_t, 1024> buffer{};
  if (focused == nullptr || GetClassNameW(focused, buffer.data(), static_cast<int>(buffer.size())) == 0 ||
      std::wstring(buffer.data()) != L"Edit") {
    return std::nullopt;
  }
  GetWindowTextW(focused, buffer.data(), static_cast<int>(buffer.size()));
  std::array<char, 4096> text{};
  WideCharToMultiByte(CP_UTF8, 0, buffer.data(), -1, text.data(), static_cast<int>(text.size()), nullptr,
                      nullptr);
  return std::string(text.data());
}

int FirstVisibleLine(const wxTextCtrl& memo) {
  return static_cast<int>(SendMessageW(memo.GetHWND(), EM_GETFIRSTVISIBLELINE, 0, 0));
}

bool HasHorizontalBar(const wxTextCtrl& memo) {
  return (GetWindowLongW(memo.GetHWND(), GWL_STYLE) & WS_HSCROLL) != 0;
}

void TurnWheel() {
  INPUT wheel{};
  wheel.type = INPUT_MOUSE;
  wheel.mi.dwFlags = MOUSEEVENTF_WHEEL;
  wheel.mi.mouseData = static_cast<DWORD>(-WHEEL_DELTA);
  SendInput(1, &wheel, sizeof wheel);
}

}  // namespace widget_test

#else

#include <dlfcn.h>

#include <cstddef>

namespace widget_test {
namespace {

// The toolkit below the toolkit, without its headers: the functions are looked up in the running program.
struct List {
  void* data;
  List* next;
  List* previous;
};

template <typename Function>
Function Find(const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_DEFAULT, name));
}

void* FocusedWidget() {
  static const auto listWindows = Find<List* (*)()>("gtk_window_list_toplevels");
  static const auto freeList = Find<void (*)(List*)>("g_list_free");
  static const auto isActive = Find<int (*)(void*)>("gtk_window_is_active");
  static const auto focusOf = Find<void* (*)(void*)>("gtk_window_get_focus");
  List* const windows = listWindows();
  void* focused = nullptr;
  for (const List* window = windows; window != nullptr; window = window->next) {
    if (isActive(window->data) != 0) focused = focusOf(window->data);
  }
  freeList(windows);
  return focused;
}

bool IsEntry(void* widget) {
  static const auto entryType = Find<std::size_t (*)()>("gtk_entry_get_type");
  static const auto isA = Find<int (*)(void*, std::size_t)>("g_type_check_instance_is_a");
  return isA(widget, entryType()) != 0;
}

}  // namespace

std::optional<std::string> TextOfFocusedEntry() {
  static const auto textOf = Find<const char* (*)(void*)>("gtk_entry_get_text");
  void* const widget = FocusedWidget();
  if (widget == nullptr || !IsEntry(widget)) return std::nullopt;
  return std::string(textOf(widget));
}

int FirstVisibleLine(const wxTextCtrl& memo) {
  long column = 0;
  long line = -1;
  memo.HitTest(wxPoint(2, 2), &column, &line);
  return static_cast<int>(line);
}

bool HasHorizontalBar(const wxTextCtrl& memo) {
  constexpr int Automatic = 1;
  static const auto policyOf = Find<void (*)(void*, int*, int*)>("gtk_scrolled_window_get_policy");
  int horizontal = 0;
  int vertical = 0;
  policyOf(memo.GetHandle(), &horizontal, &vertical);
  return horizontal <= Automatic;
}

void TurnWheel() {
  constexpr unsigned WheelDown = 5;
  static const auto open = Find<void* (*)(const char*)>("XOpenDisplay");
  static const auto press = Find<int (*)(void*, unsigned, int, unsigned long)>("XTestFakeButtonEvent");
  static const auto close = Find<int (*)(void*)>("XCloseDisplay");
  void* const display = open(nullptr);
  press(display, WheelDown, 1, 0);
  press(display, WheelDown, 0, 0);
  close(display);  // sends what is still waiting
}

}  // namespace widget_test

#endif
