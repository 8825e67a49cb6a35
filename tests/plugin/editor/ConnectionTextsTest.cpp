#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plugin/editor/ChannelNumbers.h"
#include "plugin/editor/ConnectionTexts.h"

namespace shorttest {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Throws;

// An expectation over channels, spoken of by channel number.
class Harness {
 public:
  Harness(std::int32_t first, std::int32_t last) : data(first, last) {}

  Harness& Wire(std::int32_t a, std::int32_t b) {
    data.Put(a - data.von, b - data.von, CellState::Connected, 0.1);
    return *this;
  }
  Harness& Exclude(std::int32_t a, std::int32_t b) {
    data.SetC(a - data.von, b - data.von, CellState::ExcludedPair, NoResistance);
    return *this;
  }
  Harness& Block(std::int32_t channel) {
    data.SuspendChannel(channel - data.von, 12.0);
    return *this;
  }
  CellState Pair(std::int32_t a, std::int32_t b) const { return data.Get(a - data.von, b - data.von); }
  CellState Channel(std::int32_t channel) const { return Pair(channel, channel); }

  TShortTestData data;
};

TEST(TextsFromMatrix, GroupStandsOnTheLineOfItsLowestChannel) {
  const Harness harness = Harness(1, 4).Wire(1, 2).Wire(2, 3);
  EXPECT_THAT(TextsFromMatrix(harness.data).expected, ElementsAre("1 2 3"));
}

TEST(TextsFromMatrix, EveryGroupHasItsLine) {
  const Harness harness = Harness(1, 6).Wire(2, 6).Wire(1, 4).Wire(4, 5);
  EXPECT_THAT(TextsFromMatrix(harness.data).expected, ElementsAre("1 4 5", "2 6"));
}

TEST(TextsFromMatrix, NumbersAreChannelsNotIndices) {
  const Harness harness = Harness(101, 104).Wire(101, 104).Exclude(102, 103).Block(102);
  const ConnectionTexts texts = TextsFromMatrix(harness.data);
  EXPECT_THAT(texts.expected, ElementsAre("101 104"));
  EXPECT_EQ(texts.blocked, " 102");
}

TEST(TextsFromMatrix, ExcludedPairsAreOrderedByLowerThenHigherChannel) {
  const Harness harness = Harness(1, 5).Exclude(4, 2).Exclude(1, 5).Exclude(1, 3);
  EXPECT_THAT(TextsFromMatrix(harness.data).skipped, ElementsAre("1 3", "1 5", "2 4"));
}

TEST(TextsFromMatrix, BlockedChannelsBeginWithABlank) {
  const Harness harness = Harness(1, 8).Block(3).Block(7);
  EXPECT_EQ(TextsFromMatrix(harness.data).blocked, " 3 7");
}

TEST(TextsFromMatrix, NothingKnownGivesNoText) {
  const ConnectionTexts texts = TextsFromMatrix(TShortTestData(1, 48));
  EXPECT_THAT(texts.expected, IsEmpty());
  EXPECT_THAT(texts.skipped, IsEmpty());
  EXPECT_EQ(texts.blocked, "");
}

TEST(TextsFromMatrix, EmptyRangeGivesNoText) {
  EXPECT_THAT(TextsFromMatrix(TShortTestData(5, 4)).expected, IsEmpty());
}

TEST(TextsFromMatrix, PartnerOfAListedChannelIsMarkedEvenInAnOpenNet) {
  Harness harness(1, 3);  // as a damaged file can have it: 1-2 and 2-3 without 1-3
  harness.data.SetC(0, 1, CellState::Connected, NoResistance);
  harness.data.SetC(1, 2, CellState::Connected, NoResistance);
  EXPECT_THAT(TextsFromMatrix(harness.data).expected, ElementsAre("1 2"));
}

TEST(MatrixFromTexts, EmptyTextsExpectEverythingOpen) {
  Harness harness = Harness(1, 4).Wire(1, 2).Exclude(3, 4).Block(2);
  MatrixFromTexts({}, harness.data);
  for (std::int32_t a = 1; a <= 4; ++a) {
    EXPECT_EQ(harness.Channel(a), CellState::NotApplicable) << a;
    for (std::int32_t b = 1; b < a; ++b) EXPECT_EQ(harness.Pair(a, b), CellState::NotConnected) << a << b;
  }
}

TEST(MatrixFromTexts, MeasuredResistancesAreLost) {
  Harness harness = Harness(1, 3).Wire(1, 2);
  MatrixFromTexts(TextsFromMatrix(harness.data), harness.data);
  EXPECT_EQ(harness.Pair(1, 2), CellState::Connected);
  EXPECT_EQ(harness.data.GetR(0, 1), NoResistance);
  EXPECT_EQ(harness.data.GetR(0, 2), NoResistance);
}

TEST(MatrixFromTexts, GroupIsConnectedThroughout) {
  Harness harness(1, 4);
  MatrixFromTexts({.expected = {"1 2 3"}, .skipped = {}, .blocked = ""}, harness.data);
  EXPECT_EQ(harness.Pair(2, 3), CellState::Connected);
  EXPECT_EQ(harness.Pair(1, 4), CellState::NotConnected);
}

TEST(MatrixFromTexts, LinesThatShareAChannelAreOneNet) {
  Harness harness(1, 4);
  MatrixFromTexts({.expected = {"1 2", "2 3"}, .skipped = {}, .blocked = ""}, harness.data);
  EXPECT_EQ(harness.Pair(1, 3), CellState::Connected);
}

TEST(MatrixFromTexts, LineWithOneChannelConnectsNothing) {
  Harness harness(1, 2);
  MatrixFromTexts({.expected = {"1"}, .skipped = {}, .blocked = ""}, harness.data);
  EXPECT_EQ(harness.Pair(1, 2), CellState::NotConnected);
}

TEST(MatrixFromTexts, LinesWithoutItemsAreSkipped) {
  Harness harness(1, 3);
  MatrixFromTexts({.expected = {"", "  ", "1 2"}, .skipped = {""}, .blocked = " "}, harness.data);
  EXPECT_EQ(harness.Pair(1, 2), CellState::Connected);
}

TEST(MatrixFromTexts, SkippedLinesExcludePairsSeparatedByBlankOrComma) {
  Harness harness(1, 6);
  MatrixFromTexts({.expected = {}, .skipped = {"1 2", "5,6"}, .blocked = ""}, harness.data);
  EXPECT_EQ(harness.Pair(1, 2), CellState::ExcludedPair);
  EXPECT_EQ(harness.Pair(5, 6), CellState::ExcludedPair);
  EXPECT_EQ(harness.Pair(1, 5), CellState::NotConnected);
}

TEST(MatrixFromTexts, SkippedLinePairsTheFirstWithEachOther) {
  Harness harness(1, 3);
  MatrixFromTexts({.expected = {}, .skipped = {"1 2 3"}, .blocked = ""}, harness.data);
  EXPECT_EQ(harness.Pair(1, 2), CellState::ExcludedPair);
  EXPECT_EQ(harness.Pair(1, 3), CellState::ExcludedPair);
  EXPECT_EQ(harness.Pair(2, 3), CellState::NotConnected);
}

TEST(MatrixFromTexts, SkippedPairStaysSkippedInsideAGroup) {
  Harness harness(1, 3);
  MatrixFromTexts({.expected = {"1 2 3"}, .skipped = {"2 3"}, .blocked = ""}, harness.data);
  EXPECT_EQ(harness.Pair(2, 3), CellState::ExcludedPair);
  EXPECT_EQ(harness.Pair(1, 2), CellState::Connected);
}

TEST(MatrixFromTexts, SkippingAChannelWithItselfDoesNotUnblockIt) {
  Harness harness(1, 3);
  MatrixFromTexts({.expected = {}, .skipped = {"2 2"}, .blocked = "2"}, harness.data);
  EXPECT_EQ(harness.Channel(2), CellState::Suspended);
}

TEST(MatrixFromTexts, WrittenBlockedPointsAreReadBack) {
  const Harness blocked = Harness(1, 8).Block(3).Block(7);
  Harness harness(1, 8);
  MatrixFromTexts({.expected = {}, .skipped = {}, .blocked = TextsFromMatrix(blocked.data).blocked},
                  harness.data);
  EXPECT_EQ(harness.Channel(3), CellState::Suspended);
  EXPECT_EQ(harness.Channel(7), CellState::Suspended);
  EXPECT_EQ(harness.Channel(1), CellState::NotApplicable);
}

TEST(MatrixFromTexts, TextsSurviveTheRoundTrip) {
  Harness harness = Harness(5, 16).Exclude(5, 6).Exclude(9, 14).Wire(7, 8).Wire(8, 15).Wire(10, 11);
  const ConnectionTexts texts = TextsFromMatrix(harness.data);
  MatrixFromTexts(texts, harness.data);
  const ConnectionTexts again = TextsFromMatrix(harness.data);
  EXPECT_EQ(again.expected, texts.expected);
  EXPECT_EQ(again.skipped, texts.skipped);
}

TEST(MatrixFromTexts, BadItemLeavesWhatWasSetBeforeIt) {
  Harness harness(1, 4);
  EXPECT_THROW(
      MatrixFromTexts({.expected = {"1 2", "3 49", "3 4"}, .skipped = {"1 4"}, .blocked = ""}, harness.data),
      ChannelRangeError);
  EXPECT_EQ(harness.Pair(1, 2), CellState::Connected);
  EXPECT_EQ(harness.Pair(1, 4), CellState::ExcludedPair);
  EXPECT_EQ(harness.Pair(3, 4), CellState::Unknown);
  EXPECT_EQ(harness.Pair(1, 3), CellState::Unknown);
}

struct BadText {
  const char* name;
  ConnectionTexts texts;
};

class BadItem : public ::testing::TestWithParam<BadText> {};

TEST_P(BadItem, IsAConversionError) {
  TShortTestData data(1, 4);
  EXPECT_THAT([&] { MatrixFromTexts(GetParam().texts, data); }, Throws<ConversionError>());
}

INSTANTIATE_TEST_SUITE_P(
    Texts, BadItem,
    ::testing::Values(BadText{"EmptyMiddleItem", {.expected = {"1,,2"}, .skipped = {}, .blocked = ""}},
                      BadText{"CommaAtTheEnd", {.expected = {"1,2,"}, .skipped = {}, .blocked = ""}},
                      BadText{"Word", {.expected = {"1 x"}, .skipped = {}, .blocked = ""}},
                      BadText{"RangeNotation", {.expected = {"1-2"}, .skipped = {}, .blocked = ""}},
                      BadText{"LoneWord", {.expected = {"x"}, .skipped = {}, .blocked = ""}},
                      BadText{"QuotedPair", {.expected = {"\"1 2\""}, .skipped = {}, .blocked = ""}},
                      BadText{"WordInSkipped", {.expected = {}, .skipped = {"1 x"}, .blocked = ""}},
                      BadText{"WordInBlocked", {.expected = {}, .skipped = {}, .blocked = "x"}}),
    [](const auto& row) { return row.param.name; });

// Of the same kinds as around the numbers of an expectation file.
TEST(MatrixFromTexts, BlanksInsideTheQuotesDoNotCount) {
  Harness harness(1, 4);
  const std::string blanks = " \t\v\f";
  MatrixFromTexts({.expected = {"1 \"" + blanks + "2" + blanks + "\""}, .skipped = {}, .blocked = ""},
                  harness.data);
  EXPECT_EQ(harness.Pair(1, 2), CellState::Connected);
}

TEST(MatrixFromTexts, QuotedNumbersAreNumbers) {
  TShortTestData data(1, 4);
  MatrixFromTexts({.expected = {"\"1\" \" 2 \""}, .skipped = {}, .blocked = ""}, data);
  EXPECT_EQ(data.Get(0, 1), CellState::Connected);
}

}  // namespace
}  // namespace shorttest
