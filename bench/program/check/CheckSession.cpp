#include "bench/program/check/CheckSession.h"

#include "bench/program/host/DeviceHint.h"
#include "bench/program/system/Guard.h"
#include "ui/terminal/Interrupt.h"

namespace kxbench {

namespace {

void TellGuardOfFiles(const Script& script) {
  for (const ScriptStep& step : script) {
    for (const TKXPrototypeParam& parameter : step.command->Parameters()) {
      if (parameter.type != "String") continue;
      TellGuardOfExpectation(TStringValue::GetVal(step.params->GetValue(parameter.name)));
    }
  }
}

}  // namespace

CheckSession::CheckSession(const CommonOptions& common, bool strict, const std::string& file,
                           ResultRecorder& recorder)
    : common_(common),
      recorder_(recorder),
      host_(common, file),
      tell_([this](const std::string& line) { User().Tell(line); }),
      receiver_([this](const std::string& line) {
        if (running_ != nullptr) running_->Receive(line);
      }),
      gate_(strict, [this](const std::string& line) { tell_(line); }) {
  EnterGuard();
  interaction_.emplace(SurfaceOf(common.progress), std::nullopt);
  recorder_.Open(host_.CurrentProject(), [this](const std::string& line) { tell_(line); });
}

void CheckSession::TellBy(std::function<void(const std::string&)> tell) { tell_ = std::move(tell); }

Script CheckSession::Load(const ScriptSource& source) {
  if (!extension_) {
    extension_.emplace(PluginFile(common_.plugin), host_.HostValues(receiver_.Handle()));
    recorder_.Uses(*extension_);
  }
  Script script = source([this](const std::string& name) { return extension_->FindCommand(name); },
                         host_.Parser().GetEnvironment());
  gate_.AdmitScript(script);
  TellGuardOfFiles(script);
  return script;
}

ExitStatus CheckSession::Run(const Script& script, RunObserver& observer) {
  ScriptRun run(HostOfRun(), observer);
  running_ = &run;
  const ExitStatus status = run.Run(script);
  running_ = nullptr;
  return status;
}

RunHost CheckSession::HostOfRun() {
  RunHost host;
  host.cancelled = [this] { return host_.TestState().Cancelled() || InterruptWatch::Interrupted(); };
  host.rethrowKept = [this] { receiver_.RethrowKept(); };
  host.tell = [this](const std::string& line) { tell_(line); };
  host.admit = [this](const ScriptStep& step) {
    recorder_.Begin(ExpectationOf(step));
    gate_.AdmitStep(step);
  };
  host.explain = [this](const std::string& failure) { return WithDeviceHint(failure, common_.device); };
  host.keep = [this](StepResult& result) { recorder_.Ended(result); };
  return host;
}

void CheckSession::ForgetCancel() {
  host_.ForgetCancel();
  interaction_->ForgetCancel();
}

}  // namespace kxbench
