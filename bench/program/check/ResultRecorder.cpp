#include "bench/program/check/ResultRecorder.h"

#include <exception>
#include <utility>

#include "bench/program/check/CheckResult.h"
#include "bench/program/check/ResultDrawing.h"
#include "bench/program/system/SaveProbe.h"
#include "bench/program/system/System.h"
#include "text/FileAccess.h"
#include "text/LineFile.h"
#include "text/Sha256.h"

namespace kxbench {

namespace {

/// More than the largest expectation file that can be read.
constexpr std::uintmax_t MostHashedBytes = std::uintmax_t{256} << 20U;

std::string Sha256OfFile(const std::filesystem::path& path) {
  try {
    return shorttest::Sha256(shorttest::ReadWholeFile(path, MostHashedBytes));
  } catch (const std::exception&) {
    return "";  // whoever checks with the file says what is wrong with it
  }
}

void RequireWritable(const results::OutputFile& output) {
  try {
    if (!output.Fixed()) return;
    if (output.format == results::ResultFormat::JsonLines) {
      shorttest::RequireLineFile(shorttest::AbsolutePath(output.name), results::ResultJsonLineStart);
    } else {
      RequireSavable(output.name);
    }
  } catch (const std::exception& error) {
    throw Failure("--output: " + std::string(error.what()));
  }
}

double RoundedToMilliseconds(std::chrono::steady_clock::duration duration) {
  return static_cast<double>(std::chrono::round<std::chrono::milliseconds>(duration).count()) / 1000;
}

/// None of them has a version of its own to ask for: the file says which it is.
std::string PluginText(const Extension& extension) {
  const std::string sha256 = Sha256OfFile(extension.File());
  return extension.Info().Name + ", " + Utf8FromPath(extension.File().filename()) +
         (sha256.empty() ? "" : ", SHA-256 " + sha256);
}

}  // namespace

void ResultRecorder::Open(const Project& project, std::function<void(const std::string&)> tell) {
  if (!Wanted()) return;
  tell_ = std::move(tell);
  for (const results::OutputFile& output : options_.outputs) RequireWritable(output);
  store_ = OpenResults(options_.store);
  names_ = wiring::ChannelNames(project.IniFile());
  station_ = options_.station.value_or(ComputerName());
  serial_ = options_.serial.value_or("");
  part_ = options_.part.value_or("");
}

void ResultRecorder::Uses(const Extension& extension) {
  if (options_.Wanted()) plugin_ = PluginText(extension);
}

void ResultRecorder::Begin(const std::optional<std::string>& expectation) {
  if (!Wanted()) return;
  expectation_ = expectation;
  started_ = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
  begun_ = std::chrono::steady_clock::now();
  if (!expectation) return;
  const std::string sha256 = Sha256OfFile(PathFromUtf8(*expectation));
  if (!sha256.empty() && sha256 == sha256_) return;
  sha256_ = sha256;
  try {
    facts_ = wiring::FactsOf(*expectation);
  } catch (const std::exception&) {
    facts_ = {};
  }
}

results::Result ResultRecorder::Made() const {
  results::Result result;
  result.id = results::NewId();
  result.started = started_;
  result.seconds = RoundedToMilliseconds(std::chrono::steady_clock::now() - begun_);
  result.serial = serial_;
  result.part = part_;
  result.operatorName = options_.operatorName.value_or("");
  result.station = station_;
  if (expectation_) result.expectation = Utf8FromPath(PathFromUtf8(*expectation_).filename());
  result.expectationSha256 = sha256_;
  result.programVersion = KXBENCH_VERSION;
  result.pluginVersion = plugin_;
  if (driver_) {
    result.driver = driver_->file;
    result.driverGeneration = driver_->generation;
    result.cards = driver_->cards;
  }
  return result;
}

void ResultRecorder::Ended(StepResult& check) {
  if (!Wanted() || !expectation_) return;
  try {
    if (check.end == StepEnd::Finished) AskDriverOnce();
    results::Result result = Made();
    EnterCheck(check, facts_, names_, result);
    if (!divert_ || !divert_(result)) Keep(result);
  } catch (const NotStored& error) {
    check.end = StepEnd::NotStored;
    check.failure = error.Why();
  }
}

void ResultRecorder::CouldNotBegin(const std::string& expectation, const std::string& why) {
  if (!Wanted()) return;
  Begin(expectation);
  results::Result result = Made();
  result.verdict = results::Verdict::Error;
  result.error = why;
  EnterNets(facts_, names_, result);
  Keep(result);
}

void ResultRecorder::Keep(const results::Result& result) {
  if (!Wanted()) return;
  try {
    if (store_) {
      const results::StoreOutcome outcome = store_->Store(result);
      if (!outcome.line.empty()) Tell(outcome.line);
    }
    if (files_.Empty()) return;
    for (const std::string& line : files_.Add({result, Drawing(result)})) Tell(line);
  } catch (const std::exception& error) {
    throw NotStored(OneLine(error.what()));
  }
}

/// Made for who shows it alone: it takes longer than all the rest.
std::string ResultRecorder::Drawing(const results::Result& result) const {
  return files_.Has(results::ResultFormat::Html) ? ResultDrawing(result, facts_, names_) : "";
}

void ResultRecorder::Tell(const std::string& line) const { tell_(line); }

void ResultRecorder::AskDriverOnce() {
  if (options_.Wanted() && !driver_) driver_ = AskDriver();
}

}  // namespace kxbench
