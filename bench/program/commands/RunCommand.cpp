#include "bench/program/Commands.h"
#include "bench/program/check/RunScript.h"
#include "bench/program/system/Failure.h"
#include "text/FileAccess.h"
#include "text/Paths.h"

namespace kxbench {

namespace {

constexpr const char* ScriptNotes =
    R"(A script holds one command call a line; // starts a comment. Strings stand in double quotes,
a doubled quote stands for one; + joins texts; PROJEKTPFAD (which ends in a separator) and
PROJECTNAME are variables. The expectation files that a script names are looked at before its
first line runs.)";

std::string ReadScriptFile(const std::string& name) {
  try {
    return shorttest::ReadWholeFile(shorttest::PathFromUtf8(name), shorttest::MostTextBytes,
                                    shorttest::ReadFrom::Anything);
  } catch (const shorttest::FileTooLarge& error) {
    throw Failure("cannot read the script " + name + ": " + error.Reason());
  } catch (const shorttest::FileError&) {
    throw Failure("cannot read the script " + name);
  }
}

class RunCommand : public Command {
 public:
  std::string Name() const override { return "run"; }
  std::string Summary() const override { return "Run the script FILE"; }
  std::string Notes() const override { return ScriptNotes; }

  void Declare(OptionList& list) override {
    list.Argument("FILE", "Script", Needed::Yes, file_);
    list.Show({"--plugin", "--device", "--project", "--progress"});
    options_.DeclareIn(list);
  }

  ExitStatus Run(const CommonOptions& common) override {
    return RunScript(common, options_, file_,
                     [this](const CommandFinder& findCommand, const TKXEnvironment& environment) {
                       return ReadScript(file_, ReadScriptFile(file_), findCommand, environment);
                     });
  }

 private:
  std::string file_;
  RunOptions options_;
};

}  // namespace

std::unique_ptr<Command> MakeRunCommand() { return std::make_unique<RunCommand>(); }

}  // namespace kxbench
