#include <gmock/gmock.h>

#include <deque>

#include "bench/program/check/ResultRecorder.h"
#include "bench/program/station/Station.h"

namespace kxbench {
namespace {

using results::Verdict;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Somebody who types what the test says, and a tester that finds what the serial number says.
class StationDay : public testing::Test, public StationFace {
 protected:
  std::optional<StationEntry> Next(const std::string& prompt) override {
    prompts_.push_back(prompt);
    if (entries_.empty()) return std::nullopt;
    const StationEntry entry = entries_.front();
    entries_.pop_front();
    return entry;
  }
  void Offer(const std::string& text) override { offered_.push_back(text); }
  void Say(const std::string& line) override { said_.push_back(line); }
  void Checking(const std::string& serial, const std::string&) override { checking_.push_back(serial); }
  void Show(const StationVerdict& verdict, const ShiftCounters& counters) override {
    shown_.push_back(verdict);
    counters_ = counters;
  }

  ExitStatus Run(const std::vector<std::string>& typed) {
    for (const std::string& text : typed) entries_.push_back({text, false});
    return RunEntries();
  }

  ExitStatus RunEntries() {
    Station::Surroundings surroundings;
    surroundings.check = [this](const std::string& expectation, const std::string& part,
                                const std::string& serial) {
      checked_.push_back(expectation + " " + part + " " + serial);
      if (serial == "unkept") throw NotStored("disk full");
      if (serial == "missing") throw Failure("no tester");
      if (serial == "ends") endAsked_ = true;
      StationVerdict verdict;
      verdict.verdict = serial.starts_with("bad") ? Verdict::Fail : Verdict::Pass;
      if (verdict.verdict == Verdict::Fail) verdict.lines = {"open: 3"};
      return verdict;
    };
    surroundings.partOf = [](const std::string& code) {
      return code == "P-2" ? std::optional<std::string>("two.dat") : std::nullopt;
    };
    surroundings.earlier = [this](const std::string&) { return earlier_; };
    surroundings.endAsked = [this] { return endAsked_; };
    return Station(options_, surroundings, *this).Run();
  }

  Station::Options options_{"one.dat", "", SerialPattern(), false};
  std::deque<StationEntry> entries_;
  std::vector<std::string> prompts_, offered_, said_, checking_, checked_, earlier_;
  std::vector<StationVerdict> shown_;
  ShiftCounters counters_;
  bool endAsked_ = false;
};

TEST_F(StationDay, ChecksOneSerialNumberAfterTheOther) {
  EXPECT_EQ(Run({"S1", " S2\r", "", "bad3"}), ExitStatus::NoFindings);
  EXPECT_THAT(checked_, ElementsAre("one.dat  S1", "one.dat  S2", "one.dat  bad3"));
  EXPECT_EQ(shown_.back().verdict, Verdict::Fail);
  EXPECT_THAT(shown_.back().lines, ElementsAre("open: 3"));
  EXPECT_EQ(CounterLine(counters_), "checked 3: 2 PASS, 1 FAIL");
}

TEST_F(StationDay, RetestSaysHowOftenAndWithWhat) {
  Run({"bad1", "S2", "bad1", "bad1"});
  EXPECT_EQ(shown_[0].retest, "");
  EXPECT_EQ(shown_[2].retest, "retest: checked once before, last: fail (open: 3)");
  EXPECT_EQ(shown_[3].retest, "retest: checked 2 times before, last: fail (open: 3)");
  EXPECT_EQ(counters_.retests, 2);
}

TEST_F(StationDay, RetestKnowsTheStoreFromBefore) {
  earlier_ = {"pass yesterday"};
  Run({"S1"});
  EXPECT_EQ(shown_[0].retest, "retest: checked once before, last: pass yesterday");
}

TEST_F(StationDay, PartsCodeSwitchesTheExpectation) {
  Run({"S1", "P-2", "S2"});
  EXPECT_THAT(checked_, ElementsAre("one.dat  S1", "two.dat P-2 S2"));
  EXPECT_THAT(said_, ElementsAre("part P-2: two.dat"));
}

TEST_F(StationDay, WithoutAnExpectationAPartComesFirst) {
  options_.expectation.clear();
  Run({"S1", "P-2", "S2"});
  EXPECT_THAT(checked_, ElementsAre("two.dat P-2 S2"));
  EXPECT_THAT(said_.front(), HasSubstr("S1 is no part's code"));
  EXPECT_EQ(prompts_.front(), "Part's code");
  EXPECT_EQ(prompts_.back(), "Serial number");
}

TEST_F(StationDay, SerialNumberThatDoesNotMatchIsNotChecked) {
  options_.pattern = SerialPattern("SN-[0-9]{4}");
  Run({"SN-12", "SN-12345", "SN-1234", std::string(5000, '9'), "SN-\x01"});
  EXPECT_THAT(checked_, ElementsAre("one.dat  SN-1234"));
  ASSERT_EQ(said_.size(), 4U);
  EXPECT_EQ(said_[0], "SN-12 is no serial number: it does not match SN-[0-9]{4}");
  EXPECT_THAT(said_[2], HasSubstr("is longer than 1000 bytes"));
}

TEST_F(StationDay, WhatWasScannedDuringACheckIsOfferedAndNotChecked) {
  entries_ = {{"S1", false}, {"S2", true}, {"S2", false}};
  RunEntries();
  EXPECT_THAT(offered_, ElementsAre("S2"));
  EXPECT_THAT(said_, ElementsAre(HasSubstr("S2 was scanned during the check")));
  EXPECT_THAT(checked_, ElementsAre("one.dat  S1", "one.dat  S2"));
}

TEST_F(StationDay, WhatWasScannedDuringACheckIsCheckedWhereThatIsWanted) {
  options_.takesAhead = true;
  entries_ = {{"S1", false}, {"S2", true}};
  RunEntries();
  EXPECT_THAT(offered_, IsEmpty());
  EXPECT_THAT(checked_, ElementsAre("one.dat  S1", "one.dat  S2"));
}

TEST_F(StationDay, ResultThatIsNotStoredIsNoPassAndShowsInTheExitStatus) {
  EXPECT_EQ(Run({"unkept", "S2"}), ExitStatus::Failed);
  EXPECT_EQ(shown_[0].verdict, Verdict::Error);
  EXPECT_THAT(shown_[0].lines, ElementsAre("error: result not stored: disk full"));
  EXPECT_EQ(shown_[1].verdict, Verdict::Pass) << "the day goes on";
}

TEST_F(StationDay, MissingTesterIsAnErrorAndTheDayGoesOn) {
  EXPECT_EQ(Run({"missing", "S2"}), ExitStatus::NoFindings);
  EXPECT_EQ(shown_[0].verdict, Verdict::Error);
  EXPECT_EQ(CounterLine(counters_), "checked 2: 1 PASS, 0 FAIL, 1 ERROR");
}

TEST_F(StationDay, EndsWhenTheProgramIsToEnd) {
  EXPECT_EQ(Run({"ends", "S2"}), ExitStatus::Cancelled);
  EXPECT_THAT(checked_, ElementsAre("one.dat  ends"));
}

TEST(SerialPatternOption, RefusesWhatIsNoRegularExpression) { EXPECT_THROW(SerialPattern("["), Failure); }

}  // namespace
}  // namespace kxbench
