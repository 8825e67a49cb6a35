#include "framework/MessageWindow.h"

#include <utility>

namespace kx {

LRESULT MessageWindow::Deliver(UINT message, WPARAM wParam, LPARAM lParam) noexcept {
  try {
    return handler_(message, wParam, lParam);
  } catch (...) {
    if (!kept_) kept_ = std::current_exception();
    return 0;
  }
}

void MessageWindow::RethrowKept() {
  if (kept_) std::rethrow_exception(std::exchange(kept_, nullptr));
}

}  // namespace kx
