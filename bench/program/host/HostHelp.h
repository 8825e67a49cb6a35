#pragma once

#include "framework/kxcomponents.h"

namespace kxbench {

/// The help of this host: a message box for each topic it knows. Its texts are in the language of the dialogs
/// that ask for them, German.
class HostHelp final : public TKXHelpSystem {
 public:
  void ShowTopic(int helpContext) override;
};

}  // namespace kxbench
