#include "bench/program/proof/ProofWorker.h"

#include <array>
#include <charconv>
#include <iostream>
#include <locale>
#include <sstream>
#include <stdexcept>

#include "bench/program/proof/ProofJudge.h"
#include "bench/program/system/DynamicLibrary.h"
#include "bench/program/system/Failure.h"
#include "bench/program/system/System.h"
#include "bench/proof/DescribedDevice.h"
#include "text/FileAccess.h"
#include "text/Sha256.h"

namespace kxbench {

namespace {

constexpr std::size_t TaskWords = 5;

std::string Exact(double value) {
  std::array<char, 64> text{};
  return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

void Say(const std::string& line) {
  if (WriteToOutput(line + "\n") != 0) throw Failure("nobody takes the answers of this process");
}

std::string LimitAnswer(const std::optional<double>& ohm) { return "limit " + (ohm ? Exact(*ohm) : "none"); }

proof::ProofFault FaultIn(std::istringstream& words) {
  std::string rest;
  std::getline(words >> std::ws, rest);
  const auto fault = proof::FaultFromWords(rest);
  if (!fault) throw Failure("a fault that cannot be read: " + rest);
  return *fault;
}

std::string RecordsAnswer(const std::optional<std::vector<std::string>>& records) {
  if (!records) return "no records";
  std::string answer = "records";
  for (const std::string& record : *records) answer += "\t" + record;
  return answer;
}

std::string AlarmAnswer(bool alarm) { return alarm ? "alarm 1" : "alarm 0"; }

std::string Answer(const std::string& request, ProofJudge& judge) {
  std::istringstream words(request);
  words.imbue(std::locale::classic());
  std::string what;
  words >> what;
  if (what == "fault") return "verdict " + proof::VerdictWords(judge.Judge(FaultIn(words)));
  if (what == "capacitor") return AlarmAnswer(judge.IsFalseAlarm(FaultIn(words)));
  if (what == "records") return RecordsAnswer(judge.Records(FaultIn(words)));
  if (what == "lowest") return LimitAnswer(judge.LowestLowerThreshold());
  if (what == "highest") return LimitAnswer(judge.HighestUpperThreshold());
  if (what == "with") {
    double lower = 0;
    double upper = 0;
    words >> lower >> upper;
    return AlarmAnswer(judge.FindsWith(lower, upper, FaultIn(words)));
  }
  proof::Channel a = 0;
  proof::Channel b = 0;
  words >> a >> b;
  return LimitAnswer(what == "joint" ? judge.LargestJoint(a) : judge.SmallestInsulation(a, b));
}

void Work(const ProofTask& task) {
  if (shorttest::Sha256(shorttest::ReadWholeFile(PathFromUtf8(task.file), MostProofFileBytes)) !=
      task.sha256) {
    throw Failure(task.file + " has changed since the proof began");
  }
  const DynamicLibrary module("the proof module",
                              ProgramFolder() / LibraryFileName("kxproof", LibraryPrefix::Lib),
                              DynamicLibrary::Unload::Never);
  const auto check = module.Find<KxProofCheck>(KxProofCheckName);
  if (check == nullptr) {
    throw Failure(Utf8FromPath(module.File()) + " cannot prove: it does not export " + KxProofCheckName);
  }
  ProofJudge judge(task.file, GoodDevice(task), check);
  Say("good " + Exact(judge.GoodSeconds()) + " " + std::to_string(judge.GoodFindings().size()));
  for (const std::string& finding : judge.GoodFindings()) Say(finding);
  for (std::string request; std::getline(std::cin, request);) Say(Answer(request, judge));
}

}  // namespace

proof::DeviceModel GoodDevice(const ProofTask& task) {
  const TShortTestData expectation(task.file);
  proof::DeviceModel ideal = proof::IdealDevice(expectation, task.netOhm);
  if (task.device.empty()) return ideal;
  try {
    return proof::DescribedDevice(PathFromUtf8(task.device), ideal.channels);
  } catch (const std::runtime_error& error) {
    throw Failure("--device: " + std::string(error.what()));
  }
}

std::vector<std::string> ProofTask::Arguments() const {
  return {ProofWorkerWord, file, sha256, Exact(netOhm), device.empty() ? "-" : device};
}

ProofTask ProofTask::FromArguments(const std::vector<std::string>& arguments) {
  if (arguments.size() != TaskWords) throw Failure(std::string(ProofWorkerWord) + " is not for people");
  ProofTask task;
  task.file = arguments[1];
  task.sha256 = arguments[2];
  std::from_chars(arguments[3].data(), arguments[3].data() + arguments[3].size(), task.netOhm);
  if (arguments[4] != "-") task.device = arguments[4];
  return task;
}

ExitStatus RunProofWorker(const std::vector<std::string>& arguments) {
  try {
    Work(ProofTask::FromArguments(arguments));
    return ExitStatus::NoFindings;
  } catch (...) {
    WriteToOutput("failed " + CurrentExceptionText() + "\n");
    return ExitStatus::Failed;
  }
}

}  // namespace kxbench
