#include <stdexcept>

#include "framework/Kxcommandinterfaces.h"
#include "framework/kxcomponents.h"

/// The host's process-wide values. They live in the framework's library, which host and extensions share, so
/// that both see the same ones.

namespace {

ITestEnvironment* theTestEnvironment = nullptr;
IVarAccess* theVarAccess = nullptr;
UserInterface* theUserInterface = nullptr;

}  // namespace

ITestEnvironment* TestEnvironment() { return theTestEnvironment; }
IVarAccess* VarAccess() { return theVarAccess; }
void SetTestEnvironment(ITestEnvironment* testEnvironment) { theTestEnvironment = testEnvironment; }
void SetVarAccess(IVarAccess* varAccess) { theVarAccess = varAccess; }

UserInterface& Application() {
  if (theUserInterface == nullptr) throw std::logic_error("the host has chosen no user interface");
  return *theUserInterface;
}

void SetApplication(UserInterface* userInterface) { theUserInterface = userInterface; }
