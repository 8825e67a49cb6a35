#include "bench/program/Commands.h"
#include "bench/program/check/CheckDevice.h"
#include "bench/program/system/Failure.h"

namespace kxbench {

namespace {

constexpr ChoiceWord<OutputFormat> CheckFormatWords[] = {
    {"report", OutputFormat::Report}, {"records", OutputFormat::Records}, {"json", OutputFormat::Json}};

class CheckCommand : public Command {
 public:
  std::string Name() const override { return "check"; }
  std::string Summary() const override { return "Check a device against the expectation file FILE"; }

  void Declare(OptionList& list) override {
    list.Argument("FILE", "Expectation file", Needed::Yes, job_.file);
    list.Show({"--plugin", "--device", "--project", "--progress"});
    list.Words("--format", CheckFormatWords,
               "A report to read, the records alone as they are sent, or the diagnosis alone as JSON",
               job_.run.format);
    job_.run.DeclareStrictIn(list);
    list.Flag("--diagnose", "After findings, measure the device again and name its faults", job_.diagnose);
    job_.series.DeclareIn(list);
    job_.run.results.DeclareIn(list);
  }

  ExitStatus Run(const CommonOptions& common) override {
    if (job_.run.format == OutputFormat::Json && !job_.diagnose) {
      throw Failure("--format json is the format of a diagnosis: it needs --diagnose");
    }
    return CheckDevice(common, job_);
  }

 private:
  CheckJob job_;
};

}  // namespace

std::unique_ptr<Command> MakeCheckCommand() { return std::make_unique<CheckCommand>(); }

}  // namespace kxbench
