#pragma once

#include "contracts/UserInterface.h"

namespace kxbench {

/// Shows a message box over the active window; see UserInterface::ShowMessage. Offers one to three buttons
/// and throws std::invalid_argument for any other number. The first button is the default.
int ShowMessageBox(const MessageBoxRequest& request);

/// True while a box is shown.
bool MessageBoxIsOpen();

}  // namespace kxbench
