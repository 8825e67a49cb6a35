#pragma once

#include <string>
#include <vector>

#include "framework/Kxcommandinterfaces.h"
#include "framework/ScriptEnvironment.h"

namespace shorttest::testkit {

/// The host's variables, for a dialog under test.
class ProjectVariables : public IVarAccess {
 public:
  explicit ProjectVariables(const TKXEnvironment& environment) : environment_(environment) {}
  virtual ~ProjectVariables() = default;

  int QueryInterface(const char*, void**) override { return -1; }
  int AddRef() override { return 1; }
  int Release() override { return 1; }
  const TKXValue* GetVariable(const std::string& name) override { return environment_.FindVariable(name); }
  void AttachEdit(TKXEdit& edit) override { attached.push_back(&edit); }

  std::vector<TKXEdit*> attached;

 private:
  const TKXEnvironment& environment_;
};

}  // namespace shorttest::testkit
