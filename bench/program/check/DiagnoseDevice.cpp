#include "bench/program/check/DiagnoseDevice.h"

#include <optional>
#include <utility>

#include "bench/program/check/CheckResult.h"
#include "bench/program/check/DeviceDiagnosis.h"
#include "bench/program/check/DiagnosisReport.h"
#include "bench/program/check/RecordedNets.h"
#include "bench/program/check/ResultRecorder.h"
#include "bench/program/host/ContradictionWarnings.h"
#include "bench/program/host/ExpectationGate.h"
#include "bench/program/host/HostSetup.h"
#include "bench/program/host/Interaction.h"
#include "bench/program/output/Output.h"
#include "bench/program/system/Guard.h"

namespace kxbench {

namespace {

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
    TellContradictions(file, wiring::ContradictionsIn(TShortTestData(file)), names_, User());
  }

  const wiring::ExpectationFacts& Facts() const { return facts_; }
  diagnosis::Observation Expected() const { return ExpectedOnly(facts_, names_); }
  const wiring::ChannelNames& Names() const { return names_; }
  const Project& CurrentProject() const { return host_.CurrentProject(); }
  Interaction& User() { return *interaction_; }

  ExitStatus Print(const DeviceDiagnosis& diagnosis) {
    User().HideProgress();
    switch (format_) {
      case DiagnosisFormat::Json:
        StandardOutput().Write(DiagnosisJson(diagnosis, names_));
        break;
      case DiagnosisFormat::Aside:
        TellLines(User(), DiagnosisReport(diagnosis, names_));
        break;
      case DiagnosisFormat::Report:
        StandardOutput().Write((afterCheck_ ? "\nDiagnosis:\n" : "") + DiagnosisReport(diagnosis, names_));
    }
    return diagnosis.Status();
  }

 private:
  HostSetup host_;
  std::optional<Interaction> interaction_;
  wiring::ChannelNames names_;
  DiagnosisFormat format_;
  bool afterCheck_;
  wiring::ExpectationFacts facts_;
};

ExitStatus Cancelled(DiagnosisRun& run, const std::string& file) {
  run.User().Tell("diagnose " + file + ": cancelled");
  return ExitStatus::Cancelled;
}

/// The diagnosis of a device as often as it is asked for, and its result.
class DiagnosisSeries {
 public:
  DiagnosisSeries(const CommonOptions& common, const DiagnoseJob& job, DiagnosisRun& run,
                  ResultRecorder& recorder)
      : common_(common), job_(job), run_(run), recorder_(recorder), series_(job.series, SteadySeconds) {}

  ExitStatus Run() {
    std::optional<DeviceDiagnosis> shown;  // the first with faults, else the last
    bool cancelled = false;
    while (series_.GoesOn() && !cancelled) {
      std::optional<DeviceDiagnosis> diagnosis = Measure();
      cancelled = !diagnosis;
      if (!diagnosis) break;
      const bool first = series_.Faulty() == 0;
      series_.Ended(FaultsIn(*diagnosis));
      if (first) shown = std::move(diagnosis);
      if (first && series_.Faulty() > 0 && job_.series.Any())
        run_.User().Tell("faults in " + series_.Place());
    }
    ExitStatus status = ExitStatus::Cancelled;
    if (shown && (!cancelled || series_.Faulty() > 0)) status = run_.Print(*shown);
    if (cancelled) status = Cancelled(run_, job_.file);
    if (job_.series.Any()) TellLines(run_.User(), series_.Summary());
    return status;
  }

 private:
  /// One measurement, its result kept; none when it was cancelled.
  std::optional<DeviceDiagnosis> Measure() {
    recorder_.Begin(job_.file);
    MeasureSummary summary;
    try {
      summary = MeasureThroughModule(common_, job_.file, [this] { recorder_.AskDriverOnce(); });
    } catch (const Failure& error) {
      results::Result result = recorder_.Made();
      result.error = error.what();
      Keep(result);
      throw;
    }
    results::Result result = recorder_.Made();
    if (summary.end == MeasureEnd::Cancelled) {
      result.verdict = results::Verdict::Cancelled;
      Keep(result);
      return std::nullopt;
    }
    DeviceDiagnosis diagnosis = DiagnosisOf(summary, run_.Expected());
    result.verdict = diagnosis.Failed() ? results::Verdict::Fail : results::Verdict::Pass;
    EnterDiagnosis(diagnosis, run_.Names(), result);
    Keep(result);
    return diagnosis;
  }

  void Keep(results::Result& result) {
    if (!recorder_.Wanted() || !series_.Settles(result)) return;
    EnterNets(run_.Facts(), run_.Names(), result);
    recorder_.Keep(result);
  }

  std::vector<std::string> FaultsIn(const DeviceDiagnosis& diagnosis) const {
    results::Result result;
    if (!diagnosis.Failed()) return {};
    EnterDiagnosis(diagnosis, run_.Names(), result);
    std::vector<std::string> texts;
    for (const results::ResultFault& fault : result.faults) texts.push_back(fault.text);
    return texts;
  }

  const CommonOptions& common_;
  const DiagnoseJob& job_;
  DiagnosisRun& run_;
  ResultRecorder& recorder_;
  Series series_;
};

}  // namespace

ExitStatus DiagnoseConnectedDevice(const CommonOptions& common, const std::string& file,
                                   DiagnosisFormat format, ExitStatus checked,
                                   const std::function<void(const DeviceDiagnosis&)>& known) {
  DiagnosisRun run(common, file, format, Source::Device, true);
  if (checked == ExitStatus::NoFindings) return run.Print(DiagnosisOfGoodDevice(run.Expected()));
  const MeasureSummary summary = MeasureThroughModule(common, file);
  if (summary.end == MeasureEnd::Cancelled) return Cancelled(run, file);
  DeviceDiagnosis diagnosis = DiagnosisOf(summary, run.Expected());
  diagnosis.checkFailed = true;
  if (diagnosis.voltages.empty() && diagnosis.faults.findings.empty()) {
    diagnosis.gaps.emplace_back(
        "why the check had findings that did not show again: a loose contact, or a resistance near a "
        "threshold");
  }
  known(diagnosis);
  return run.Print(diagnosis);
}

ExitStatus DiagnoseDevice(const CommonOptions& common, const DiagnoseJob& job) {
  ResultRecorder recorder(job.results);
  DiagnosisRun run(common, job.file, job.format, Source::Device, false);
  recorder.Open(run.CurrentProject(), [&run](const std::string& line) { run.User().Tell(line); });
  return DiagnosisSeries(common, job, run, recorder).Run();
}

ExitStatus DiagnoseRecords(const CommonOptions& common, const std::string& file, DiagnosisFormat format,
                           const std::vector<Record>& records) {
  DiagnosisRun run(common, file, format, Source::Records, false);
  return run.Print(DiagnosisOfRecords(records, run.Facts(), run.Expected()));
}

}  // namespace kxbench
