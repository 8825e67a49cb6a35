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

void kxDestroyUserInterface(UserInterface* userInterface) { delete userInterface; }
