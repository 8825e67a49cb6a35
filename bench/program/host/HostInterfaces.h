#pragma once

#include "framework/Kxcommandinterfaces.h"
#include "framework/kxscript.h"

namespace kxbench {

/// The running test, as extensions reach it: remembers that a command was cancelled.
class HostTestEnvironment final : public ITestEnvironment {
 public:
  HostTestEnvironment() = default;
  virtual ~HostTestEnvironment() = default;
  HostTestEnvironment(const HostTestEnvironment&) = delete;
  HostTestEnvironment& operator=(const HostTestEnvironment&) = delete;

  int QueryInterface(const char* name, void** object) override;
  int AddRef() override;
  int Release() override;
  void CancelTest() override { cancelled_ = true; }

  bool Cancelled() const { return cancelled_; }

  /// For the host, before the next command.
  void ForgetCancel() { cancelled_ = false; }

 private:
  int references_ = 1;
  bool cancelled_ = false;
};

/// The script environment's variables, as extensions reach them.
class HostVarAccess final : public IVarAccess {
 public:
  /// `environment` outlives the object.
  explicit HostVarAccess(const TKXEnvironment& environment) : environment_(environment) {}
  virtual ~HostVarAccess() = default;
  HostVarAccess(const HostVarAccess&) = delete;
  HostVarAccess& operator=(const HostVarAccess&) = delete;

  int QueryInterface(const char* name, void** object) override;
  int AddRef() override;
  int Release() override;
  const TKXValue* GetVariable(const std::string& name) override { return environment_.FindVariable(name); }

  /// This host offers no help with typing variables' names: the control stays as it is.
  void AttachEdit(TKXEdit& edit) override { edit_ = &edit; }

  /// The last file-name control that an extension handed over; null when there was none.
  TKXEdit* AttachedEdit() const { return edit_; }

 private:
  const TKXEnvironment& environment_;
  TKXEdit* edit_ = nullptr;
  int references_ = 1;
};

}  // namespace kxbench
