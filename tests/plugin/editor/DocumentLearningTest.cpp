// Learning into the document: whole, or not at all.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "plugin/editor/ChannelNumbers.h"
#include "plugin/hardware/Bus.h"
#include "tests/plugin/editor/DocumentBench.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeDriver.h"
#include "tests/support/FakeUserInterface.h"

namespace shorttest::testkit {
namespace {

using ::testing::ElementsAre;

class DocumentLearning : public DocumentBench {
 protected:
  DocumentLearning() {
    SetApplication(&ui);
    Open(Learned(1, 8, {{1, 2}, {7, 8}}));
    driver.Wire(1, 5);
    driver.Wire(2, 3);
  }
  ~DocumentLearning() override { SetApplication(nullptr); }

  LearnOutcome Learn(const ProgressFunction& progress = [](double) { return false; }) {
    return document.Learn([&progress](TShortTestData& data) { return LearnConnections(data, progress); });
  }

  void ExpectAsBefore() {
    EXPECT_THAT(document.ShowTexts().expected, ElementsAre("1 2", "7 8"));
    EXPECT_EQ(Pair(1, 5), CellState::NotConnected);
    EXPECT_TRUE(driver.AllRelaysOpen());
  }

  CallLog log;
  FakeClock clock;
  FakeDriver driver{log};
  FakeUserInterface ui{log};
};

TEST_F(DocumentLearning, WholeLearningStays) {
  EXPECT_EQ(Learn(), LearnOutcome::Learned);
  EXPECT_THAT(document.ShowTexts().expected, ElementsAre("1 5", "2 3"));
  EXPECT_NO_THROW(document.RequireComplete(document.ShowTexts()));
}

TEST_F(DocumentLearning, HardwareErrorGivesBackWhatWasThere) {
  driver.FailAt(40, "Relaiskarte antwortet nicht");
  EXPECT_THROW(Learn(), TShortTestHWException);
  ExpectAsBefore();
}

TEST_F(DocumentLearning, AbbrechenNearTheThresholdGivesBackWhatWasThere) {
  driver.Wire(1, 5, 9.5);
  ui.Answer({mrCancel});
  EXPECT_EQ(Learn(), LearnOutcome::Stopped);
  EXPECT_THAT(ui.Boxes(), testing::SizeIs(1));
  ExpectAsBefore();
}

TEST_F(DocumentLearning, StopAtAnyPointGivesBackWhatWasThere) {
  int calls = 0;
  EXPECT_EQ(Learn([&calls](double) { return ++calls, false; }), LearnOutcome::Learned);
  for (int stop = 1; stop < calls; ++stop) {  // the last call is that of the clean-up
    SCOPED_TRACE(stop);
    Open(Learned(1, 8, {{1, 2}, {7, 8}}));
    int call = 0;
    EXPECT_EQ(Learn([&](double) { return ++call >= stop; }), LearnOutcome::Stopped);
    EXPECT_EQ(Pair(7, 8), CellState::Connected);
    EXPECT_EQ(Pair(1, 5), CellState::NotConnected);
  }
}

TEST_F(DocumentLearning, ThresholdsOfTheMeantimeStay) {
  EXPECT_EQ(Learn([this](double) {
              document.SetTimeout(1000);
              return true;
            }),
            LearnOutcome::Stopped);
  EXPECT_EQ(document.Data()->Timeout, 1000);
}

TEST_F(DocumentLearning, TextsRejectedBeforeAreStillRejectedAfterAStop) {
  typed.expected = {"1 99"};
  EXPECT_THROW(document.TakeTexts(typed), ChannelRangeError);
  Learn([this](double) {
    document.ShowTexts();
    return true;
  });
  EXPECT_THROW(document.RequireComplete(typed), ChannelRangeError);
}

TEST_F(DocumentLearning, PairsUnknownBeforeAreStillUnknownWhenSavedAfterAStop) {
  TShortTestData data = Learned(1, 8, {{1, 2}});
  data.SetC(7, 6, CellState::Unknown, NoResistance);
  Open(data);
  Learn([this](double position) {
    document.ShowTexts();
    return position > 0.3;
  });
  EXPECT_EQ(Saved().Get(7, 6), CellState::Unknown);
}

TEST_F(DocumentLearning, TextsOutsideTheRangeAreStillInsistedOnAfterAStop) {
  document.ChangeRange(1, 6);
  document.LeaveRange("6");
  Learn([this](double) {
    document.ShowTexts();
    return true;
  });
  EXPECT_THROW(document.RequireComplete(typed), ChannelRangeError);
}

TEST_F(DocumentLearning, WholeLearningMakesUpForTextsThatWereRejected) {
  typed.expected = {"1 99"};
  EXPECT_THROW(document.TakeTexts(typed), ChannelRangeError);
  EXPECT_EQ(Learn(), LearnOutcome::Learned);
  EXPECT_NO_THROW(document.RequireComplete(document.ShowTexts()));
}

TEST_F(DocumentLearning, RangeTypedAfterwardsStartsFromWhatWasLearned) {
  document.ChangeRange(1, 8);
  Learn();
  document.ChangeRange(1, 2);
  document.ChangeRange(1, 24);
  EXPECT_EQ(Pair(1, 5), CellState::Connected);
  EXPECT_EQ(Pair(7, 8), CellState::NotConnected);
}

}  // namespace
}  // namespace shorttest::testkit
