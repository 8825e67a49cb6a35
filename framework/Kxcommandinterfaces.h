#pragma once

#include <string>

#include "contracts/Export.h"

class TKXEdit;
class TKXValue;

/// Host unit Kxcommandinterfaces: the two global interfaces of the host that extensions call. They are
/// reference-counted interfaces, so three operations stand before the first of their own.

class IKXUnknown {
 public:
  virtual int QueryInterface(const char* name, void** object) = 0;
  virtual int AddRef() = 0;
  virtual int Release() = 0;

 protected:
  ~IKXUnknown() = default;
};

/// The running test.
class ITestEnvironment : public IKXUnknown {
 public:
  /// The user cancelled the running command: the host stops the script after it.
  virtual void CancelTest() = 0;

 protected:
  ~ITestEnvironment() = default;
};

/// Access to the host's script variables.
class IVarAccess : public IKXUnknown {
 public:
  /// The variable's value, owned by the host and valid until the next call; null when there is none.
  virtual const TKXValue* GetVariable(const std::string& name) = 0;

  /// Lets the host attach its variable support to an edit control of a command's dialog. The control outlives
  /// the dialog's showing; the host keeps no pointer to it after that.
  virtual void AttachEdit(TKXEdit& edit) = 0;

 protected:
  ~IVarAccess() = default;
};

/// The host's globals; null outside a host. Set before extensions are loaded.
KX_API ITestEnvironment* TestEnvironment();
KX_API IVarAccess* VarAccess();

/// For the host alone; the host keeps ownership.
KX_API void SetTestEnvironment(ITestEnvironment* testEnvironment);
KX_API void SetVarAccess(IVarAccess* varAccess);
