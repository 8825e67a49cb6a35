#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "bench/program/check/ScriptRun.h"
#include "framework/ScriptEnvironment.h"
#include "tests/bench/program/ScriptCommands.h"

namespace kxbench {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* Good = "Kurzschlusstest|0|0||0||";
constexpr const char* Bad = "Kurzschlusstest|0|1||0||";

/// A script whose steps are named by what they do: "good", "bad", "silent", "cancel", "throw".
class Running : public testing::Test, protected RunObserver {
 protected:
  Running() {
    commands_.onRun = [this](const std::string& action) {
      ran_.push_back(action);
      if (action == "good") run_.Receive(Good);
      if (action == "bad") run_.Receive(Bad);
      if (action == "cancel") cancelled_ = true;
      if (action == "bad-then-cancel") {
        run_.Receive(Bad);
        cancelled_ = true;
      }
      if (action == "bad-then-throw") run_.Receive(Bad);
      if (action == "cancel-then-throw") cancelled_ = true;
      if (action.ends_with("throw")) throw std::runtime_error("bus error");
      if (action == "throw-number") throw 42;
    };
  }

  ExitStatus Run(const std::vector<std::string>& actions) {
    std::string text;
    for (const std::string& action : actions) text += "ShortTest(\"" + action + "\")\n";
    const Script script = ReadScript(
        "s", text, [this](const std::string& name) { return commands_.Find(name); },
        parser_.GetEnvironment());
    return run_.Run(script);
  }

  void StepEnded(const ScriptStep&, const StepResult& result) override { ended_.push_back(result); }
  void RunEnded(const std::vector<ExitStatus>& results, std::size_t left) override {
    finished_ = results.size();
    left_ = left;
  }

  kx::ScriptParser parser_;
  ScriptCommands commands_{parser_};
  bool cancelled_ = false;
  std::vector<std::string> ran_, told_;
  std::vector<StepResult> ended_;
  std::size_t finished_ = 0;
  std::size_t left_ = 0;
  ScriptRun run_{{[this] { return cancelled_; },
                  [this] {
                    if (kept_) std::rethrow_exception(kept_);
                  },
                  [this](const std::string& line) { told_.push_back(line); },
                  [this](const ScriptStep& step) {
                    if (step.call == refused_) throw Failure("damaged");
                  },
                  [](const std::string& failure) { return failure + "!"; },
                  [this](StepResult& result) {
                    if (result.records.size() == unkept_) result.end = StepEnd::NotStored;
                  }},
                 *this};
  std::string refused_;
  std::size_t unkept_ = 1000;  // a step with so many records cannot be kept
  std::exception_ptr kept_;
};

TEST_F(Running, StepThatIsNotAdmittedFailsWithoutRunning) {
  refused_ = "ShortTest(\"bad\")";
  EXPECT_EQ(Run({"good", "bad", "good"}), ExitStatus::Failed);
  EXPECT_THAT(ran_, ElementsAre("good"));
  EXPECT_THAT(told_, ElementsAre("s:2: damaged!"));
}

TEST_F(Running, WithoutFindings) {
  EXPECT_EQ(Run({"good", "good"}), ExitStatus::NoFindings);
  ASSERT_EQ(ended_.size(), 2U);
  for (const StepResult& result : ended_) {
    ASSERT_EQ(result.records.size(), 1U);
    EXPECT_EQ(result.records.front().line, Good);
  }
  EXPECT_THAT(told_, IsEmpty());
  EXPECT_EQ(finished_, 2U);
  EXPECT_EQ(left_, 0U);
}

TEST_F(Running, GoesOnAfterFindings) {
  EXPECT_EQ(Run({"bad", "good"}), ExitStatus::Findings);
  EXPECT_THAT(ran_, ElementsAre("bad", "good"));
  EXPECT_EQ(ended_[0].Status(), ExitStatus::Findings);
  EXPECT_EQ(ended_[1].Status(), ExitStatus::NoFindings);
}

TEST_F(Running, EndsAfterAFailure) {
  EXPECT_EQ(Run({"good", "throw", "good"}), ExitStatus::Failed);
  EXPECT_THAT(ran_, ElementsAre("good", "throw"));
  EXPECT_THAT(told_, ElementsAre("s:2: bus error!"));
  EXPECT_EQ(left_, 1U);
}

TEST_F(Running, SurvivesWhateverIsThrown) {
  EXPECT_EQ(Run({"throw-number"}), ExitStatus::Failed);
  EXPECT_THAT(told_, ElementsAre("s:1: an exception of an unknown kind!"));
}

TEST_F(Running, KeepsTheRecordsOfAStepThatFailed) {
  EXPECT_EQ(Run({"bad-then-throw"}), ExitStatus::Failed);
  ASSERT_EQ(ended_.size(), 1U);
  EXPECT_EQ(ended_[0].records.size(), 1U);
}

TEST_F(Running, EndsAfterACancel) {
  EXPECT_EQ(Run({"good", "cancel", "good"}), ExitStatus::Cancelled);
  EXPECT_THAT(ran_, ElementsAre("good", "cancel"));
  EXPECT_THAT(told_, ElementsAre("s:2: cancelled"));
  EXPECT_EQ(left_, 1U);
}

TEST_F(Running, CancelAfterFindingsIsACancel) { EXPECT_EQ(Run({"bad", "cancel"}), ExitStatus::Cancelled); }

TEST_F(Running, CancelWithRecordsIsACancel) { EXPECT_EQ(Run({"bad-then-cancel"}), ExitStatus::Cancelled); }

TEST_F(Running, FailureDuringACancelIsAFailure) { EXPECT_EQ(Run({"cancel-then-throw"}), ExitStatus::Failed); }

TEST_F(Running, WithoutARecordIsNotFinished) {
  EXPECT_EQ(Run({"silent"}), ExitStatus::Cancelled);
  EXPECT_THAT(told_, ElementsAre("s:1: the check ended without a record: it was not finished"));
}

TEST_F(Running, GoesOnAfterASilentStep) {
  EXPECT_EQ(Run({"silent", "good"}), ExitStatus::Cancelled);
  EXPECT_THAT(ran_, ElementsAre("silent", "good"));
}

TEST_F(Running, RecordsOfOneStepDoNotCountForTheNext) {
  EXPECT_EQ(Run({"good", "silent"}), ExitStatus::Cancelled);
  EXPECT_THAT(ended_[1].records, IsEmpty());
}

TEST_F(Running, InterruptedBeforehandRunsNothing) {
  cancelled_ = true;
  EXPECT_EQ(Run({"good"}), ExitStatus::Cancelled);
  EXPECT_THAT(ran_, IsEmpty());
  EXPECT_THAT(told_, ElementsAre("s:1: cancelled"));
}

TEST_F(Running, ThrowsWhatTheReceiverKept) {
  kept_ = std::make_exception_ptr(std::runtime_error("disk full"));
  EXPECT_THROW(Run({"good", "good"}), std::runtime_error);
  EXPECT_THAT(ran_, ElementsAre("good"));
}

}  // namespace
}  // namespace kxbench
