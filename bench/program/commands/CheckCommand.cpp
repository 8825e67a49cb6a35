#include "bench/program/Commands.h"
#include "bench/program/DiagnoseDevice.h"
#include "bench/program/ExpectationGate.h"
#include "bench/program/Failure.h"
#include "bench/program/RunScript.h"

namespace kxbench {

namespace {

constexpr ChoiceWord<OutputFormat> CheckFormatWords[] = {
    {"report", OutputFormat::Report}, {"records", OutputFormat::Records}, {"json", OutputFormat::Json}};

class CheckCommand : public Command {
 public:
  std::string Name() const override { return "check"; }
  std::string Summary() const override { return "Check a device against the expectation file FILE"; }

  void Declare(OptionList& list) override {
    list.Argument("FILE", "Expectation file", Needed::Yes, file_);
    list.Show({"--plugin", "--device", "--project", "--progress"});
    list.Words("--format", CheckFormatWords,
               "A report to read, the records alone as they are sent, or the diagnosis alone as JSON",
               options_.format);
    options_.DeclareStrictIn(list);
    list.Flag("--diagnose", "After findings, measure the device again and name its faults", diagnose_);
  }

  ExitStatus Run(const CommonOptions& common) override {
    if (options_.format == OutputFormat::Json && !diagnose_) {
      throw Failure("--format json is the format of a diagnosis: it needs --diagnose");
    }
    const ExitStatus checked = RunScript(
        common, options_, file_, [this](const CommandFinder& findCommand, const TKXEnvironment& environment) {
          return SingleCall(CheckCommandName, file_, findCommand, environment);
        });
    return diagnose_ ? Diagnose(common, checked) : checked;
  }

 private:
  /// A check that did not come to its end says nothing about the device, and a good one needs no diagnosis
  /// but for programs that read one.
  ExitStatus Diagnose(const CommonOptions& common, ExitStatus checked) const {
    switch (options_.format) {
      case OutputFormat::Json:
        if (checked > ExitStatus::Findings) return checked;
        return DiagnoseConnectedDevice(common, file_, DiagnosisFormat::Json, checked);
      case OutputFormat::Records:
        if (checked != ExitStatus::Findings) return checked;
        return DiagnoseConnectedDevice(common, file_, DiagnosisFormat::Aside, checked);
      case OutputFormat::Report:
        break;
    }
    if (checked != ExitStatus::Findings) return checked;
    return DiagnoseConnectedDevice(common, file_, DiagnosisFormat::Report, checked);
  }

  std::string file_;
  RunOptions options_;
  bool diagnose_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeCheckCommand() { return std::make_unique<CheckCommand>(); }

}  // namespace kxbench
