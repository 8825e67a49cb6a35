#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/text/FileFixture.h"
#include "text/Lines.h"

namespace text_test {
namespace {

using shorttest::LineEnds;
using shorttest::TakeLine;

struct LinesCase {
  const char* name;
  std::string text;
  std::vector<std::string> any;       // the lines, each followed by its break
  std::vector<std::string> lineFeed;  // the same for lines that end with LF
};

class TakenLines : public testing::TestWithParam<LinesCase> {
 protected:
  // Line and break in turn.
  static std::vector<std::string> Taken(std::string_view rest, LineEnds ends) {
    std::vector<std::string> parts;
    while (!rest.empty()) {
      const auto line = TakeLine(rest, ends);
      parts.emplace_back(line.text);
      parts.emplace_back(line.lineBreak);
    }
    return parts;
  }
};

TEST_P(TakenLines, WithAnyLineEnd) { EXPECT_EQ(Taken(GetParam().text, LineEnds::Any), GetParam().any); }

TEST_P(TakenLines, WithLineFeeds) {
  EXPECT_EQ(Taken(GetParam().text, LineEnds::LineFeed), GetParam().lineFeed);
}

TEST_P(TakenLines, TogetherAreTheText) {
  for (const LineEnds ends : {LineEnds::Any, LineEnds::LineFeed}) {
    std::string whole;
    for (const std::string& part : Taken(GetParam().text, ends)) whole += part;
    EXPECT_EQ(whole, GetParam().text);
  }
}

INSTANTIATE_TEST_SUITE_P(
    , TakenLines,
    testing::Values(
        LinesCase{"Empty", "", {}, {}}, LinesCase{"OneWithoutBreak", "ab", {"ab", ""}, {"ab", ""}},
        LinesCase{"LineFeeds", "a\nb\n", {"a", "\n", "b", "\n"}, {"a", "\n", "b", "\n"}},
        LinesCase{"Both", "a\r\nb\r\n", {"a", "\r\n", "b", "\r\n"}, {"a", "\r\n", "b", "\r\n"}},
        LinesCase{
            "EmptyLines", "\n\r\n\n", {"", "\n", "", "\r\n", "", "\n"}, {"", "\n", "", "\r\n", "", "\n"}},
        LinesCase{"CarriageReturns", "a\rb\r", {"a", "\r", "b", "\r"}, {"a\rb", "\r"}},
        LinesCase{
            "TwoCarriageReturns", "a\r\r\nb", {"a", "\r", "", "\r\n", "b", ""}, {"a\r", "\r\n", "b", ""}}),
    CaseName());

TEST(Line, OfAnEmptyTextIsEmpty) {
  std::string_view rest;
  const auto line = TakeLine(rest);
  EXPECT_EQ(line.text, "");
  EXPECT_EQ(line.lineBreak, "");
}

}  // namespace
}  // namespace text_test
