#include "bench/program/Commands.h"
#include "bench/program/ExpectationGate.h"
#include "bench/program/RunScript.h"

namespace kxbench {

namespace {

class CheckCommand : public Command {
 public:
  std::string Name() const override { return "check"; }
  std::string Summary() const override { return "Check a device against the expectation file FILE"; }

  void Declare(OptionList& list) override {
    list.Argument("FILE", "Expectation file", Needed::Yes, file_);
    list.Show({"--plugin", "--device", "--project", "--progress"});
    options_.DeclareIn(list);
  }

  ExitStatus Run(const CommonOptions& common) override {
    return RunScript(common, options_, file_,
                     [this](const CommandFinder& findCommand, const TKXEnvironment& environment) {
                       return SingleCall(CheckCommandName, file_, findCommand, environment);
                     });
  }

 private:
  std::string file_;
  RunOptions options_;
};

}  // namespace

std::unique_ptr<Command> MakeCheckCommand() { return std::make_unique<CheckCommand>(); }

}  // namespace kxbench
