#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Kxcommandinterfaces.h"
#include "tests/support/CallLog.h"

/// The part of the host framework that learning and checking need: Application, TestEnvironment and
/// SendMessageW, without the framework's library. Linking `test_fake_framework` is enough.

namespace shorttest::testkit {

/// A message that was sent, its text copied during the call.
struct SentMessage {
  std::uintptr_t window;
  unsigned message;
  std::uintptr_t wParam;
  std::u16string text;
};

/// Receives every message sent while it lives; the log gets "send TEXT" (UTF-16 above ASCII as "?").
class MessageRecorder {
 public:
  explicit MessageRecorder(CallLog& log);
  ~MessageRecorder();
  MessageRecorder(const MessageRecorder&) = delete;
  MessageRecorder& operator=(const MessageRecorder&) = delete;

  const std::vector<SentMessage>& Messages() const { return messages_; }
  /// The texts, UTF-16 turned into UTF-8 (below U+10000), each ended by a line feed.
  std::string Records() const;

  void Take(const SentMessage& message);

 private:
  CallLog& log_;
  MessageRecorder* before_;
  std::vector<SentMessage> messages_;
};

/// The host's running test; the log gets "cancel test". It does not become TestEnvironment() by itself.
class FakeTestEnvironment : public ITestEnvironment {
 public:
  explicit FakeTestEnvironment(CallLog& log) : log_(log) {}
  virtual ~FakeTestEnvironment() = default;

  int Cancels() const { return cancels_; }
  void ThrowOnCancel() { throws_ = true; }

  int QueryInterface(const char* name, void** object) override;
  int AddRef() override { return 1; }
  int Release() override { return 1; }
  void CancelTest() override;

 private:
  CallLog& log_;
  int cancels_ = 0;
  bool throws_ = false;
};

}  // namespace shorttest::testkit
