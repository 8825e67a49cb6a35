#pragma once

#include <cstdint>
#include <string>

#include "bench/program/host/CommonOptions.h"
#include "bench/program/host/HostHelp.h"
#include "bench/program/host/HostInterfaces.h"
#include "bench/program/host/Project.h"
#include "framework/ScriptEnvironment.h"
#include "framework/kxcommon.h"

namespace kxbench {

/// What extensions find in the host: script variables, the global interfaces and the table of named values.
/// Outlives every extension.
class HostSetup {
 public:
  /// Sets the project's variables for a command that works on `file` (UTF-8; may be empty) and hands the
  /// device to the simulated tester, which reads it when its library is loaded. Throws Failure when either
  /// cannot be.
  HostSetup(const CommonOptions& options, const std::string& file);
  ~HostSetup();
  HostSetup(const HostSetup&) = delete;
  HostSetup& operator=(const HostSetup&) = delete;

  kx::ScriptParser& Parser() { return parser_; }
  const HostTestEnvironment& TestState() const { return testEnvironment_; }
  void ForgetCancel() { testEnvironment_.ForgetCancel(); }
  const Project& CurrentProject() const { return project_; }

  /// Puts `expression` into the file-name control that the extension hands over, when a dialog that was
  /// opened without a file has made its data: it asks for the hardware then. Done once.
  void OfferFileName(std::string expression);

  /// The table that an extension's entry gets; `messageWindow` receives its records.
  TKXHashTable HostValues(std::uintptr_t messageWindow);

 private:
  Project project_;
  kx::ScriptParser parser_;
  HostTestEnvironment testEnvironment_;
  HostVarAccess varAccess_;
  HostHelp help_;
};

}  // namespace kxbench
