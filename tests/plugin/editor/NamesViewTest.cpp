#include <gtest/gtest.h>

#include <map>

#include "plugin/editor/NamesView.h"

namespace shorttest {
namespace {

struct NamesCase {
  const char* name;
  const char* line;
  const char* view;
};

class NamesLine : public ::testing::TestWithParam<NamesCase> {
 protected:
  static std::string NameOf(std::int32_t channel) {
    static const std::map<std::int32_t, std::string> names = {
        {5, "Motor links"}, {6, "Kl15"}, {7, "5\""}, {9, "a,b"}};
    const auto entry = names.find(channel);
    return entry == names.end() ? "" : entry->second;
  }
};

TEST_P(NamesLine, ShowsNames) {
  const std::vector<std::string> expected = {GetParam().view};
  EXPECT_EQ(NamesView({GetParam().line}, 1, 48, NameOf), expected);
}

INSTANTIATE_TEST_SUITE_P(Rules, NamesLine,
                         ::testing::Values(NamesCase{"Name", "6 1", "Kl15 1"},
                                           NamesCase{"NameWithABlankIsQuoted", "5 6", "\"Motor links\" Kl15"},
                                           NamesCase{"NameWithAQuoteIsQuoted", "7", "\"5\"\"\""},
                                           NamesCase{"NameWithACommaIsNot", "9", "a,b"},
                                           NamesCase{"ChannelWithoutAnEntryShowsItsNumber", "8", "8"},
                                           NamesCase{"OutOfRangeStaysAsTyped", "049 0 -1", "049 0 -1"},
                                           NamesCase{"NumberInRangeIsWrittenPlain", "08", "8"},
                                           NamesCase{"WordStaysAsTyped", "x 6", "x Kl15"},
                                           NamesCase{"CommaDoesNotSeparate", "5,6 6", "5,6 Kl15"},
                                           NamesCase{"ManyBlanksBecomeOne", "1   6 ", "1 Kl15"},
                                           NamesCase{"QuotedItemIsQuotedAgain", "\"1 2\" 6", "\"1 2\" Kl15"},
                                           NamesCase{"EmptyQuotedItemIsNoChannel", "\"\"", "-1"},
                                           NamesCase{"EmptyLineStaysEmpty", "", ""}),
                         [](const auto& row) { return row.param.name; });

TEST(NamesView, StaysAlignedLineForLine) {
  const std::vector<std::string> lines = {"1 2", "", "x", "3"};
  const auto noNames = [](std::int32_t) { return std::string(); };
  EXPECT_EQ(NamesView(lines, 1, 4, noNames), lines);
}

TEST(NamesView, LooksUpChannelsOfTheRangeAlone) {
  const auto name = [](std::int32_t channel) { return "K" + std::to_string(channel); };
  const std::vector<std::string> expected = {"9 K10 K20 21"};
  EXPECT_EQ(NamesView({"9 10 20 21"}, 10, 20, name), expected);
}

}  // namespace
}  // namespace shorttest
