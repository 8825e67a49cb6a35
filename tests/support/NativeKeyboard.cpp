#include "tests/support/NativeKeyboard.h"

#ifdef _WIN32

#include <windows.h>
#include <wx/defs.h>

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

bool HasKeyboard() { return GetFocus() != nullptr; }

bool PressUnknownToSimulator(int key) {
  if (key != WXK_NUMPAD_ENTER) return false;  // pressed as F3
  std::array<INPUT, 2> inputs{};
  for (INPUT& input : inputs) {
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = VK_RETURN;
    input.ki.dwFlags = KEYEVENTF_EXTENDEDKEY;  // the one of the number pad
  }
  inputs[1].ki.dwFlags |= KEYEVENTF_KEYUP;
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
  return true;
}

void SynchroniseScreen() {}

KeyWatcher::KeyWatcher() = default;

bool KeyWatcher::SawKey() const { return true; }

}  // namespace widget_test

#else

#include <cstddef>

#include "tests/support/NativeToolkit.h"

namespace widget_test {
namespace {

struct List {
  void* data;
  List* next;
  List* previous;
};

void* ActiveWindow() {
  static const auto listWindows = Native<List* (*)()>("gtk_window_list_toplevels");
  static const auto freeList = Native<void (*)(List*)>("g_list_free");
  static const auto isActive = Native<int (*)(void*)>("gtk_window_is_active");
  List* const windows = listWindows();
  void* active = nullptr;
  for (const List* window = windows; window != nullptr; window = window->next) {
    if (isActive(window->data) != 0) active = window->data;
  }
  freeList(windows);
  return active;
}

void* FocusedWidget() {
  static const auto focusOf = Native<void* (*)(void*)>("gtk_window_get_focus");
  void* const window = ActiveWindow();
  return window == nullptr ? nullptr : focusOf(window);
}

bool IsEntry(void* widget) {
  static const auto entryType = Native<std::size_t (*)()>("gtk_entry_get_type");
  static const auto isA = Native<int (*)(void*, std::size_t)>("g_type_check_instance_is_a");
  return isA(widget, entryType()) != 0;
}

// How many keys went down and came up at the program's windows so far.
struct Keys {
  long presses = 0;
  long releases = 0;
};

constexpr int KeyPress = 8;  // as GDK numbers its events
constexpr int KeyRelease = 9;

// An event begins with its type.
int CountKey(void*, const int* event, void* keys) {
  if (*event == KeyPress) ++static_cast<Keys*>(keys)->presses;
  if (*event == KeyRelease) ++static_cast<Keys*>(keys)->releases;
  return 0;  // it goes on to its window
}

const Keys& KeysSoFar() {
  using Snooper = int (*)(void*, const int*, void*);
  static Keys keys;
  [[maybe_unused]] static const unsigned int installed =
      Native<unsigned int (*)(Snooper, void*)>("gtk_key_snooper_install")(CountKey, &keys);
  return keys;
}

}  // namespace

bool HasKeyboard() { return ActiveWindow() != nullptr; }

bool PressUnknownToSimulator(int) { return false; }

void SynchroniseScreen() {
  static const auto screen = Native<void* (*)()>("gdk_display_get_default");
  static const auto synchronise = Native<void (*)(void*)>("gdk_display_sync");
  synchronise(screen());
}

KeyWatcher::KeyWatcher() : pressesBefore_(KeysSoFar().presses), releasesBefore_(KeysSoFar().releases) {}

bool KeyWatcher::SawKey() const {
  const long presses = KeysSoFar().presses - pressesBefore_;
  const long releases = KeysSoFar().releases - releasesBefore_;
  return presses > 0 && (releases >= presses || !HasKeyboard());
}

std::optional<std::string> TextOfFocusedEntry() {
  static const auto textOf = Native<const char* (*)(void*)>("gtk_entry_get_text");
  void* const widget = FocusedWidget();
  if (widget == nullptr || !IsEntry(widget)) return std::nullopt;
  return std::string(textOf(widget));
}

}  // namespace widget_test

#endif
