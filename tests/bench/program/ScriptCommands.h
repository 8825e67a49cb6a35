#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "framework/AsciiCase.h"
#include "framework/kxcomponents.h"

namespace kxbench {

/// Commands for script tests: ShortTest(Datafile : String) and Echo(First : String; Second : Integer), whose
/// runs do what the test says.
class ScriptCommands {
 public:
  /// Given the text of the first parameter.
  using Action = std::function<void(const std::string& argument)>;

  explicit ScriptCommands(TKXParser& parser) {
    for (const char* prototype :
         {"procedure ShortTest(Datafile : String)", "procedure Echo(First : String; Second : Integer)"}) {
      commands_.push_back(std::make_unique<Command>(prototype, parser, *this));
    }
  }

  TKXFuncRunEdit* Find(const std::string& name) const {
    for (const auto& command : commands_) {
      if (kx::EqualIgnoringCase(command->CommandName(), name)) return command.get();
    }
    return nullptr;
  }

  Action onRun;

 private:
  class Command : public TKXFuncRunEdit {
   public:
    Command(const std::string& prototype, TKXParser& parser, ScriptCommands& owner)
        : TKXFuncRunEdit(prototype, nullptr, &parser), owner_(owner) {}
    int GetID() override { return 1; }
    TKXRunEdit* Create(TKXParser* parser) const override { return new Command(Prototype(), *parser, owner_); }
    void Run(const TParamList& params) override {
      owner_.onRun(TStringValue::GetVal(params.GetValue(Parameters().front().name)));
    }

   private:
    ScriptCommands& owner_;
  };

  std::vector<std::unique_ptr<Command>> commands_;
};

}  // namespace kxbench
