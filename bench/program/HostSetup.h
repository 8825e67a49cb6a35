#pragma once

#include <cstdint>

#include "bench/program/HostInterfaces.h"
#include "bench/program/Options.h"
#include "framework/ScriptEnvironment.h"
#include "framework/kxcommon.h"

namespace kxbench {

/// What extensions find in the host: script variables, the global interfaces and the table of named values.
/// Outlives every extension.
class HostSetup {
 public:
  /// Sets the project's variables and hands the device to the simulated tester, which reads it when its
  /// library is loaded. Throws Failure when either cannot be.
  explicit HostSetup(const Options& options);
  ~HostSetup();
  HostSetup(const HostSetup&) = delete;
  HostSetup& operator=(const HostSetup&) = delete;

  kx::ScriptParser& Parser() { return parser_; }
  const HostTestEnvironment& TestState() const { return testEnvironment_; }

  /// The table that an extension's entry gets; `messageWindow` receives its records.
  TKXHashTable HostValues(std::uintptr_t messageWindow);

 private:
  kx::ScriptParser parser_;
  HostTestEnvironment testEnvironment_;
  HostVarAccess varAccess_;
};

}  // namespace kxbench
