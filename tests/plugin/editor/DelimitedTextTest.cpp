#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plugin/editor/DelimitedText.h"

namespace shorttest {
namespace {

using Items = std::vector<std::string>;

struct SplitCase {
  const char* name;
  const char* text;
  Items items;
};

class CommaSplit : public ::testing::TestWithParam<SplitCase> {};

TEST_P(CommaSplit, YieldsItems) { EXPECT_EQ(SplitDelimited(GetParam().text, ','), GetParam().items); }

INSTANTIATE_TEST_SUITE_P(
    Rules, CommaSplit,
    ::testing::Values(SplitCase{"NothingFromNothing", "", {}}, SplitCase{"NothingFromBlanks", " \t ", {}},
                      SplitCase{"BlanksSeparate", "1 2 3", {"1", "2", "3"}},
                      SplitCase{"CommasSeparate", "1,2,3", {"1", "2", "3"}},
                      SplitCase{"CommaAndBlankAreOneSeparator", "1, 2 ,3", {"1", "2", "3"}},
                      SplitCase{"TabSeparates", "1\t2", {"1", "2"}},
                      SplitCase{"ManyBlanksAreOne", "1   2", {"1", "2"}},
                      SplitCase{"LeadingBlankIsSkipped", " 3 7", {"3", "7"}},
                      SplitCase{"TrailingBlankIsSkipped", "3 7 ", {"3", "7"}},
                      SplitCase{"EmptyMiddleItemIsKept", "1,,2", {"1", "", "2"}},
                      SplitCase{"BlanksBetweenCommasAreAnEmptyItem", "1, ,2", {"1", "", "2"}},
                      SplitCase{"CommaAtTheEndIsAnEmptyItem", "1,", {"1", ""}},
                      SplitCase{"CommaAtTheStartIsAnEmptyItem", ",1", {"", "1"}},
                      SplitCase{"LoneCommaIsTwoEmptyItems", ",", {"", ""}},
                      SplitCase{"BlankBehindTheLastCommaIsNoItem", "1, ", {"1"}},
                      SplitCase{"QuotedItemMayHoldBlanks", "\"1 2\" 3", {"1 2", "3"}},
                      SplitCase{"QuotedItemMayHoldCommas", "\"1,2\",3", {"1,2", "3"}},
                      SplitCase{"DoubledQuoteIsOne", "\"a\"\"b\"", {"a\"b"}},
                      SplitCase{"QuotedEmptyItem", "\"\"", {""}},
                      SplitCase{"MissingClosingQuoteTakesTheRest", "\"1 2", {"1 2"}},
                      SplitCase{"QuoteInsideAnItemIsOrdinary", "1\"2 3", {"1\"2", "3"}},
                      SplitCase{"ItemBehindAClosingQuoteIsItsOwn", "\"1\"2", {"1", "2"}},
                      SplitCase{"BlanksBeforeTheCommaBelongToIt", "1 ,2", {"1", "2"}},
                      SplitCase{"Utf8IsNoBlank", "Größe Ä", {"Größe", "Ä"}}),
    [](const auto& row) { return row.param.name; });

class BlankSplit : public ::testing::TestWithParam<SplitCase> {};

TEST_P(BlankSplit, YieldsItems) { EXPECT_EQ(SplitDelimited(GetParam().text, ' '), GetParam().items); }

INSTANTIATE_TEST_SUITE_P(Rules, BlankSplit,
                         ::testing::Values(SplitCase{"CommaDoesNotSeparate", "1,2 3", {"1,2", "3"}},
                                           SplitCase{"ManyBlanksAreOne", "1   2", {"1", "2"}},
                                           SplitCase{"BlankAtTheEndIsNoItem", "1 ", {"1"}},
                                           SplitCase{"TabSeparates", "1\t2", {"1", "2"}},
                                           SplitCase{"QuotedItemMayHoldBlanks", "\"1 2\" 3", {"1 2", "3"}}),
                         [](const auto& row) { return row.param.name; });

struct JoinCase {
  const char* name;
  Items items;
  const char* text;
};

class BlankJoin : public ::testing::TestWithParam<JoinCase> {};

TEST_P(BlankJoin, YieldsText) { EXPECT_EQ(JoinDelimited(GetParam().items, ' '), GetParam().text); }

INSTANTIATE_TEST_SUITE_P(Rules, BlankJoin,
                         ::testing::Values(JoinCase{"NothingFromNothing", {}, ""},
                                           JoinCase{"SingleBlankBetween", {"1", "2"}, "1 2"},
                                           JoinCase{
                                               "BlankIsQuoted", {"Motor links", "2"}, "\"Motor links\" 2"},
                                           JoinCase{"QuoteIsQuotedAndDoubled", {"5\""}, "\"5\"\"\""},
                                           JoinCase{"ControlCharacterIsQuoted", {"a\tb"}, "\"a\tb\""},
                                           JoinCase{"CommaIsOrdinary", {"a,b"}, "a,b"}),
                         [](const auto& row) { return row.param.name; });

class Lines : public ::testing::TestWithParam<SplitCase> {};

TEST_P(Lines, AreSplit) { EXPECT_EQ(SplitLines(GetParam().text), GetParam().items); }

INSTANTIATE_TEST_SUITE_P(Rules, Lines,
                         ::testing::Values(SplitCase{"NoneFromNothing", "", {}},
                                           SplitCase{"WithoutLineEnd", "1 2", {"1 2"}},
                                           SplitCase{"LineEndAtTheEndOpensNoLine", "1\n2\n", {"1", "2"}},
                                           SplitCase{"EmptyLineIsKept", "1\n\n2", {"1", "", "2"}},
                                           SplitCase{"CarriageReturnLineFeedIsOneEnd", "1\r\n2", {"1", "2"}}),
                         [](const auto& row) { return row.param.name; });

TEST(Lines, AreJoinedWithLineFeeds) { EXPECT_EQ(JoinLines({"1 2", "", "3"}), "1 2\n\n3"); }

}  // namespace
}  // namespace shorttest
