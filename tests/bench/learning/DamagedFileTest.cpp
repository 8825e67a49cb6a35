#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/learning/LearnRun.h"
#include "bench/wiring/ExpectationFacts.h"
#include "tests/bench/program/TemporaryFolder.h"
#include "tests/support/Bench.h"
#include "tests/support/FakeUserInterface.h"

/// Learning into files that are damaged, through the learn module's own entry.

namespace kxbench {
namespace {

using shorttest::testkit::FakeDriver;
using shorttest::testkit::FakeUserInterface;

class LearningADamagedFile : public shorttest::testkit::Bench {
 protected:
  void SetUp() override {
    SetApplication(&ui_);
    request_.file = (folder_.Path() / "harness.dat").string();
    driver.Wire(1, 4, 0.4);
    driver.Wire(2, 3, 0.4);
    clock.ticksStep = 500;  // so that waiting for a discharge ends
  }
  void TearDown() override {
    SetApplication(nullptr);
    EXPECT_TRUE(driver.AllRelaysOpen());
    Bench::TearDown();
  }

  /// The file that a good learning of this device makes.
  std::string GoodFile() {
    TShortTestData data(1, 4);
    data.Put(3, 0, CellState::Connected, 0.4);
    data.Put(2, 1, CellState::Connected, 0.4);
    data.Put(1, 0, CellState::NotConnected, 1e9);
    data.U_Control = 0;
    data.SaveExpectationFile(request_.file);
    return folder_.Read("harness.dat");
  }

  LearnSummary Learn() {
    LearnSummary summary;
    kxLearn(request_, summary);
    return summary;
  }

  /// Whether learning into a file of this content ends as it must: with an error and the file as it was, or
  /// with what the device is.
  testing::AssertionResult EndsWell(const std::string& content) {
    folder_.Write("harness.dat", content);
    const LearnSummary summary = Learn();
    if (summary.end != LearnEnd::Learned) {
      if (summary.failure.empty()) return testing::AssertionFailure() << "an error without a text";
      if (folder_.Read("harness.dat") != content) return testing::AssertionFailure() << "the file changed";
      return testing::AssertionSuccess();
    }
    ++learned_;
    const wiring::ExpectationFacts facts = wiring::FactsOf(request_.file);
    if (!facts.damage.empty()) return testing::AssertionFailure() << "saved with " << facts.damage;
    if (facts.unknownPairs > 0) return testing::AssertionFailure() << "pairs unknown";
    const TShortTestData data(request_.file);
    // A digit that became another state cannot be told from one that was meant: 3 excludes its pair, and
    // stays.
    for (std::int32_t i = 1; i <= data.Highconnections(); ++i) {
      for (std::int32_t j = 0; j < i; ++j) {
        const bool wired = (i == 3 && j == 0) || (i == 2 && j == 1);
        const CellState state = data.Get(i, j);
        if (state != CellState::ExcludedPair &&
            state != (wired ? CellState::Connected : CellState::NotConnected)) {
          return testing::AssertionFailure()
                 << "pair " << j << ", " << i << " has " << static_cast<int>(state);
        }
      }
    }
    return testing::AssertionSuccess();
  }

  TemporaryFolder folder_;
  FakeUserInterface ui_{log};
  LearnRequest request_;
  int learned_ = 0;
};

TEST_F(LearningADamagedFile, EndsAsACorrectExpectationOrAsAnErrorWhereverItIsCutOff) {
  const std::string whole = GoodFile();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_TRUE(EndsWell(whole.substr(0, length))) << "cut off after " << length << " bytes";
  }
  EXPECT_LE(learned_, 2) << "the last line break, in one piece or two, is all that may be missing";
  EXPECT_TRUE(EndsWell(whole));
}

TEST_F(LearningADamagedFile, EndsAsACorrectExpectationOrAsAnErrorWhateverByteIsDamaged) {
  const std::string whole = GoodFile();
  for (std::size_t at = 0; at < whole.size(); ++at) {
    for (const char byte : {'\n', '2', '3', '9', 'x', '\xFF'}) {
      std::string damaged = whole;
      damaged[at] = byte;
      EXPECT_TRUE(EndsWell(damaged)) << "byte " << at << " is " << static_cast<int>(byte);
    }
    if (HasFailure()) break;
  }
}

TEST_F(LearningADamagedFile, NothingIsMeasured) {
  const std::string whole = GoodFile();
  folder_.Write("harness.dat", whole.substr(0, whole.size() - 4));
  const LearnSummary summary = Learn();
  EXPECT_EQ(summary.end, LearnEnd::Damaged);
  EXPECT_EQ(summary.failure, "the data block has 3 whole lines of 4");
  EXPECT_EQ(log.Text(), "");
}

TEST_F(LearningADamagedFile, ANewOneKeepsNothingOfIt) {
  folder_.Write("harness.dat", "[DATEN] was here\n[Notes]\nfrom=me\n");
  request_.firstChannel = 1;
  request_.lastChannel = 4;
  request_.makeNew = true;
  EXPECT_EQ(Learn().end, LearnEnd::Learned);
  EXPECT_EQ(folder_.Read("harness.dat").find("me"), std::string::npos);
  EXPECT_EQ(wiring::FactsOf(request_.file).damage, "");
  EXPECT_EQ(TShortTestData(request_.file).Get(3, 0), CellState::Connected);
}

TEST_F(LearningADamagedFile, AWholeOneIsComparedBeforeItIsReplaced) {
  const std::string whole = GoodFile();
  driver.Wire(1, 2, 0.4);
  std::vector<LearnDifference> told;
  request_.beforeReplacing = [&](const LearnDifference& difference) {
    EXPECT_EQ(folder_.Read("harness.dat"), whole);
    EXPECT_TRUE(driver.AllRelaysOpen());
    told.push_back(difference);
  };
  EXPECT_EQ(Learn().end, LearnEnd::Learned);
  ASSERT_EQ(told.size(), 1U);
  EXPECT_EQ(told[0].changed, 4) << "two nets became one";
  EXPECT_NE(folder_.Read("harness.dat"), whole);
}

TEST_F(LearningADamagedFile, NothingIsComparedWithoutAnOldOne) {
  request_.firstChannel = 1;
  request_.lastChannel = 4;
  request_.beforeReplacing = [](const LearnDifference&) { FAIL(); };
  EXPECT_EQ(Learn().end, LearnEnd::Learned);
}

TEST_F(LearningADamagedFile, AJointJustAboveTheThresholdIsTold) {
  request_.firstChannel = 1;
  request_.lastChannel = 8;
  driver.Wire(6, 7, 10.5);
  const LearnSummary summary = Learn();
  EXPECT_THAT(summary.unconnected, testing::ElementsAre(5, 6, 7, 8));
  ASSERT_EQ(summary.nearMisses.size(), 2U);
  EXPECT_EQ(summary.nearMisses[0].channel, 6);
  EXPECT_NEAR(summary.nearMisses[0].ohm, 10.5, 0.01);
  EXPECT_EQ(summary.nearMisses[1].channel, 7);
}

}  // namespace
}  // namespace kxbench
