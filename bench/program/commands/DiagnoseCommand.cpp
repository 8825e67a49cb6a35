#include <optional>
#include <system_error>

#include "bench/program/Commands.h"
#include "bench/program/check/DiagnoseDevice.h"
#include "bench/program/check/RecordedNets.h"
#include "bench/program/system/Failure.h"
#include "text/FileAccess.h"

namespace kxbench {

namespace {

constexpr ChoiceWord<DiagnosisFormat> DiagnosisWords[] = {{"report", DiagnosisFormat::Report},
                                                          {"json", DiagnosisFormat::Json}};

class DiagnoseCommand : public Command {
 public:
  std::string Name() const override { return "diagnose"; }
  std::string Summary() const override {
    return "Measure a device and name its faults as people repair them";
  }
  std::string Notes() const override {
    return "Nets are measured as learning measures them, with what FILE says, and nothing is saved. The "
           "channels' names\n"
           "come from the project's ini file.";
  }

  void Declare(OptionList& list) override {
    list.Argument("FILE", "Expectation file", Needed::Yes, job_.file);
    list.Show({"--device", "--project", "--progress"});
    list.Words("--format", DiagnosisWords, "A report to read, or one JSON object", job_.format);
    list.Value("--records", "RECORDS", "Diagnose the records of a check kept in RECORDS, without a device",
               records_);
    job_.series.DeclareIn(list);
    job_.results.DeclareIn(list);
  }

  ExitStatus Run(const CommonOptions& common) override {
    if (!records_) return DiagnoseDevice(common, job_);
    if (job_.series.Any()) throw Failure("--repeat and --until-fault need a device: not with --records");
    if (job_.results.Wanted()) throw Failure("a result is one of a check: not with --records");
    return DiagnoseRecords(common, job_.file, job_.format, RecordsIn(ReadRecords()));
  }

 private:
  std::string ReadRecords() const {
    try {
      return shorttest::ReadWholeFile(shorttest::AbsolutePath(*records_));
    } catch (const std::system_error& error) {
      throw Failure("--records: " + std::string(error.what()));
    }
  }

  DiagnoseJob job_;
  std::optional<std::string> records_;
};

}  // namespace

std::unique_ptr<Command> MakeDiagnoseCommand() { return std::make_unique<DiagnoseCommand>(); }

}  // namespace kxbench
