#pragma once

#include <cstdint>
#include <exception>
#include <functional>

#include "contracts/Export.h"
#include "contracts/WindowMessages.h"

namespace kx {

/// A window without a face that receives messages: a message-only window of the system on Windows, elsewhere
/// an entry in the table through which SendMessageW delivers. Used on the thread that made it.
class KX_API MessageWindow {
 public:
  /// Receives message, wParam and lParam during the sender's call and gives the answer. What lParam points to
  /// may change as soon as it returns.
  using Handler = std::function<LRESULT(UINT message, WPARAM wParam, LPARAM lParam)>;

  /// Throws std::runtime_error when the system refuses the window.
  explicit MessageWindow(Handler handler);
  ~MessageWindow();
  MessageWindow(const MessageWindow&) = delete;
  MessageWindow& operator=(const MessageWindow&) = delete;

  /// The handle to send to, never 0. Its value fits in 32 bits.
  HWND Handle() const { return handle_; }

  /// Calls the handler. An exception that it throws cannot pass through the sender, which may be foreign
  /// code, and is kept; the answer is then 0.
  LRESULT Deliver(UINT message, WPARAM wParam, LPARAM lParam) noexcept;

  /// Throws the first exception that Deliver kept, once.
  void RethrowKept();

 private:
  Handler handler_;
  HWND handle_ = nullptr;
  std::exception_ptr kept_;
};

}  // namespace kx
