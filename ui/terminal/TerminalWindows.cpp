#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <array>

#include "ui/terminal/Interrupt.h"
#include "ui/terminal/PatientTerminal.h"
#include "ui/terminal/Terminal.h"

namespace kxbench {

namespace {

bool IsConsole(HANDLE handle) {
  DWORD mode = 0;
  return GetConsoleMode(handle, &mode) != 0;
}

std::wstring Utf16(std::string_view text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), size);
  wide.resize(static_cast<std::size_t>(length));
  return wide;
}

std::string Utf8(std::wstring_view wide) {
  const int size = static_cast<int>(wide.size());
  std::string text(wide.size() * 3, '\0');
  const int length = WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, text.data(),
                                         static_cast<int>(text.size()), nullptr, nullptr);
  text.resize(static_cast<std::size_t>(length));
  return text;
}

class WindowsTerminal : public Terminal {
 public:
  WindowsTerminal() {
    DWORD mode = 0;
    if (GetConsoleMode(error_, &mode) == 0) return;
    redraws_ = SetConsoleMode(error_, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
  }

  void Write(std::string_view text) override {
    DWORD written = 0;
    if (IsConsole(error_)) {
      const std::wstring wide = Utf16(text);
      WriteConsoleW(error_, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
    } else {
      WriteFile(error_, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    }
  }

  void Draw(std::string_view text) override { Write(text); }
  bool Ready() const override { return true; }
  void Settle() override {}

  bool CanRedraw() const override { return redraws_; }
  bool CanAsk() const override { return IsConsole(input_) && IsConsole(error_); }
  bool ShowsUnicode() const override { return true; }

  int Columns() const override {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (GetConsoleScreenBufferInfo(error_, &info) == 0) return 80;
    return info.srWindow.Right - info.srWindow.Left + 1;
  }

  std::optional<std::string> ReadLine() override {
    std::wstring line;
    while (!InterruptWatch::Interrupted()) {
      std::array<wchar_t, 256> buffer{};
      DWORD count = 0;
      // Ctrl-C ends the call with no characters, before or after the handler has run.
      const BOOL read =
          ReadConsoleW(input_, buffer.data(), static_cast<DWORD>(buffer.size()), &count, nullptr);
      if (read == 0 || count == 0) return std::nullopt;
      line.append(buffer.data(), count);
      if (line.back() != L'\n') continue;
      while (!line.empty() && (line.back() == L'\n' || line.back() == L'\r')) line.pop_back();
      return Utf8(line);
    }
    return std::nullopt;
  }

 private:
  HANDLE input_ = GetStdHandle(STD_INPUT_HANDLE);
  HANDLE error_ = GetStdHandle(STD_ERROR_HANDLE);
  bool redraws_ = false;
};

}  // namespace

std::unique_ptr<Terminal> OpenTerminal() {
  return std::make_unique<PatientTerminal>(std::make_unique<WindowsTerminal>());
}

}  // namespace kxbench
