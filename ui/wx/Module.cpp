#include <exception>

#include "contracts/UserInterfaceModule.h"
#include "ui/wx/WxUserInterface.h"

UserInterface* kxCreateUserInterface() {
  try {
    return new kxbench::WxUserInterface;
  } catch (const std::exception&) {
    return nullptr;  // in practice: no display
  }
}

void kxCloseOnInterrupt(UserInterface* userInterface, bool (*interrupted)()) {
  static_cast<kxbench::WxUserInterface*>(userInterface)->CloseOnInterrupt(interrupted);
}

void kxDestroyUserInterface(UserInterface* userInterface) { delete userInterface; }
