#pragma once

#include <wx/timer.h>

namespace kxbench {

/// Closes dialogs when the program is to end: a modal dialog waits for its user alone, and nobody else asks.
class InterruptTimer : public wxTimer {
 public:
  /// From now on, once `interrupted` holds, the modal dialog in front is closed as by its close box, and so
  /// on until there is none. A message box stays until it is answered.
  void Watch(bool (*interrupted)());

  void Notify() override;

 private:
  bool (*interrupted_)() = nullptr;
};

}  // namespace kxbench
