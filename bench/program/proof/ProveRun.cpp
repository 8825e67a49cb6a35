#include "bench/program/proof/ProveRun.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <system_error>
#include <thread>
#include <utility>

#include "bench/program/host/ExpectationGate.h"
#include "bench/program/host/Project.h"
#include "bench/program/host/Record.h"
#include "bench/program/output/Output.h"
#include "bench/program/proof/ProofExtras.h"
#include "bench/program/proof/ProofProgress.h"
#include "bench/program/proof/ProofReport.h"
#include "bench/program/proof/ProofWorkers.h"
#include "bench/program/system/Failure.h"
#include "bench/program/system/System.h"
#include "bench/wiring/ChannelNames.h"
#include "text/FileAccess.h"
#include "text/Sha256.h"
#include "ui/terminal/Interrupt.h"
#include "ui/terminal/Printable.h"

namespace kxbench {

namespace {

using proof::Proof;
using proof::ProvedFault;

/// What all processes of a proof together may take; a process without its matrices takes less than the rest.
constexpr std::size_t MostMatrixBytes = std::size_t{200} << 20U;

/// A process has an expectation, what a check measured, and where an escape is looked into a changed copy.
constexpr std::size_t MatricesOfAWorker = 3;

std::string NowInUtc() {
  const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  char text[32] = {};
  std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", std::gmtime(&now));
  return text;
}

std::string ContentOf(const std::string& file) {
  try {
    return shorttest::ReadWholeFile(PathFromUtf8(file), MostProofFileBytes);
  } catch (const std::system_error& error) {
    throw Failure(file + ": cannot be read: " + error.code().message());
  }
}

std::size_t JobsFor(const ProveOptions& options, const TShortTestData& expectation, std::size_t faults) {
  const std::size_t channels = expectation.connections.size();
  const std::size_t bytes = MatricesOfAWorker * channels * channels * sizeof(TConnectionCell) + 1;
  const std::size_t cores = std::max(1U, std::thread::hardware_concurrency());
  const std::size_t wanted = options.jobs > 0 ? options.jobs : cores;
  // Starting a process takes as long as some hundred small checks.
  constexpr std::size_t FaultsWorthAProcess = 100;
  const std::size_t useful = options.jobs > 0 ? wanted : faults / FaultsWorthAProcess + 1;
  return std::max<std::size_t>(1, std::min({wanted, useful, MostMatrixBytes / bytes}));
}

/// The questions of a proof; their answers go into it.
class Questions {
 public:
  Questions(Proof& result, const proof::FaultPlan& plan) {
    result.totals = plan.totals;
    for (const proof::ProofFault& fault : plan.faults) result.faults.push_back({fault, std::nullopt});
    for (ProvedFault& one : result.faults) {
      Ask("fault " + proof::FaultWords(one.fault), [&one](const std::string& answer) {
        one.verdict = proof::VerdictFromWords(Rest(answer, "verdict "));
        if (!one.verdict) throw Failure("a process that checks faults says what nobody understands");
      });
    }
    result.capacitors = plan.mustPass.size();
    alarms_.assign(plan.mustPass.size(), 0);
    for (std::size_t i = 0; i < plan.mustPass.size(); ++i) {
      Ask("capacitor " + proof::FaultWords(plan.mustPass[i]),
          [this, i](const std::string& answer) { alarms_[i] = Rest(answer, "alarm ") == "1" ? 1 : 0; });
    }
    AskSensitivity(result);
  }
  Questions(const Questions&) = delete;
  Questions& operator=(const Questions&) = delete;

  const std::vector<ProofRequest>& Requests() const { return requests_; }

  /// To be called once all is answered.
  void TakeAlarms(const proof::FaultPlan& plan, Proof& result) const {
    for (std::size_t i = 0; i < alarms_.size(); ++i) {
      if (alarms_[i] != 0) result.falseAlarms.push_back(plan.mustPass[i]);
    }
  }

 private:
  void Ask(std::string line, std::function<void(const std::string& answer)> take) {
    requests_.push_back({std::move(line), std::move(take)});
  }

  static std::string Rest(const std::string& answer, const std::string& start) {
    return answer.starts_with(start) ? answer.substr(start.size()) : std::string();
  }

  static std::optional<double> Ohm(const std::string& answer) {
    const std::string text = Rest(answer, "limit ");
    return text == "none" ? std::nullopt : NumberOf(text);
  }

