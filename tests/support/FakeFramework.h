#pragma once

#include <cstdint>
#include <string>
#include <vector>

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

/// The host's message window: receives what is sent to its handle while it lives. The log gets "send TEXT"
/// (UTF-16 above ASCII as "?"). On Windows it is a window of the system, which alone gets the system's call.
class MessageRecorder {
 public:
  explicit MessageRecorder(CallLog& log);
  ~MessageRecorder();
  MessageRecorder(const MessageRecorder&) = delete;
  MessageRecorder& operator=(const MessageRecorder&) = delete;

  /// The window's handle, which has 32 significant bits.
  std::uint32_t Handle() const { return static_cast<std::uint32_t>(window_); }

  const std::vector<SentMessage>& Messages() const { return messages_; }
  /// The texts, UTF-16 turned into UTF-8 (below U+10000), each ended by a line feed.
  std::string Records() const;
  void Clear() { messages_.clear(); }

  void Take(const SentMessage& message);

 private:
  CallLog& log_;
  std::uintptr_t window_;
  std::vector<SentMessage> messages_;
};

}  // namespace shorttest::testkit
