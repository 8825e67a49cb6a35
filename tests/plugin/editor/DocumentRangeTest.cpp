// The channel range while it is typed: nothing known of the channels may get lost unnoticed.

#include <gtest/gtest.h>

#include <stdexcept>

#include "plugin/editor/ChannelNumbers.h"
#include "tests/plugin/editor/DocumentBench.h"

namespace shorttest::testkit {
namespace {

class DocumentRange : public DocumentBench {
 protected:
  // Every key that changes a field changes the range.
  void TypeLast(std::int32_t von, const std::vector<std::int32_t>& keys) {
    for (const std::int32_t bis : keys) document.ChangeRange(von, bis);
  }
};

TEST_F(DocumentRange, HalfTypedNumberCutsNothingOff) {
  Open(Learned(1, 22, {{1, 2}, {3, 22}}));
  TypeLast(1, {2, 24});
  document.LeaveRange("24");
  EXPECT_EQ(Pair(1, 2), CellState::Connected);
  EXPECT_EQ(Pair(3, 22), CellState::Connected);
  EXPECT_EQ(Pair(4, 22), CellState::NotConnected);
  EXPECT_EQ(Pair(1, 23), CellState::Unknown);
  EXPECT_EQ(Saved().Get(2, 21), CellState::Connected);
}

TEST_F(DocumentRange, HalfTypedFirstChannelCutsNothingOff) {
  Open(Learned(5, 60, {{5, 60}, {41, 42}}));
  for (const std::int32_t von : {4, 40, 4, 5}) document.ChangeRange(von, 60);
  document.LeaveRange("5");
  EXPECT_EQ(Pair(5, 60), CellState::Connected);
  EXPECT_EQ(Pair(41, 42), CellState::Connected);
}

TEST_F(DocumentRange, EachKeyIsARangeOfItsOwn) {
  Open(Learned(1, 22, {{1, 2}}));
  document.ChangeRange(1, 2);
  EXPECT_EQ(document.Data()->Highconnections(), 1);
  document.ChangeRange(1, 24);
  EXPECT_EQ(document.Data()->Highconnections(), 23);
  EXPECT_EQ(document.Data()->bis, 24);
}

TEST_F(DocumentRange, LeavingTheFieldGivesUpWhatItCutsOff) {
  Open(Learned(1, 8, {{1, 2}, {7, 8}}));
  TypeLast(1, {6});
  document.LeaveRange("6");
  TypeLast(1, {8});
  EXPECT_EQ(Pair(1, 2), CellState::Connected);
  EXPECT_EQ(Pair(7, 8), CellState::Unknown);
}

TEST_F(DocumentRange, ParametersThatChangeMeanwhileStay) {
  Open(Learned(1, 8, {}));
  TypeLast(1, {2});
  document.TypeLowerThreshold("33");
  TypeLast(1, {20});
  EXPECT_EQ(document.Data()->Schwelle, 33.0);
}

TEST_F(DocumentRange, FirstChannelAboveTheLastIsAnErrorThatGivesNothingUp) {
  Open(Learned(1, 8, {{1, 2}, {7, 8}}));
  document.ChangeRange(60, 8);
  EXPECT_EQ(document.Data()->Highconnections(), -1);
  EXPECT_EQ(ErrorOf([this] { document.LeaveRange("60"); }),
            "Der erste Kanal (60) liegt über dem letzten (8).");
  EXPECT_THROW(document.RequireComplete(typed), std::invalid_argument);
  document.ChangeRange(6, 8);
  document.LeaveRange("6");
  EXPECT_EQ(Pair(7, 8), CellState::Connected);
}

TEST_F(DocumentRange, EmptyRangeOfAFileIsAnErrorOnSaving) {
  Open(TShortTestData(8, 3));
  EXPECT_THROW(document.RequireComplete(typed), std::invalid_argument);
}

TEST_F(DocumentRange, OneChannelIsARange) {
  Open(Learned(1, 8, {}));
  document.ChangeRange(8, 8);
  EXPECT_NO_THROW(document.LeaveRange("8"));
}

TEST_F(DocumentRange, TextThatIsNoNumberIsAnErrorWhenLeft) {
  Open(Learned(1, 8, {}));
  EXPECT_THROW(document.LeaveRange(""), ConversionError);
  EXPECT_THROW(document.LeaveRange("8x"), ConversionError);
  EXPECT_NO_THROW(document.LeaveRange("250"));  // the field shows then what counts
}

TEST_F(DocumentRange, TextThatIsNoNumberGivesNothingUp) {
  Open(Learned(1, 22, {{3, 22}}));
  TypeLast(1, {2});
  EXPECT_THROW(document.LeaveRange("2x"), ConversionError);
  TypeLast(1, {2, 22});
  document.LeaveRange("22");
  EXPECT_EQ(Pair(3, 22), CellState::Connected);
}

// The texts go on showing the net that the range no longer has.
TEST_F(DocumentRange, SavingInsistsOnChannelsThatTheTextsNameAndTheRangeHasNot) {
  Open(Learned(1, 22, {{1, 2}, {3, 22}}));
  TypeLast(1, {2});
  document.LeaveRange("2");
  EXPECT_EQ(ErrorOf([this] { document.RequireComplete(typed); }), "3 is too large.");
  EXPECT_EQ(Pair(1, 2), CellState::Connected) << "the error half built the matrix";
  typed.expected = {"1 2"};
  document.TakeTexts(typed);
  EXPECT_EQ(Saved().bis, 2);
}

TEST_F(DocumentRange, ConnectionsGivenUpAndStillShownAreTakenFromTheTexts) {
  Open(Learned(1, 8, {{1, 2}, {7, 8}}));
  TypeLast(1, {6});
  document.LeaveRange("6");
  TypeLast(1, {8});
  document.LeaveRange("8");
  const TShortTestData saved = Saved();
  EXPECT_EQ(saved.Get(6, 7), CellState::Connected);
  EXPECT_EQ(saved.Get(5, 7), CellState::NotConnected);
}

TEST_F(DocumentRange, NarrowerRangeThatTheTextsFitIsSavedAsItStands) {
  Open(Learned(1, 8, {{1, 2}}));
  TypeLast(1, {6});
  document.LeaveRange("6");
  const TShortTestData saved = Saved();
  EXPECT_EQ(saved.bis, 6);
  EXPECT_EQ(saved.Get(0, 1), CellState::Connected);
}

TEST_F(DocumentRange, WiderRangeIsSavedWithItsUnknownPairs) {
  Open(Learned(1, 4, {{1, 2}}));
  TypeLast(1, {6});
  document.LeaveRange("6");
  EXPECT_EQ(Saved().Get(0, 5), CellState::Unknown);
}

TEST_F(DocumentRange, AnotherFileHasItsOwnChannels) {
  Open(Learned(1, 22, {{3, 22}}));
  TypeLast(1, {2});
  Open(Learned(1, 8, {{7, 8}}));
  TypeLast(1, {24});
  EXPECT_EQ(Pair(7, 8), CellState::Connected);
  EXPECT_EQ(Pair(3, 22), CellState::Unknown);
}

TEST_F(DocumentRange, ChannelsCutOffDoNotComeBackOverTextsReadSince) {
  Open(Learned(1, 8, {{7, 8}}));
  TypeLast(1, {6, 8});
  typed.expected = {"1 2"};
  document.TakeTexts(typed);
  TypeLast(1, {6, 8});
  EXPECT_EQ(Pair(1, 2), CellState::Connected);
  EXPECT_EQ(Pair(7, 8), CellState::NotConnected);
}

TEST_F(DocumentRange, TextsClearedWhileThereIsNoRangeCountOnceThereIsOne) {
  Open(Learned(1, 8, {{7, 8}}));
  document.ChangeRange(60, 8);
  typed = {};
  document.TakeTexts(typed);
  document.ChangeRange(6, 8);
  document.LeaveRange("6");
  EXPECT_EQ(Saved().Get(1, 2), CellState::NotConnected);
}

}  // namespace
}  // namespace shorttest::testkit
