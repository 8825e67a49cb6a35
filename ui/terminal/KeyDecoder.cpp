#include "ui/terminal/KeyDecoder.h"

#include <utility>

namespace kxbench {

namespace {

constexpr char Escape = '\x1b';

bool IsPlain(char c) { return static_cast<unsigned char>(c) >= 0x20 && c != '\x7f'; }

}  // namespace

/// Length of the sequence that an Escape begins, 1 for the key; none while its end is not there.
std::optional<std::size_t> KeyDecoder::SequenceLength() const {
  if (bytes_.size() == 1) return std::nullopt;
  if (bytes_[1] == 'O') return bytes_.size() < 3 ? std::nullopt : std::optional<std::size_t>(3);
  if (bytes_[1] != '[') return 1;
  for (std::size_t i = 2; i < bytes_.size(); ++i) {
    if (bytes_[i] >= 0x40 && bytes_[i] <= 0x7e) return i + 1;
  }
  return std::nullopt;
}

std::optional<Key> KeyDecoder::Next(bool complete) {
  while (!bytes_.empty()) {
    if (bytes_.front() == Escape) {
      const std::optional<std::size_t> length = SequenceLength();
      if (!length && !complete) return std::nullopt;
      bytes_.erase(0, length.value_or(bytes_.size()));
      if (length.value_or(1) == 1) return Key{Key::Kind::End, ""};
      continue;
    }
    std::size_t plain = 0;
    while (plain < bytes_.size() && IsPlain(bytes_[plain])) ++plain;
    if (plain > 0) {
      Key key{Key::Kind::Text, bytes_.substr(0, plain)};
      bytes_.erase(0, plain);
      return key;
    }
    const char control = bytes_.front();
    bytes_.erase(0, 1);
    switch (control) {
      case '\r':
      case '\n':
        return Key{Key::Kind::Enter, ""};
      case '\b':
      case '\x7f':
        return Key{Key::Kind::Erase, ""};
      case '\x15':
        return Key{Key::Kind::EraseAll, ""};
      case '\x04':
        return Key{Key::Kind::End, ""};
      default:
        break;  // no key of ours
    }
  }
  return std::nullopt;
}

}  // namespace kxbench
