#include "plugin/hardware/LastCleanUp.h"

#include <utility>

namespace shorttest {

LastCleanUp* LastCleanUp::innermost = nullptr;

LastCleanUp::LastCleanUp(std::function<void()> cleanUp)
    : cleanUp_(std::move(cleanUp)), outer_(std::exchange(innermost, this)) {}

LastCleanUp::~LastCleanUp() {
  if (innermost == this) innermost = outer_;
}

void RunLastCleanUps() noexcept {
  while (LastCleanUp* const cleanUp = LastCleanUp::innermost) {
    LastCleanUp::innermost = cleanUp->outer_;
    try {
      cleanUp->cleanUp_();
    } catch (...) {
      // The process ends; the others must still run.
    }
  }
}

}  // namespace shorttest
