#include <filesystem>
#include <system_error>

#include "bench/program/Commands.h"
#include "bench/program/host/ExpectationGate.h"
#include "bench/program/host/Extension.h"
#include "bench/program/host/HostSetup.h"
#include "bench/program/host/Interaction.h"
#include "bench/program/host/RecordReceiver.h"
#include "bench/program/output/Output.h"
#include "bench/program/system/Guard.h"
#include "bench/program/system/System.h"

namespace kxbench {

namespace {

/// True when the dialog is to make the file. Throws Failure when its folder does not exist.
bool IsNew(const std::string& file) {
  const std::filesystem::path path = std::filesystem::absolute(PathFromUtf8(file));
  std::error_code error;
  if (std::filesystem::exists(path, error)) return false;
  if (!std::filesystem::is_directory(path.parent_path(), error)) {
    throw Failure(file + ": there is no folder " + Utf8FromPath(path.parent_path()));
  }
  return true;
}

class EditCommand : public Command {
 public:
  std::string Name() const override { return "edit"; }
  std::string Summary() const override { return "Open the editor dialog, on FILE or on a new expectation"; }
  std::string Notes() const override {
    return "A FILE that does not exist is made when the dialog is closed with OK. Ctrl-C, "
           "SIGTERM and SIGHUP\n"
           "press its cancel button. When it was closed with OK, the command's script line is printed.";
  }

  void Declare(OptionList& list) override {
    list.Argument("FILE", "Expectation file", Needed::No, file_);
    list.Show({"--plugin", "--device", "--project"});
  }

  ExitStatus Run(const CommonOptions& common) override {
    const bool isNew = file_.empty() || IsNew(file_);
    HostSetup host(common, file_);
    EnterGuard();
    if (!isNew) TellGuardOfExpectation(file_);
    Interaction interaction(Surface::Windows, std::nullopt);
    RecordReceiver receiver([](const std::string&) {});
    const Extension extension(PluginFile(common.plugin), host.HostValues(receiver.Handle()));
    const Script script = SingleCall(
        CheckCommandName, file_, [&](const std::string& name) { return extension.FindCommand(name); },
        host.Parser().GetEnvironment());

    const ScriptStep& step = script.front();
    if (isNew) {
      // The dialog opens as for a command that was never edited, and is given the file's name once it shows.
      const std::string& parameter = step.command->Parameters().front().name;
      if (!file_.empty()) {
        interaction.Tell(file_ + " does not exist: OK makes it");
        host.OfferFileName(step.params->GetExpression(parameter));
      }
      step.params->Set(parameter, "", nullptr);
    }
    bool confirmed = false;
    std::string line;
    CallExtension([&] {
      confirmed = step.command->Edit(*step.params);
      if (confirmed) step.command->GetDescription(line, *step.params);
    });
    if (!confirmed) return ExitStatus::Cancelled;
    StandardOutput().Write(line + "\n");
    return ExitStatus::NoFindings;
  }

 private:
  std::string file_;
};

}  // namespace

std::unique_ptr<Command> MakeEditCommand() { return std::make_unique<EditCommand>(); }

}  // namespace kxbench
