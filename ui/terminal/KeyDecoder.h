#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "ui/terminal/Keyboard.h"

namespace kxbench {

/// Keys out of the bytes that a terminal sends. Arrows and function keys, which begin with an Escape, are
/// passed over; an Escape that nothing follows is the key of that name.
class KeyDecoder {
 public:
  void Take(std::string_view bytes) { bytes_ += bytes; }

  /// The next key. None when there is none, and when more bytes may belong to it unless `complete`.
  std::optional<Key> Next(bool complete);

  bool Empty() const { return bytes_.empty(); }

 private:
  std::optional<std::size_t> SequenceLength() const;

  std::string bytes_;
};

}  // namespace kxbench
