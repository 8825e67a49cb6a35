#pragma once

#include <functional>
#include <string>

#include "framework/MessageWindow.h"

namespace kxbench {

/// The host's message window, which extensions send their result records to.
class RecordReceiver {
 public:
  /// Number of the window message that carries a record: lParam is the address of UTF-16 text that ends in a
  /// zero. The text is the sender's and holds only during the call.
  static constexpr UINT RecordMessage = 1133;

  /// `receive` is given each record as UTF-8, in the order sent, during the sender's call.
  explicit RecordReceiver(std::function<void(const std::string&)> receive);

  /// The value for the host's table of named values.
  std::uintptr_t Handle() const;

  /// Throws what `receive` threw, which could not pass through the sender.
  void RethrowKept() { window_.RethrowKept(); }

 private:
  std::function<void(const std::string&)> receive_;
  kx::MessageWindow window_;
};

}  // namespace kxbench
