#include "bench/program/check/CheckDevice.h"

#include <exception>
#include <optional>

#include "bench/program/check/CheckResult.h"
#include "bench/program/check/DiagnoseDevice.h"
#include "bench/program/check/Report.h"
#include "ui/terminal/Printable.h"
#include "ui/terminal/Terminal.h"

namespace kxbench {

namespace {

/// Keeps what is printed until it may be shown.
class HeldOutput : public Output {
 public:
  void Write(const std::string& text) override { text_ += text; }
  const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

/// Shows of a series the first check with findings, as long as there is none the last one, and how it went.
class SeriesPrinter : public RunObserver {
 public:
  SeriesPrinter(RunObserver& printer, Series& series, bool everyCheck, const wiring::ChannelNames& names)
      : printer_(printer), series_(series), everyCheck_(everyCheck), names_(names) {}

  void StepEnded(const ScriptStep& step, const StepResult& result) override {
    const bool first = series_.Faulty() == 0;
    if (result.end == StepEnd::Finished) series_.Ended(FindingsOf(result));
    const bool shown = result.end != StepEnd::Finished || (first && series_.Faulty() > 0) ||
                       (series_.Faulty() == 0 && !series_.GoesOn());
    if (everyCheck_ || shown) printer_.StepEnded(step, result);
  }

 private:
  std::vector<std::string> FindingsOf(const StepResult& result) const {
    std::vector<std::string> texts;
    std::vector<std::string> counts;
    for (const Record& record : result.records) {
      if (!IsFinding(record)) continue;
      (IsSummary(record) ? counts : texts)
          .push_back(record.readable ? WithChannelNames(record.text, names_) : record.line);
    }
    return texts.empty() ? counts : texts;
  }

  RunObserver& printer_;
  Series& series_;
  bool everyCheck_;
  const wiring::ChannelNames& names_;
};

class DeviceCheck {
 public:
  DeviceCheck(const CommonOptions& common, const CheckJob& job)
      : common_(common), job_(job), recorder_(job.run.results), series_(job.series, SteadySeconds) {
    recorder_.Divert([this](results::Result& result) { return Divert(result); });
  }

  ExitStatus Run() {
    const ExitStatus checked = Check();
    return job_.diagnose ? Diagnose(checked) : checked;
  }

 private:
  /// With a diagnosis to come, nothing is told of findings before it is known: the result is kept first, and
  /// the diagnosis is part of it.
  bool HoldsBack() const { return job_.diagnose && recorder_.Wanted(); }

  bool Divert(results::Result& result) {
    if (!series_.Settles(result)) return true;
    if (!HoldsBack() || result.verdict != results::Verdict::Fail) return false;
    kept_ = result;
    return true;
  }

  ExitStatus Check() {
    CheckSession session(common_, job_.run.strict, job_.file, recorder_);
    StandardOutput output;
    Output* target = &output;
    if (HoldsBack()) target = &held_;
    const auto printer = PrinterOf(job_.run, *target, session);
    const Script script = Load(session);
    ExitStatus status = ExitStatus::NoFindings;
    if (!job_.series.Any()) {
      status = session.Run(script, *printer);
    } else {
      status = RunSeries(session, script, *printer);
      TellSeries(session, *target);
    }
    if (HoldsBack() && !kept_) output.Write(held_.Text());
    return status;
  }

  Script Load(CheckSession& session) {
    try {
      return session.Load([this](const CommandFinder& findCommand, const TKXEnvironment& environment) {
        return SingleCall(CheckCommandName, job_.file, findCommand, environment);
      });
    } catch (const std::exception& error) {
      recorder_.CouldNotBegin(job_.file, error.what());
      throw;
    }
  }

  ExitStatus RunSeries(CheckSession& session, const Script& script, RunObserver& printer) {
    const wiring::ChannelNames names(session.CurrentProject().IniFile());
    SeriesPrinter seriesPrinter(printer, series_, job_.run.format == OutputFormat::Records, names);
    ExitStatus status = ExitStatus::NoFindings;
    while (series_.GoesOn() && status <= ExitStatus::Findings) {
      const bool first = series_.Faulty() == 0;
      status = Graver(status, session.Run(script, seriesPrinter));
      if (first && series_.Faulty() > 0) session.User().Tell("findings in " + series_.Place());
    }
    return status;
  }

  void TellSeries(CheckSession& session, Output& target) {
    if (job_.run.format == OutputFormat::Report) {
      target.Write("\n" + Printable(series_.Summary()));
    } else {
      TellLines(session.User(), series_.Summary());
    }
  }

  /// A check that did not come to its end says nothing about the device, and a good one needs no diagnosis
  /// but for programs that read one.
  ExitStatus Diagnose(ExitStatus checked) {
    const bool json = job_.run.format == OutputFormat::Json;
    if (json ? checked > ExitStatus::Findings : checked != ExitStatus::Findings) return checked;
    const DiagnosisFormat format = json                                       ? DiagnosisFormat::Json
                                   : job_.run.format == OutputFormat::Records ? DiagnosisFormat::Aside
                                                                              : DiagnosisFormat::Report;
    recorder_.TellBy(
        [](const std::string& line) { OpenTerminal()->Write("kxbench: " + Printable(line) + "\n"); });
    const auto known = [this](const DeviceDiagnosis& diagnosis) {
      if (kept_) EnterDiagnosis(diagnosis, recorder_.Names(), *kept_);
      KeepHeld();
    };
    try {
      const ExitStatus status = DiagnoseConnectedDevice(common_, job_.file, format, checked, known);
      KeepHeld();
      return status;
    } catch (const NotStored&) {
      throw;
    } catch (...) {
      KeepHeld();
      throw;
    }
  }

  void KeepHeld() {
    if (!kept_) return;
    const results::Result result = *std::exchange(kept_, std::nullopt);
    recorder_.Keep(result);
    StandardOutput().Write(held_.Text());
  }

  const CommonOptions& common_;
  const CheckJob& job_;
  ResultRecorder recorder_;
  Series series_;
  HeldOutput held_;
  std::optional<results::Result> kept_;  ///< waits for its diagnosis
};

}  // namespace

ExitStatus CheckDevice(const CommonOptions& common, const CheckJob& job) {
  return DeviceCheck(common, job).Run();
}

}  // namespace kxbench
