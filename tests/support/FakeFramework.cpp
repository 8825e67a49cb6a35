#include "tests/support/FakeFramework.h"

#include <stdexcept>

#include "platform/WindowMessages.h"
#include "platform/kxcomponents.h"

namespace shorttest::testkit {
namespace {

UserInterface* application = nullptr;
ITestEnvironment* testEnvironment = nullptr;
MessageRecorder* recorder = nullptr;

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

MessageRecorder::MessageRecorder(CallLog& log) : log_(log), before_(recorder) { recorder = this; }

MessageRecorder::~MessageRecorder() { recorder = before_; }

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

int FakeTestEnvironment::QueryInterface(const char* /*name*/, void** object) {
  *object = nullptr;
  return 1;
}

void FakeTestEnvironment::CancelTest() {
  ++cancels_;
  log_.Add("cancel test");
  if (throws_) throw std::runtime_error("the host failed");
}

}  // namespace shorttest::testkit

using namespace shorttest::testkit;  // NOLINT(google-build-using-namespace)

UserInterface& Application() {
  if (application == nullptr) throw std::logic_error("no user interface was chosen");
  return *application;
}

void SetApplication(UserInterface* userInterface) { application = userInterface; }

ITestEnvironment* TestEnvironment() { return testEnvironment; }

void SetTestEnvironment(ITestEnvironment* environment) { testEnvironment = environment; }

LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (recorder != nullptr) {
    recorder->Take({reinterpret_cast<std::uintptr_t>(window), message, wParam,
                    std::u16string(reinterpret_cast<const char16_t*>(lParam))});
  }
  return 0;
}
