#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bench/program/check/ResultOptions.h"
#include "bench/program/check/ScriptRun.h"
#include "bench/program/host/DriverFacts.h"
#include "bench/program/host/Extension.h"
#include "bench/program/host/Project.h"
#include "bench/results/OutputFiles.h"
#include "bench/results/ResultStore.h"
#include "bench/wiring/ChannelNames.h"
#include "bench/wiring/ExpectationFacts.h"

namespace kxbench {

/// Thrown when a result could not be kept, so that there is no verdict.
class NotStored : public Failure {
 public:
  explicit NotStored(const std::string& why) : Failure("error: result not stored: " + why), why_(why) {}
  const std::string& Why() const { return why_; }

 private:
  std::string why_;
};

/// Makes a result of each check and keeps it, in the store and in files, before anybody is told of it. Does
/// nothing, and asks nobody anything, where no result is wanted.
class ResultRecorder {
 public:
  enum class Makes {
    WhenKept,  ///< where they are stored or written
    Always,    ///< for somebody who looks at them, see Divert
  };

  /// `options` outlives the object.
  explicit ResultRecorder(const ResultOptions& options, Makes makes = Makes::WhenKept)
      : options_(options), makes_(makes), files_(options.outputs) {}

  bool Wanted() const { return makes_ == Makes::Always || options_.Wanted(); }

  /// Opens what results are kept in, and finds out whether it takes this one, as far as that can be known.
  /// `tell` shows the user a line. Called in the working process. Throws Failure.
  void Open(const Project& project, std::function<void(const std::string&)> tell);

  /// Who shows the user a line from now on.
  void TellBy(std::function<void(const std::string&)> tell) { tell_ = std::move(tell); }

  /// Asks the driver that is in memory what it is, once, where results are wanted. REQUIRES: no check runs.
  void AskDriverOnce();

  /// The plug-in that checks.
  void Uses(const Extension& extension);

  /// Those of the checks that follow.
  void SetSerial(const std::string& serial) { serial_ = serial; }
  void SetPart(const std::string& part) { part_ = part; }

  /// Gets each result before it is kept, instead of that where it returns true: whoever wants to add to it
  /// keeps it himself.
  void Divert(std::function<bool(results::Result&)> divert) { divert_ = std::move(divert); }

  /// A check against this expectation begins; none: another command, of which there is no result.
  void Begin(const std::optional<std::string>& expectation);

  /// It has ended. Keeps its result, or makes it StepEnd::NotStored.
  void Ended(StepResult& check);

  /// Keeps the result of a check that could not begin.
  void CouldNotBegin(const std::string& expectation, const std::string& why);

  /// Keeps a result. Throws NotStored.
  void Keep(const results::Result& result);

  /// What is known of the check that began last; nothing entered of how it ended but its duration.
  results::Result Made() const;

  const wiring::ExpectationFacts& Facts() const { return facts_; }
  const wiring::ChannelNames& Names() const { return names_; }

  /// The store, to ask it for earlier results; null when there is none.
  results::ResultStore* Store() { return store_.get(); }

 private:
  void Tell(const std::string& line) const;
  std::string Drawing(const results::Result& result) const;

  const ResultOptions& options_;
  Makes makes_;
  results::OutputFiles files_;
  std::unique_ptr<results::ResultStore> store_;
  std::function<void(const std::string&)> tell_;
  std::function<bool(results::Result&)> divert_;
  wiring::ChannelNames names_;
  std::string station_;
  std::string serial_;
  std::string part_;
  std::string plugin_;
  std::optional<DriverFacts> driver_;

  std::optional<std::string> expectation_;  ///< of the check that is running
  std::string sha256_;
  wiring::ExpectationFacts facts_;
  std::chrono::sys_time<std::chrono::milliseconds> started_;
  std::chrono::steady_clock::time_point begun_;
};

}  // namespace kxbench
