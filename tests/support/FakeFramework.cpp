#include "tests/support/FakeFramework.h"

#include <map>
#include <stdexcept>

#include "contracts/WindowMessages.h"
#include "framework/Kxcommandinterfaces.h"
#include "framework/kxcomponents.h"

namespace {

UserInterface* application = nullptr;
ITestEnvironment* testEnvironment = nullptr;

}  // namespace

namespace shorttest::testkit {
namespace {

// Window handles and who receives for them.
std::map<std::uintptr_t, MessageRecorder*>& Windows() {
  static std::map<std::uintptr_t, MessageRecorder*> windows;
  return windows;
}

LRESULT Deliver(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const auto found = Windows().find(reinterpret_cast<std::uintptr_t>(window));
  if (found != Windows().end()) {
    found->second->Take({found->first, message, wParam, reinterpret_cast<const char16_t*>(lParam)});
  }
  return 0;
}

#ifdef _WIN32

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return message > WM_USER ? Deliver(window, message, wParam, lParam)
                           : DefWindowProcW(window, message, wParam, lParam);
}

std::uintptr_t OpenWindow() {
  HWND window = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
  if (window == nullptr) throw std::runtime_error("the system refused a message window");
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(WindowProcedure));
  return reinterpret_cast<std::uintptr_t>(window);
}

void CloseWindowOf(std::uintptr_t window) { DestroyWindow(reinterpret_cast<HWND>(window)); }

#else

std::uintptr_t OpenWindow() {
  static std::uintptr_t next = 0x1234;
  return next++;
}

void CloseWindowOf(std::uintptr_t /*window*/) {}

#endif

void AppendUtf8(std::string& utf8, char16_t unit) {
  const auto code = static_cast<unsigned>(unit);
  if (code < 0x80) {
    utf8 += static_cast<char>(code);
  } else if (code < 0x800) {
    utf8 += static_cast<char>(0xC0U | code >> 6);
    utf8 += static_cast<char>(0x80U | (code & 0x3FU));
  } else {
    utf8 += static_cast<char>(0xE0U | code >> 12);
    utf8 += static_cast<char>(0x80U | (code >> 6 & 0x3FU));
    utf8 += static_cast<char>(0x80U | (code & 0x3FU));
  }
}

}  // namespace

MessageRecorder::MessageRecorder(CallLog& log) : log_(log), window_(OpenWindow()) {
  Windows()[window_] = this;
}

MessageRecorder::~MessageRecorder() {
  Windows().erase(window_);
  CloseWindowOf(window_);
}

void MessageRecorder::Take(const SentMessage& message) {
  messages_.push_back(message);
  std::string line = "send ";
  for (const char16_t unit : message.text) line += unit < 0x80 ? static_cast<char>(unit) : '?';
  log_.Add(line);
}

std::string MessageRecorder::Records() const {
  std::string records;
  for (const SentMessage& message : messages_) {
    for (const char16_t unit : message.text) AppendUtf8(records, unit);
    records += "\n";
  }
  return records;
}

}  // namespace shorttest::testkit

UserInterface& Application() {
  if (application == nullptr) throw std::logic_error("no user interface was chosen");
  return *application;
}

void SetApplication(UserInterface* userInterface) { application = userInterface; }

ITestEnvironment* TestEnvironment() { return testEnvironment; }

void SetTestEnvironment(ITestEnvironment* environment) { testEnvironment = environment; }

#ifndef _WIN32
LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return shorttest::testkit::Deliver(window, message, wParam, lParam);
}
#endif
