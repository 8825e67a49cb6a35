#include "bench/learning/LearnProgress.h"
#include "bench/program/Commands.h"
#include "bench/program/commands/SelfTestReport.h"
#include "bench/program/host/DeviceHint.h"
#include "bench/program/host/HostSetup.h"
#include "bench/program/host/Interaction.h"
#include "bench/program/host/OptionValues.h"
#include "bench/program/output/Output.h"
#include "bench/program/system/DynamicLibrary.h"
#include "bench/program/system/Failure.h"
#include "bench/program/system/Guard.h"
#include "bench/program/system/System.h"

namespace kxbench {

namespace {

enum class SelfTestFormat { Report, Json };

constexpr ChoiceWord<SelfTestFormat> SelfTestWords[] = {{"report", SelfTestFormat::Report},
                                                        {"json", SelfTestFormat::Json}};

class SelfTestCommand : public Command {
 public:
  std::string Name() const override { return "selftest"; }
  std::string Summary() const override { return "Test the tester itself, every relay, on an empty fixture"; }
  std::string Notes() const override {
    return "Unplug the device first. Voltages are looked for before anything else; a live fixture ends the "
           "test.";
  }

  void Declare(OptionList& list) override {
    list.Show({"--device", "--project", "--progress"});
    list.Value("--channels", "FIRST-LAST", "Channels (default: those of all cards that answer)",
               [this](const std::string& text) { channels_ = ReadChannels(text); });
    list.Words("--format", SelfTestWords, "A report to read, or one JSON object", format_);
  }

  ExitStatus Run(const CommonOptions& common) override {
    if (channels_ && channels_->last > MostSelfTestChannels) {
      throw Failure("--channels: a tester has " + std::to_string(MostSelfTestChannels) + " channels at most");
    }
    const HostSetup host(common, "");
    EnterGuard();
    const wiring::ChannelNames names(host.CurrentProject().IniFile());
    Interaction interaction(SurfaceOf(common.progress), std::nullopt);
    const SelfTestSummary summary = Test();
    if (summary.end == SelfTestEnd::Failed) {
      throw Failure("selftest: " + WithDeviceHint(summary.failure, common.device));
    }
    if (summary.end == SelfTestEnd::Cancelled) {
      interaction.Tell("selftest: cancelled");
      return ExitStatus::Cancelled;
    }
    interaction.HideProgress();
    const bool json = format_ == SelfTestFormat::Json;
    StandardOutput().Write(json ? SelfTestJson(summary) : SelfTestReport(summary, names));
    return StatusOf(summary);
  }

 private:
  SelfTestSummary Test() const {
    const DynamicLibrary module("the self-test module",
                                ProgramFolder() / LibraryFileName("kxselftest", LibraryPrefix::Lib));
    const auto test = module.Find<KxSelfTest>(KxSelfTestName);
    if (test == nullptr) {
      throw Failure(Utf8FromPath(module.File()) + " is no self-test module: it does not export " +
                    KxSelfTestName);
    }
    LearnProgress progress("Self-test");
    SelfTestRequest request;
    if (channels_) {
      request.firstChannel = channels_->first;
      request.lastChannel = channels_->last;
    }
    request.progress = [&progress](double position) { return progress.Report(position); };
    SelfTestSummary summary;
    test(request, summary);
    return summary;
  }

  std::optional<ChannelRange> channels_;
  SelfTestFormat format_ = SelfTestFormat::Report;
};

}  // namespace

std::unique_ptr<Command> MakeSelfTestCommand() { return std::make_unique<SelfTestCommand>(); }

}  // namespace kxbench
