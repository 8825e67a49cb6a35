#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "simulator/DescriptionWords.h"
#include "tests/simulator/Bench.h"

namespace simulator {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> Texts(std::string_view line) {
  std::vector<std::string> texts;
  for (const Word& word : SplitLine(line, "f", 1)) texts.push_back(word.text);
  return texts;
}

TEST(SplitLine, BlanksAndTabsSeparate) {
  EXPECT_THAT(Texts("wire 1\t 5   0.2 "), ElementsAre("wire", "1", "5", "0.2"));
}

TEST(SplitLine, EmptyLineHasNoWords) {
  EXPECT_THAT(Texts(""), IsEmpty());
  EXPECT_THAT(Texts(" \t "), IsEmpty());
}

TEST(SplitLine, NumberSignAtTheStartOfAWordStartsAComment) {
  EXPECT_THAT(Texts("# all of it"), IsEmpty());
  EXPECT_THAT(Texts("cards 2 # two"), ElementsAre("cards", "2"));
  EXPECT_THAT(Texts("cards 2#"), ElementsAre("cards", "2#"));
}

TEST(SplitLine, QuotedTextIsOneWord) {
  EXPECT_THAT(Texts(R"(fail-call 3 "no # answer")"), ElementsAre("fail-call", "3", "no # answer"));
  EXPECT_TRUE(SplitLine(R"("wire")", "f", 1)[0].quoted);
  EXPECT_FALSE(SplitLine("wire", "f", 1)[0].quoted);
}

TEST(SplitLine, ColumnsCountCharactersNotBytes) {
  const std::vector<Word> words = SplitLine("node Rückfahr Ü 5", "f", 7);
  EXPECT_EQ(words[1].position.column, 6);
  EXPECT_EQ(words[2].position.column, 15);
  EXPECT_EQ(words[3].position.column, 17);
  EXPECT_EQ(words[3].position.line, 7);
}

TEST(SplitLine, MissingClosingQuoteNamesItsPlace) {
  try {
    SplitLine("fail-call 3 \"no answer", "bench.device", 12);
    FAIL() << "accepted";
  } catch (const DescriptionError& error) {
    EXPECT_STREQ(error.what(), "bench.device:12:13: the text has no closing quote");
  }
}

TEST(SplitLine, TextMustEndItsWord) { EXPECT_THROW(SplitLine("\"a\"b", "f", 1), DescriptionError); }

}  // namespace
}  // namespace simulator
