#include "tests/support/NativeWidgets.h"

#ifdef _WIN32

#include <wx/msw/wrapwin.h>

namespace widget_test {

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

ComplaintWatcher::ComplaintWatcher() = default;
ComplaintWatcher::~ComplaintWatcher() = default;

}  // namespace widget_test

#else

#include "tests/support/NativeToolkit.h"

namespace widget_test {
namespace {

using LogHandler = void (*)(const char* domain, int level, const char* message, void* data);

LogHandler SetLogHandler(LogHandler handler, void* data) {
  static const auto set = Native<LogHandler (*)(LogHandler, void*)>("g_log_set_default_handler");
  return set(handler, data);
}

}  // namespace

int FirstVisibleLine(const wxTextCtrl& memo) {
  long column = 0;
  long line = -1;
  memo.HitTest(wxPoint(2, 2), &column, &line);
  return static_cast<int>(line);
}

bool HasHorizontalBar(const wxTextCtrl& memo) {
  constexpr int Automatic = 1;
  static const auto policyOf = Native<void (*)(void*, int*, int*)>("gtk_scrolled_window_get_policy");
  int horizontal = 0;
  int vertical = 0;
  policyOf(memo.GetHandle(), &horizontal, &vertical);
  return horizontal <= Automatic;
}

void TurnWheel() {
  constexpr unsigned WheelDown = 5;
  static const auto open = Native<void* (*)(const char*)>("XOpenDisplay");
  static const auto press = Native<int (*)(void*, unsigned, int, unsigned long)>("XTestFakeButtonEvent");
  static const auto close = Native<int (*)(void*)>("XCloseDisplay");
  void* const display = open(nullptr);
  press(display, WheelDown, 1, 0);
  press(display, WheelDown, 0, 0);
  close(display);  // sends what is still waiting
}

ComplaintWatcher::ComplaintWatcher() {
  SetLogHandler(
      [](const char* /*domain*/, int level, const char* message, void* complaints) {
        constexpr int FirstUnwritten = 1 << 6;  // for information, and for those who look for errors
        if (level >= FirstUnwritten) return;
        static_cast<std::vector<std::string>*>(complaints)->emplace_back(message);
      },
      &complaints_);
}

ComplaintWatcher::~ComplaintWatcher() { SetLogHandler(Native<LogHandler>("g_log_default_handler"), nullptr); }

}  // namespace widget_test

#endif
