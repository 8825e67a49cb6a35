#include "bench/program/DiagnoseDevice.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "bench/program/DeviceDiagnosis.h"
#include "bench/program/DiagnosisReport.h"
#include "bench/program/ExpectationGate.h"
#include "bench/program/Guard.h"
#include "bench/program/HostSetup.h"
#include "bench/program/Interaction.h"
#include "bench/program/Output.h"
#include "bench/program/RecordedNets.h"
#include "bench/wiring/Contradictions.h"

namespace kxbench {

namespace {

/// Pairs that contradict the rest of the file are told one by one up to this many.
constexpr std::size_t MostContradictions = 5;

void TellContradictions(const std::string& file, const wiring::ChannelNames& names,
                        Interaction& interaction) {
  const std::vector<wiring::Contradiction> all = wiring::ContradictionsInFile(file);
  for (std::size_t i = 0; i < std::min(all.size(), MostContradictions); ++i) {
    std::string chain;
    for (const std::int32_t channel : all[i].chain) {
      chain += (chain.empty() ? "" : " - ") + names.Labelled(channel);
    }
    std::string line = "warning: " + file + " contradicts itself: ";
    line += names.Labelled(all[i].lower) + " and " + names.Labelled(all[i].higher);
    line += " should not be connected, but " + chain + " should be";
    interaction.Tell(line);
  }
  if (all.size() > MostContradictions) {
    interaction.Tell("warning: " + std::to_string(all.size() - MostContradictions) +
                     " contradictions more in " + file);
  }
}

enum class Source { Device, Records };

/// What a diagnosis needs of its surroundings: the expectation, the names, somebody to talk to.
class DiagnosisRun {
 public:
  DiagnosisRun(const CommonOptions& common, const std::string& file, DiagnosisFormat format, Source source,
               bool afterCheck)
      : host_(common, file),
        names_(host_.CurrentProject().IniFile()),
        format_(format),
        afterCheck_(afterCheck) {
    if (source == Source::Device) {
      EnterGuard();
      TellGuardOfExpectation(file);
    }
    interaction_.emplace(SurfaceOf(common.progress), mrIgnore);
    // A check has told of the file's doubts already.
    const auto warn = [this](const std::string& line) {
      if (!afterCheck_) User().Tell(line);
    };
    facts_ = ExpectationGate(false, warn).AdmitFile("", file);
    TellContradictions(file, names_, User());
  }

  const wiring::ExpectationFacts& Facts() const { return facts_; }
  diagnosis::Observation Expected() const { return ExpectedOnly(facts_, names_); }
  Interaction& User() { return *interaction_; }

  ExitStatus Print(const DeviceDiagnosis& diagnosis) {
    User().HideProgress();
    switch (format_) {
      case DiagnosisFormat::Json:
        StandardOutput().Write(DiagnosisJson(diagnosis, names_));
        break;
      case DiagnosisFormat::Aside:
        TellLines(DiagnosisReport(diagnosis, names_));
        break;
      case DiagnosisFormat::Report:
        StandardOutput().Write((afterCheck_ ? "\nDiagnosis:\n" : "") + DiagnosisReport(diagnosis, names_));
    }
    return diagnosis.Status();
  }

 private:
  void TellLines(const std::string& text) {
    for (std::size_t begin = 0; begin < text.size();) {
      const std::size_t end = text.find('\n', begin);
      if (end > begin) User().Tell(text.substr(begin, end - begin));
      begin = end + 1;
    }
  }

  HostSetup host_;
  std::optional<Interaction> interaction_;
  wiring::ChannelNames names_;
  DiagnosisFormat format_;
  bool afterCheck_;
  wiring::ExpectationFacts facts_;
};

}  // namespace

ExitStatus DiagnoseConnectedDevice(const CommonOptions& common, const std::string& file,
                                   DiagnosisFormat format, std::optional<ExitStatus> checked) {
  DiagnosisRun run(common, file, format, Source::Device, checked.has_value());
  if (checked == ExitStatus::NoFindings) return run.Print(DiagnosisOfGoodDevice(run.Expected()));
  const MeasureSummary summary = MeasureThroughModule(common, file);
  if (summary.end == MeasureEnd::Cancelled) {
    run.User().Tell("diagnose " + file + ": cancelled");
    return ExitStatus::Cancelled;
  }
  DeviceDiagnosis diagnosis = DiagnosisOf(summary, run.Expected());
  if (checked == ExitStatus::Findings) {
    diagnosis.checkFailed = true;
    if (diagnosis.voltages.empty() && diagnosis.faults.findings.empty()) {
      diagnosis.gaps.emplace_back(
          "why the check had findings that did not show again: a loose contact, or a resistance near a "
          "threshold");
    }
  }
  return run.Print(diagnosis);
}

ExitStatus DiagnoseRecords(const CommonOptions& common, const std::string& file, DiagnosisFormat format,
                           const std::vector<Record>& records) {
  DiagnosisRun run(common, file, format, Source::Records, false);
  return run.Print(DiagnosisOfRecords(records, run.Facts(), run.Expected()));
}

}  // namespace kxbench
