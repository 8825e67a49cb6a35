#include "bench/learning/LearnModule.h"
#include "bench/program/Commands.h"
#include "bench/program/commands/LearnReport.h"
#include "bench/program/host/DeviceHint.h"
#include "bench/program/host/HostSetup.h"
#include "bench/program/host/Interaction.h"
#include "bench/program/host/OptionValues.h"
#include "bench/program/output/Output.h"
#include "bench/program/system/DynamicLibrary.h"
#include "bench/program/system/Failure.h"
#include "bench/program/system/Guard.h"
#include "bench/program/system/SaveProbe.h"
#include "bench/program/system/System.h"

namespace kxbench {

namespace {

enum class NearThreshold { Ask, Ignore, Cancel };

constexpr ChoiceWord<NearThreshold> NearThresholdWords[] = {
    {"ask", NearThreshold::Ask}, {"ignore", NearThreshold::Ignore}, {"cancel", NearThreshold::Cancel}};
constexpr ChoiceWord<std::int32_t> VoltageControlWords[] = {{"0", 0}, {"1", 1}, {"2", 2}};

bool SomebodyIsThere(const CommonOptions& common, const Terminal& terminal) {
  return common.progress == ProgressChoice::Window || terminal.CanAsk();
}

class LearnCommand : public Command {
 public:
  std::string Name() const override { return "learn"; }
  std::string Summary() const override { return "Learn a known-good device into the expectation file FILE"; }
  std::string Notes() const override {
    return "A FILE that exists keeps its thresholds and options, its excluded pairs and suspended channels; "
           "how the new\n"
           "expectation differs is told before it is replaced. One that is damaged is not built upon: with "
           "--channels\n"
           "a new one takes its place, after a question or with --overwrite.";
  }

  void Declare(OptionList& list) override {
    list.Argument("FILE", "Expectation file", Needed::Yes, file_);
    list.Show({"--device", "--project", "--progress"});
    list.Value("--channels", "FIRST-LAST", "Channels; needed when FILE does not exist",
               [this](const std::string& text) { channels_ = ReadChannels(text); });
    list.Value("--threshold", "OHM", "Below this resistance two channels are connected",
               [this](const std::string& text) { thresholdOhm_ = ReadThreshold(text); });
    list.Words("--voltage-control", VoltageControlWords, "None; measure voltages; wait for discharge too",
               voltageControl_);
    list.Words("--near-threshold", NearThresholdWords,
               "On a resistance near the threshold (default: ask on a terminal, else ignore)",
               nearThreshold_);
    list.Flag("--overwrite", "Put a new expectation in place of a damaged FILE, without asking", overwrite_);
  }

  ExitStatus Run(const CommonOptions& common) override {
    const std::optional<int> answer = NearThresholdAnswer(common);
    RequireSavable(file_);
    HostSetup host(common, file_);
    EnterGuard();
    TellGuardOfExpectation(file_);
    const wiring::ChannelNames names(host.CurrentProject().IniFile());
    Interaction interaction(SurfaceOf(common.progress), answer);
    const DynamicLibrary module("the learn module",
                                ProgramFolder() / LibraryFileName("kxlearn", LibraryPrefix::Lib));
    const auto learn = module.Find<KxLearn>(KxLearnName);
    if (learn == nullptr) {
      throw Failure(Utf8FromPath(module.File()) + " is no learn module: it does not export " + KxLearnName);
    }

    LearnRequest request = Request();
    request.beforeReplacing = [&](const LearnDifference& difference) {
      for (const std::string& line : DifferenceLines(file_, difference, names)) interaction.Tell(line);
    };
    LearnSummary summary;
    learn(request, summary);
    if (summary.end == LearnEnd::Damaged) {
      if (!ReplacesDamaged(common, summary.failure, interaction)) return Cancelled(interaction);
      request.makeNew = true;
      learn(request, summary);
    }
    switch (summary.end) {
      case LearnEnd::Failed:
      case LearnEnd::Damaged:
        throw Failure("learn " + file_ + ": " + WithDeviceHint(summary.failure, common.device));
      case LearnEnd::Cancelled:
        return Cancelled(interaction);
      case LearnEnd::Learned:
        break;
    }
    interaction.HideProgress();
    StandardOutput().Write(LearnReport(file_, summary, names));
    return ExitStatus::NoFindings;
  }

 private:
  /// The answer to the question about a resistance near the threshold; none to ask it.
  std::optional<int> NearThresholdAnswer(const CommonOptions& common) const {
    const bool somebodyThere = SomebodyIsThere(common, *OpenTerminal());
    if (!nearThreshold_) return somebodyThere ? std::nullopt : std::optional<int>(mrIgnore);
    switch (*nearThreshold_) {
      case NearThreshold::Ignore:
        return mrIgnore;
      case NearThreshold::Cancel:
        return mrCancel;
      case NearThreshold::Ask:
        break;
    }
    if (!somebodyThere) throw Failure("--near-threshold ask: there is no terminal to ask on");
    return std::nullopt;
  }

  /// Whether a new expectation may take the place of the damaged one. Throws Failure where nobody can say so.
  bool ReplacesDamaged(const CommonOptions& common, const std::string& damage,
                       Interaction& interaction) const {
    const std::string fault = file_ + " is damaged (" + damage + ")";
    if (!channels_) throw Failure(fault + "; a new one in its place needs --channels FIRST-LAST");
    if (overwrite_) return true;
    if (!SomebodyIsThere(common, *OpenTerminal())) {
      throw Failure(fault + "; a new one in its place needs --overwrite");
    }
    MessageBoxRequest question;
    question.text = fault + ".\nReplace it by a new expectation, of which nothing old is kept?";
    question.kind = MessageKind::Warning;
    question.buttons = {mrOk, mrAbort};  // not Cancel, which --near-threshold may answer
    return interaction.Get().ShowMessage(question) == mrOk;
  }

  LearnRequest Request() const {
    LearnRequest request;
    request.file = file_;
    if (channels_) {
      request.firstChannel = channels_->first;
      request.lastChannel = channels_->last;
    }
    request.thresholdOhm = thresholdOhm_;
    request.voltageControl = voltageControl_;
    return request;
  }

  ExitStatus Cancelled(Interaction& interaction) const {
    interaction.Tell("learn " + file_ + ": cancelled, nothing was saved");
    return ExitStatus::Cancelled;
  }

  std::string file_;
  std::optional<ChannelRange> channels_;
  std::optional<double> thresholdOhm_;
  std::optional<std::int32_t> voltageControl_;
  std::optional<NearThreshold> nearThreshold_;
  bool overwrite_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeLearnCommand() { return std::make_unique<LearnCommand>(); }

}  // namespace kxbench
