#include <filesystem>
#include <system_error>

#include "bench/program/Commands.h"
#include "bench/program/commands/ExpectationReport.h"
#include "bench/program/host/ExpectationGate.h"
#include "bench/program/host/Extension.h"
#include "bench/program/host/HostSetup.h"
#include "bench/program/host/Interaction.h"
#include "bench/program/host/RecordReceiver.h"
#include "bench/program/output/Output.h"
#include "bench/program/system/System.h"

namespace kxbench {

namespace {

enum class InfoFormat { Report, Json };

constexpr ChoiceWord<InfoFormat> InfoFormatWords[] = {{"report", InfoFormat::Report},
                                                      {"json", InfoFormat::Json}};

SavedAt SavingTimeOf(const std::string& file) {
  std::error_code error;
  const auto time = std::filesystem::last_write_time(PathFromUtf8(file), error);
  if (error) throw Failure(file + ": cannot be read: " + error.message());
  return std::chrono::time_point_cast<SavedAt::duration>(std::chrono::file_clock::to_sys(time));
}

class InfoCommand : public Command {
 public:
  std::string Name() const override { return "info"; }
  std::string Summary() const override {
    return "Tell what the expectation file FILE holds, or describe the plug-in";
  }
  std::string Notes() const override {
    return "Without FILE the plug-in and its commands are described. With FILE nothing is loaded.";
  }

  void Declare(OptionList& list) override {
    list.Argument("FILE", "Expectation file", Needed::No, file_);
    list.Show({"--plugin", "--project"});
    list.Words("--format", InfoFormatWords, "Of what FILE holds: a report to read, or one JSON object",
               format_);
    list.Flag("--strict", "Refuse an expectation file that leaves pairs unchecked, instead of warning",
              strict_);
  }

  ExitStatus Run(const CommonOptions& common) override {
    HostSetup host(common, file_);
    Interaction interaction(Surface::Silent, std::nullopt);
    if (!file_.empty()) return DescribeFile(host, interaction);
    if (format_ != InfoFormat::Report) throw Failure("--format json needs a FILE");
    RecordReceiver receiver([](const std::string&) {});
    const Extension extension(PluginFile(common.plugin), host.HostValues(receiver.Handle()));
    StandardOutput().Write(DescribeExtension(extension));
    return ExitStatus::NoFindings;
  }

 private:
  ExitStatus DescribeFile(const HostSetup& host, Interaction& interaction) const {
    const ExpectationGate gate(strict_, [&interaction](const std::string& line) { interaction.Tell(line); });
    const wiring::ExpectationFacts facts = gate.AdmitFile("", file_);
    const wiring::ChannelNames names(host.CurrentProject().IniFile());
    const auto text = format_ == InfoFormat::Json ? ExpectationJson : ExpectationReport;
    StandardOutput().Write(text(file_, facts, names, SavingTimeOf(file_)));
    return ExitStatus::NoFindings;
  }

  std::string file_;
  InfoFormat format_ = InfoFormat::Report;
  bool strict_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeInfoCommand() { return std::make_unique<InfoCommand>(); }

}  // namespace kxbench
