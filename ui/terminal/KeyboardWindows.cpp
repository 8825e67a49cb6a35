#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include "ui/terminal/Interrupt.h"
#include "ui/terminal/Keyboard.h"

namespace kxbench {

namespace {

/// How often an interrupt, which arrives on another thread, is looked for.
constexpr DWORD LookAroundMs = 250;

class WindowsKeyboard : public Keyboard {
 public:
  WindowsKeyboard() {
    if (GetConsoleMode(input_, &before_) == 0) return;
    changed_ = SetConsoleMode(input_, ENABLE_PROCESSED_INPUT | ENABLE_WINDOW_INPUT) != 0;
  }
  ~WindowsKeyboard() override {
    if (changed_) SetConsoleMode(input_, before_);
  }
  WindowsKeyboard(const WindowsKeyboard&) = delete;
  WindowsKeyboard& operator=(const WindowsKeyboard&) = delete;

  std::optional<Key> Next() override {
    for (;;) {
      if (InterruptWatch::Interrupted()) return std::nullopt;
      if (auto key = Pending()) return key;
      WaitForSingleObject(input_, LookAroundMs);
    }
  }

  std::optional<Key> Pending() override {
    for (;;) {
      DWORD count = 0;
      if (GetNumberOfConsoleInputEvents(input_, &count) == 0) return Key{Key::Kind::End, ""};
      if (count == 0) return std::nullopt;
      INPUT_RECORD record{};
      if (ReadConsoleInputW(input_, &record, 1, &count) == 0 || count == 0) return Key{Key::Kind::End, ""};
      if (record.EventType == WINDOW_BUFFER_SIZE_EVENT) return Key{Key::Kind::Resized, ""};
      if (record.EventType != KEY_EVENT || record.Event.KeyEvent.bKeyDown == 0) continue;
      if (auto key = KeyOf(record.Event.KeyEvent.uChar.UnicodeChar)) return key;
    }
  }

  TerminalSize Size() const override {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info) == 0) return {80, 24};
    return {info.srWindow.Right - info.srWindow.Left + 1, info.srWindow.Bottom - info.srWindow.Top + 1};
  }

 private:
  std::optional<Key> KeyOf(wchar_t character) {
    switch (character) {
      case L'\r':
      case L'\n':
        return Key{Key::Kind::Enter, ""};
      case L'\b':
        return Key{Key::Kind::Erase, ""};
      case L'\x15':
        return Key{Key::Kind::EraseAll, ""};
      case L'\x04':
      case L'\x1b':
        return Key{Key::Kind::End, ""};
      default:
        break;
    }
    if (character < 0x20) return std::nullopt;
    if (IS_HIGH_SURROGATE(character)) {
      high_ = character;
      return std::nullopt;
    }
    const wchar_t pair[2] = {high_, character};
    const bool isPair = IS_LOW_SURROGATE(character);
    char text[8];
    const int length = WideCharToMultiByte(CP_UTF8, 0, isPair ? pair : &character, isPair ? 2 : 1, text,
                                           static_cast<int>(sizeof text), nullptr, nullptr);
    return Key{Key::Kind::Text, std::string(text, static_cast<std::size_t>(length))};
  }

  HANDLE input_ = GetStdHandle(STD_INPUT_HANDLE);
  DWORD before_ = 0;
  bool changed_ = false;
  wchar_t high_ = 0;
};

}  // namespace

std::unique_ptr<Keyboard> OpenKeyboard() { return std::make_unique<WindowsKeyboard>(); }

}  // namespace kxbench
