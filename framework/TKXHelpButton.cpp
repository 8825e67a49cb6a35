#include <string>

#include "framework/kxcomponents.h"

namespace {

TKXHelpSystem* theHelpSystem = nullptr;

}  // namespace

void SetHelpSystem(TKXHelpSystem* helpSystem) { theHelpSystem = helpSystem; }

TKXHelpSystem::~TKXHelpSystem() = default;

TKXHelpButton::TKXHelpButton() = default;

TKXHelpButton::~TKXHelpButton() = default;

void TKXHelpButton::Click() {
  if (theHelpSystem != nullptr) {
    theHelpSystem->ShowTopic(helpContext_);
  } else {
    Application().ShowMessage({.text = "Zum Thema " + std::to_string(helpContext_) + " gibt es keine Hilfe.",
                               .kind = MessageKind::Information,
                               .buttons = {mrOk}});
  }
}