  /// A joint at the contact that is measured last; the insulation against the next net.
  void AskSensitivity(Proof& result) {
    diagnosis::Nets nets = result.facts.nets.nets;
    for (const diagnosis::Channel channel : result.facts.nets.unconnected) nets.push_back({channel});
    nets = diagnosis::Ordered(std::move(nets));
    for (const diagnosis::Net& net : nets) result.sensitivity.push_back({net, {}, {}});
    for (std::size_t i = 0; i < nets.size(); ++i) {
      proof::NetSensitivity& net = result.sensitivity[i];
      if (net.net.size() > 1) {
        Ask("joint " + std::to_string(net.net.back()),
            [&net](const std::string& answer) { net.largestJoint = Ohm(answer); });
      }
      const diagnosis::Net& other = nets[(i + 1) % nets.size()];
      if (nets.size() < 2) continue;
      Ask("insulation " + std::to_string(net.net.back()) + " " + std::to_string(other.back()),
          [&net](const std::string& answer) { net.smallestInsulation = Ohm(answer); });
    }
  }

  std::vector<ProofRequest> requests_;
  std::vector<char> alarms_;
};

struct OutputFile {
  std::string format;
  std::string file;
};

std::vector<OutputFile> OutputFiles(const std::vector<std::string>& outputs) {
  std::vector<OutputFile> files;
  for (const std::string& output : outputs) {
    const std::size_t colon = output.find(':');
    const std::string format = output.substr(0, colon);
    const bool known = format == "html" || format == "json" || format == "csv";
    if (!known || colon == std::string::npos || colon + 1 == output.size()) {
      throw Failure("--output " + output + ": expected html:FILE, json:FILE or csv:FILE");
    }
    files.push_back({format, output.substr(colon + 1)});
  }
  return files;
}

void WriteOutput(const OutputFile& output, const Proof& proof, const wiring::ChannelNames& names) {
  const std::string content = output.format == "html"   ? proof::ProofHtml(proof, names)
                              : output.format == "json" ? proof::ProofJson(proof)
                                                        : proof::ProofCsv(proof);
  try {
    shorttest::ReplaceWholeFile(shorttest::AbsolutePath(output.file), content);
  } catch (const std::system_error& error) {
    throw Failure("--output " + output.format + ":" + output.file + ": " + error.what());
  }
}

Proof NewProof(const CommonOptions& common, const ProveOptions& options, wiring::ExpectationFacts facts) {
  Proof result;
  result.file = options.file;
  result.sha256 = shorttest::Sha256(ContentOf(options.file));
  result.date = NowInUtc();
  result.programVersion = KXBENCH_VERSION;
  result.device = common.device.value_or("");
  result.netOhm = options.netOhm;
  result.seed = options.plan.seed;
  result.largestSample = options.plan.largestSample;
  result.testerFaults = options.plan.testerFaults;
  result.facts = std::move(facts);
  result.accepted = options.accepted;
  return result;
}

}  // namespace

ExitStatus Prove(const CommonOptions& common, const ProveOptions& options) {
  const std::vector<OutputFile> outputs = OutputFiles(options.outputs);
  const auto terminal = OpenTerminal();
  const auto tell = [&terminal](const std::string& line) {
    terminal->Write("kxbench: " + Printable(line) + "\n");
    terminal->Settle();
  };
  const wiring::ChannelNames names(ProjectOf(common.project, options.file).IniFile());
  Proof result = NewProof(common, options, ExpectationGate(options.strict, tell).AdmitFile("", options.file));

  const TShortTestData expectation(options.file);
  const proof::FaultPlan plan = proof::PlanFaults(expectation, options.plan);
  const Questions questions(result, plan);
  {
    const std::size_t jobs = JobsFor(options, expectation, questions.Requests().size());
    ProofWorkers workers({options.file, result.sha256, options.netOhm, result.device}, jobs);
    result.goodFindings = workers.GoodFindings();
    result.goodSeconds = workers.GoodSeconds();
    ProofProgress progress(*terminal, common.progress != ProgressChoice::None);
    const auto cancelled = InterruptWatch::Interrupted;
    result.complete = workers.Answer(questions.Requests(), cancelled, [&](std::size_t answered) {
      progress.Report(answered, questions.Requests().size());
    });
    if (result.complete && options.suggest) AddAdvice(workers, result, cancelled);
    if (result.complete && options.throughPlugin > 0) {
      result.complete = CompareWithPlugin(workers, common, options.throughPlugin, result, cancelled);
    }
  }
  questions.TakeAlarms(plan, result);
  for (const OutputFile& output : outputs) WriteOutput(output, result, names);
  terminal->Settle();
  StandardOutput().Write(options.format == ProofFormat::Json ? proof::ProofJson(result)
                                                             : ProofReport(result, names));
  if (!result.complete) {
    tell("prove " + options.file + ": cancelled");
    return ExitStatus::Cancelled;
  }
  return result.Holds() ? ExitStatus::NoFindings : ExitStatus::Findings;
}

}  // namespace kxbench
